#pragma once

#include <string>

#include "simulator/console/inspector.hpp"

namespace simulator {

/// The JSON text in one line. Bytes that are not UTF-8 become replacement characters.
std::string oneLine(const Json& json);

/// Prints what a command reports: one line of JSON on standard output. Throws BadLine when that cannot be written.
void report(const Json& json);

} // namespace simulator
