#include "simulator/console/relaunch.hpp"

#include <cerrno>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <sys/mman.h>
#include <system_error>
#include <unistd.h>

#include "simulator/files/numbers.hpp"
#include "simulator/springboard/SpringBoard.hpp"

namespace simulator {

namespace {

/// A struct that shows its fields.
template <class T>
concept Visited = requires(T& value) { T::visit(value, [](const char*, auto&) {}); };

} // namespace

} // namespace simulator

namespace nlohmann {

template <class T>
struct adl_serializer<std::optional<T>> {
    static void to_json(json& result, const std::optional<T>& value) { result = value ? json(*value) : json(nullptr); }
    static void from_json(const json& source, std::optional<T>& value)
    {
        value = source.is_null() ? std::nullopt : std::optional(source.get<T>());
    }
};

template <simulator::Visited T>
struct adl_serializer<T> {
    static void to_json(json& result, const T& value)
    {
        T::visit(value, [&](const char* name, const auto& field) { result[name] = field; });
    }
    static void from_json(const json& source, T& value)
    {
        T::visit(value, [&](const char* name, auto& field) { source.at(name).get_to(field); });
    }
};

} // namespace nlohmann

namespace simulator {

namespace {

using nlohmann::json;

/// Holds the number of a descriptor from which the continuation is read.
constexpr const char* variable = "SOLVANE_RESUME";

/// What is unread may end within a character, so it goes as bytes.
json scriptToJson(const Script::Position& script)
{
    const std::vector<unsigned char> unread(script.unread.begin(), script.unread.end());
    return {{"descriptor", script.descriptor}, {"lines", script.linesRead}, {"unread", unread}};
}

Script::Position scriptFromJson(const json& script)
{
    const auto unread = script.at("unread").get<std::vector<unsigned char>>();
    return {script.at("descriptor").get<int>(), script.at("lines").get<long>(), {unread.begin(), unread.end()}};
}

json toJson(const Continuation& continuation)
{
    return {
        {"script", scriptToJson(continuation.script)},
        {"surroundings", continuation.surroundings},
        {"locked", continuation.isLocked},
    };
}

Continuation fromJson(const json& continuation)
{
    return {
        .script = scriptFromJson(continuation.at("script")),
        .surroundings = continuation.at("surroundings").get<Surroundings>(),
        .isLocked = continuation.at("locked").get<bool>(),
    };
}

[[noreturn]] void failWith(const char* what)
{
    throw std::system_error(errno, std::generic_category(), what);
}

/// A descriptor that outlives the process image, set to the start of the text.
int openWith(const std::string& text)
{
    const int descriptor = ::memfd_create("continuation", 0);
    if (descriptor < 0 || ::write(descriptor, text.data(), text.size()) != static_cast<ssize_t>(text.size()) ||
        ::lseek(descriptor, 0, SEEK_SET) != 0)
        failWith("cannot keep the state");
    return descriptor;
}

std::string readAll(int descriptor)
{
    std::string text;
    char block[4096];
    ssize_t count;
    while ((count = ::read(descriptor, block, sizeof block)) > 0)
        text.append(block, static_cast<std::size_t>(count));
    if (count < 0)
        failWith("cannot read the state");
    return text;
}

Continuation presentState(Script& script)
{
    return {
        .script = script.giveBack(),
        .surroundings = surroundings(),
        .isLocked = lockScreenView() != nullptr,
    };
}

void replaceProcess(const std::filesystem::path& executable, char** arguments, Script& script)
{
    const json state = toJson(presentState(script));
    const int descriptor = openWith(state.dump(-1, ' ', false, json::error_handler_t::replace));
    ::setenv(variable, std::to_string(descriptor).c_str(), 1);
    std::cout.flush();
    ::execv(executable.c_str(), arguments);
    failWith(executable.c_str());
}

} // namespace

std::optional<Continuation> takeContinuation()
{
    const char* const number = std::getenv(variable);
    if (number == nullptr)
        return std::nullopt;
    const auto descriptor = parseNumber<int>(number);
    ::unsetenv(variable);
    if (!descriptor)
        throw std::runtime_error(std::string(variable) + " is not for setting by hand");
    const std::string text = readAll(*descriptor);
    ::close(*descriptor);
    return fromJson(json::parse(text));
}

void relaunch(const std::filesystem::path& executable, char** arguments, Script& script)
{
    try {
        replaceProcess(executable, arguments, script);
    } catch (const std::exception& error) {
        std::cerr << "springboard: cannot relaunch: " << error.what() << '\n';
    }
    std::_Exit(2);
}

} // namespace simulator
