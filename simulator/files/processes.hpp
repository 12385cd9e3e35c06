#pragma once

#include <string_view>

namespace simulator {

/// Whether the text is a process's number in decimal, and there is no such process any more. Files in folders that several
/// processes share are named by such numbers.
bool processIsGone(std::string_view number);

} // namespace simulator
