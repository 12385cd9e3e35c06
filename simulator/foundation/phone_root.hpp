#pragma once

#include <filesystem>

/// The file tree of the simulated phone.
namespace simulator {

/// The folder that stands for "/" on the phone. It must exist.
void setPhoneRoot(const std::filesystem::path& folder);
const std::filesystem::path& phoneRoot();

/// Where a path of the phone lies on this machine. A path that is not absolute stays as it is.
std::filesystem::path onThisMachine(const std::filesystem::path& phonePath);

} // namespace simulator
