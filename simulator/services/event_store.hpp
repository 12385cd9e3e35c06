#pragma once

#include <string>

namespace simulator {

/// Adds an event to the default calendar of the phone's calendar store; without one, the calendar "Calendar" is begun. The
/// moments are in seconds since 1970-01-01T00:00:00Z. Throws std::runtime_error when the calendar cannot be written.
void addEvent(const std::string& title, double start, double end);

} // namespace simulator
