#pragma once

#include <filesystem>
#include <span>
#include <string>

#include "simulator/console/path.hpp"

namespace simulator {

/// What the console keeps from one command to the next.
struct Console {
    KeptObjects kept;
    /// Where pictures without a folder of their own go; empty for the working directory.
    std::filesystem::path pictureFolder;
    bool hasQuit = false;
};

/// Runs the command that the first word names, with the other words as its arguments; no words, nothing. What a command
/// reports goes to standard output, one line of JSON. Throws BadLine for what it cannot carry out; what it calls may raise.
void runCommand(Console& console, std::span<const std::string> words);

/// One line for each command, for `--help`.
std::string commandUsages();

} // namespace simulator
