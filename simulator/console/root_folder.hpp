#pragma once

#include <filesystem>

/// The folder that stands for "/" on the phone, before anything runs on it.
namespace simulator {

/// Prepares a folder that the user chose: a new or empty one is filled with a copy of the installed tree, any other is used
/// as it is. Throws std::runtime_error, in words for the user, for what cannot be a phone's file tree or cannot be filled.
void prepareChosenRoot(const std::filesystem::path& root, const std::filesystem::path& installedTree);

/// Brings the folder up to date with the installed tree: files that are missing, older or of another size are copied over;
/// what only the folder has stays. Throws std::runtime_error as above.
void updateRoot(const std::filesystem::path& root, const std::filesystem::path& installedTree);

} // namespace simulator
