#pragma once

#include <filesystem>
#include <string_view>

namespace simulator {

/// Puts the bytes into a file, with the folders on the way to it. The file is replaced whole: no reader ever sees half of it.
/// Throws std::runtime_error when it cannot be written.
void writeWholeFile(const std::filesystem::path& file, std::string_view bytes);

} // namespace simulator
