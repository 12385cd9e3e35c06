#pragma once

#include <span>
#include <string>
#include <string_view>

#include "simulator/console/commands.hpp"

namespace simulator {

using Words = std::span<const std::string>;

/// A word that the console understands, with what is to stand behind it.
struct Command {
    std::string_view name;
    std::string_view usage;
    std::size_t fewestArguments;
    std::size_t mostArguments;
    bool needsLockScreen;
    void (*run)(Console& console, Words arguments);
};

inline constexpr std::size_t anyNumber = std::string_view::npos;

/// Thrown by a command whose arguments are as many as it takes, and yet not what it takes.
struct WrongUsage {};

/// The commands, by what they are about.
std::span<const Command> surroundingsCommands();
std::span<const Command> lockScreenCommands();
std::span<const Command> fingerCommands();
std::span<const Command> objectCommands();
std::span<const Command> processCommands();

} // namespace simulator
