#include "simulator/runtime/SimulatedClass.hpp"

#include <cctype>

namespace simulator {

namespace {

std::string capitalised(std::string text)
{
    text[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(text[0])));
    return text;
}

} // namespace

std::string setterName(const char* property)
{
    return "set" + capitalised(property) + ":";
}

std::string flagName(const char* property)
{
    return "is" + capitalised(property);
}

std::string stateName(const char* className)
{
    return std::string("simulator_") + className;
}

} // namespace simulator
