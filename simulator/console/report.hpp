#pragma once

#include "simulator/console/inspector.hpp"

namespace simulator {

/// Prints what a command reports: one line of JSON on standard output. Throws BadLine when that cannot be written.
void report(const Json& json);

} // namespace simulator
