#pragma once

#include <filesystem>
#include <optional>

#include "simulator/console/Script.hpp"
#include "simulator/foundation/surroundings.hpp"

/// SpringBoard's relaunch: the process is replaced by a fresh one, which goes on with the script in the same surroundings.
namespace simulator {

/// What passes from one process to the next.
struct Continuation {
    Script::Position script;
    Surroundings surroundings;
    bool isLocked;
};

/// What a process that was relaunched goes on with; none in one that was started by a user. To be called once. Throws
/// std::runtime_error when it cannot be read.
std::optional<Continuation> takeContinuation();

/// Replaces the process. `arguments` is main's. A failure is reported on standard error and ends the process with status 2.
[[noreturn]] void relaunch(const std::filesystem::path& executable, char** arguments, Script& script);

} // namespace simulator
