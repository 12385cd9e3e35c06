#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "simulator/files/Descriptor.hpp"

namespace simulator {

/// A regular file, or a link to one, opened for reading. Anything else (a pipe, which would keep the reader waiting for a
/// writer; a folder; a device) gives none, with errno set.
Descriptor openRegularFile(const std::filesystem::path& file);

/// The bytes of a regular file; none when there is no such file, it cannot be read, or it has more than `mostBytes`,
/// with errno set.
std::optional<std::string> readWholeFile(const std::filesystem::path& file, std::size_t mostBytes);

/// Puts the bytes into a file of a folder that is there. The file is replaced whole: no reader ever sees half of it,
/// and nothing else is left of a writer that was killed. What is there and is no regular file (a device, a pipe with a
/// reader) takes the bytes as it is. Throws std::runtime_error with the reason when it cannot be written.
void writeWholeFile(const std::filesystem::path& path, std::string_view bytes);

/// The same with the bytes and the permissions of another file.
void copyWholeFile(const std::filesystem::path& original, const std::filesystem::path& copy);

/// A name beside the file or folder for what is to take its place whole. It ends with this process's number; what processes
/// that are gone have left under such names is removed.
std::filesystem::path nameBeside(const std::filesystem::path& path);

} // namespace simulator
