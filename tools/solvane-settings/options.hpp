#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "simulator/uikit/ScreenSize.hpp"

namespace simulator {

/// The tool's command line.
struct SettingsOptions {
    std::filesystem::path root;
    bool respring = false;
    std::optional<std::filesystem::path> picture;
    ScreenSize screen;
    /// The command and what follows it; empty when a picture is all that is wanted.
    std::vector<std::string> command;
};

extern const char* const settingsUsage;

/// Throws std::invalid_argument, in words for the user, for words that make no sense.
SettingsOptions readSettingsOptions(const std::vector<std::string>& words);

} // namespace simulator
