#pragma once

#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "simulator/foundation/phone_system.hpp"
#include "simulator/springboard/SpringBoard.hpp"

namespace simulator {

/// The process's command line.
struct Options {
    /// The phone's file tree.
    std::optional<std::filesystem::path> root;
    ScreenSize screen;
    System system = phoneSystem();
    /// "desk", "phone" or a file.
    std::string geometry = "desk";
    /// A file, or "-" for standard input.
    std::optional<std::filesystem::path> script;
    std::vector<std::filesystem::path> libraries;
    bool wantsWindow = false;
    /// The folder for the pictures of the tour.
    std::optional<std::filesystem::path> tour;
    bool wantsHelp = false;
    bool wantsVersion = false;
};

/// Reads the arguments behind the program's name. Throws std::invalid_argument, in words for the user, for one that is unknown
/// or has a bad value.
Options readOptions(std::span<char* const> arguments);

/// One line for each option, for `--help`.
std::string optionUsages();

} // namespace simulator
