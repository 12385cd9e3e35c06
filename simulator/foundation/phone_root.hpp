#pragma once

#include <filesystem>

/// The file tree of the simulated phone.
namespace simulator {

/// The folder that stands for "/" on the phone. It must exist.
void setPhoneRoot(const std::filesystem::path& folder);
const std::filesystem::path& phoneRoot();

/// Where a path of the phone lies on this machine. A path that is not absolute stays as it is.
std::filesystem::path onThisMachine(const std::filesystem::path& phonePath);

/// What a file of this machine is called on the phone. One that lies outside of the phone's file tree keeps its path.
std::filesystem::path onThePhone(const std::filesystem::path& file);

} // namespace simulator
