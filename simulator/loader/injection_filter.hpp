#pragma once

#include <filesystem>

namespace simulator {

/// Whether that library of the phone's loader goes into SpringBoard. The filter beside it says so, a property list of the
/// library's name:
///
///     {Filter: {Bundles: [the processes' bundles], CoreFoundationVersion: [the lowest version, the first too high]}}
///
/// A condition that is left out is none, the second version too. A library without a filter goes into every process, one whose
/// filter is broken into none; in these cases, and when the system's version is out of the bounds, a line of the system log says
/// so. A broken one is told on standard error, too.
bool isForSpringBoard(const std::filesystem::path& library);

} // namespace simulator
