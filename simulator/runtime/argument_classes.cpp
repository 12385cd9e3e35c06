#include "simulator/runtime/argument_classes.hpp"

#include <string>
#include <unordered_map>
#include <utility>

namespace simulator {

namespace {

auto& noted()
{
    static auto& all = *new std::unordered_map<IMP, std::vector<std::string_view>>;
    return all;
}

} // namespace

void noteArgumentClasses(IMP implementation, std::vector<std::string_view> classes)
{
    noted()[implementation] = std::move(classes);
}

Class argumentClassOf(IMP implementation, std::size_t argument)
{
    const auto found = noted().find(implementation);
    if (found == noted().end() || argument >= found->second.size())
        return nullptr;
    return objc_getClass(std::string(found->second[argument]).c_str());
}

} // namespace simulator
