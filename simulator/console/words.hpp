#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace simulator {

/// Splits a line into words as a POSIX shell does: blanks part words, quotes and backslashes hold them together, `#` at the
/// start of a word begins a comment. Nothing is expanded. Throws BadLine for a quote that is not closed.
std::vector<std::string> splitWords(std::string_view line);

} // namespace simulator
