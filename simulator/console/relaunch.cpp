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

#include "simulator/console/numbers.hpp"
#include "simulator/foundation/clock.hpp"
#include "simulator/foundation/system_log.hpp"
#include "simulator/springboard/SpringBoard.hpp"

namespace simulator {

namespace {

using nlohmann::json;

/// Holds the number of a descriptor from which the continuation is read.
constexpr const char* variable = "SOLVANE_RESUME";

template <class T>
json orNull(const std::optional<T>& value)
{
    return value ? json(*value) : json(nullptr);
}

template <class T>
std::optional<T> unlessNull(const json& value)
{
    return value.is_null() ? std::nullopt : std::optional(value.get<T>());
}

json weatherToJson(const std::optional<LocalWeather>& weather)
{
    if (!weather)
        return nullptr;
    return {{"temperature", orNull(weather->temperature)}, {"code", weather->conditionCode}};
}

std::optional<LocalWeather> weatherFromJson(const json& weather)
{
    if (weather.is_null())
        return std::nullopt;
    return LocalWeather{unlessNull<std::string>(weather.at("temperature")), weather.at("code").get<long>()};
}

/// The beginning of a line may end within a character, so it goes as bytes.
json scriptToJson(const Script::Position& script)
{
    const std::vector<unsigned char> beginning(script.beginning.begin(), script.beginning.end());
    return {{"descriptor", script.descriptor}, {"lines", script.linesRead}, {"beginning", beginning}};
}

Script::Position scriptFromJson(const json& script)
{
    const auto beginning = script.at("beginning").get<std::vector<unsigned char>>();
    return {script.at("descriptor").get<int>(), script.at("lines").get<long>(), {beginning.begin(), beginning.end()}};
}

json customsToJson(const Customs& customs)
{
    return {{"calendar", orNull(customs.calendar)}, {"hours", customs.hours}, {"any digits", customs.readsDigitsOfAnyScript}};
}

Customs customsFromJson(const json& customs)
{
    return {unlessNull<std::string>(customs.at("calendar")), customs.at("hours").get<Hours>(),
            customs.at("any digits").get<bool>()};
}

json toJson(const Continuation& continuation)
{
    return {
        {"script", scriptToJson(continuation.script)},
        {"clock", orNull(continuation.frozenClock)},
        {"weather", weatherToJson(continuation.weather)},
        {"celsius", continuation.showsCelsius},
        {"customs", customsToJson(continuation.customs)},
        {"log", continuation.log},
        {"locked", continuation.isLocked},
    };
}

Continuation fromJson(const json& continuation)
{
    return {
        .script = scriptFromJson(continuation.at("script")),
        .frozenClock = unlessNull<double>(continuation.at("clock")),
        .weather = weatherFromJson(continuation.at("weather")),
        .showsCelsius = continuation.at("celsius").get<bool>(),
        .customs = customsFromJson(continuation.at("customs")),
        .log = continuation.at("log").get<std::vector<std::string>>(),
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
        .frozenClock = frozenClock(),
        .weather = localWeather(),
        .showsCelsius = showsCelsius(),
        .customs = customs(),
        .log = takeSystemLog(),
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

void restoreSurroundings(const Continuation& continuation)
{
    if (continuation.frozenClock)
        freezeClockAt(*continuation.frozenClock);
    setLocalWeather(continuation.weather);
    setShowsCelsius(continuation.showsCelsius);
    customs() = continuation.customs;
    restoreSystemLog(continuation.log);
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
