#pragma once

#include <filesystem>

namespace simulator {

/// Writes the page that shows a tour's pictures, one line of text with each, as `index.html` beside them. The texts are the
/// comments above the `screenshot` commands of the tour's script. Throws std::runtime_error when it cannot be written.
void writeTourPage(const std::filesystem::path& script, const std::filesystem::path& folder);

} // namespace simulator
