#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace simulator {

/// A calendar of a file: the text of each of its components, from BEGIN to END, unfolded and in UTF-8.
struct CalendarText {
    std::vector<std::string> timeZones;
    std::vector<std::string> events;
};

struct CalendarTexts {
    /// None when the file holds no whole calendar.
    std::vector<CalendarText> calendars;
    /// What was left out because it was too much, in words.
    std::vector<std::string> cuts;
};

/// Reads the calendars of a file: events and time zones with the properties that are asked for here, and nothing that lies
/// deeper. Bytes that are not UTF-8 become replacement characters. Left out are a line of more than 64 KiB, an event or time
/// zone of more than 128 KiB, and what lies beyond the first 4 MiB that matter or the first 64 MiB at all. A file that cannot
/// be read, or is no regular file, holds nothing.
CalendarTexts readCalendarTexts(const std::filesystem::path& file);

} // namespace simulator
