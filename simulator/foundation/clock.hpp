#pragma once

#include <optional>
#include <string_view>

namespace simulator {

/// The moment of a local time of the process's time zone, written "2014-03-05T08:30:00" (proleptic Gregorian), in seconds
/// since 1970-01-01T00:00:00Z. A text that is not such a time gives none. A time that a clock change skips is read as if
/// the clock had not changed yet.
std::optional<double> momentOfLocalTime(std::string_view localTime);

/// What the clock shows, in seconds since 1970-01-01T00:00:00Z.
double presentMoment();

} // namespace simulator
