#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "simulator/console/Script.hpp"
#include "simulator/foundation/customs.hpp"
#include "simulator/services/weather.hpp"

/// SpringBoard's relaunch: the process is replaced by a fresh one, which goes on with the script in the same surroundings.
namespace simulator {

/// What passes from one process to the next.
struct Continuation {
    Script::Position script;
    /// Seconds since 1970; none when the clock runs.
    std::optional<double> frozenClock;
    std::optional<LocalWeather> weather;
    bool showsCelsius;
    Customs customs;
    std::vector<std::string> log;
    bool isLocked;
};

/// What a process that was relaunched goes on with; none in one that was started by a user. To be called once. Throws
/// std::runtime_error when it cannot be read.
std::optional<Continuation> takeContinuation();

/// Puts the clock, the weather, its unit, the user's customs and the log back.
void restoreSurroundings(const Continuation& continuation);

/// Replaces the process. `arguments` is main's. A failure is reported on standard error and ends the process with status 2.
[[noreturn]] void relaunch(const std::filesystem::path& executable, char** arguments, Script& script);

} // namespace simulator
