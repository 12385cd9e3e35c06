#pragma once

#include <filesystem>

#include "platform/Foundation/NSDictionary.hpp"

namespace simulator {

/// A property list (XML, binary or in the old text form) on this machine whose root is a dictionary; anything else gives
/// nil, without a word. Autoreleased.
NSDictionary* readPropertyList(const std::filesystem::path& file);

/// Writes a binary property list. The file is replaced whole: no reader ever sees half of it. Throws std::runtime_error
/// when it cannot be written.
void writePropertyList(NSDictionary* root, const std::filesystem::path& file);

} // namespace simulator
