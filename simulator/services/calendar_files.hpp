#pragma once

#include <ctime>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

/// Calendars as files in the format iCalendar (RFC 5545).
namespace simulator {

/// One event, or one occurrence of an event that recurs. The times are in seconds since 1970-01-01T00:00:00Z.
struct CalendarEvent {
    /// None in an event that says nothing of it.
    std::optional<std::string> title;
    std::int64_t start;
    /// An event that takes whole days ends with the last second of its last day.
    std::int64_t end;
    bool isAllDay;
};

struct FoundEvents {
    /// By their beginning.
    std::vector<CalendarEvent> events;
    /// What was left out because the file asks for too much, in words.
    std::vector<std::string> cuts;
};

/// The files in a folder that hold a calendar, in alphabetical order. A file that holds none is passed over.
std::vector<std::filesystem::path> calendarFiles(const std::filesystem::path& folder);

/// The events of a file's calendars of which some part lies between `start` and `end`. Times without a time zone are the
/// user's. An event that makes no sense is passed over. However much the file asks for, the work is bounded: by what is read
/// of it (readCalendarTexts), by the instances that are considered, and by 2000 events and
/// 256 KiB of titles for each day.
FoundEvents eventsInFile(const std::filesystem::path& file, std::int64_t start, std::int64_t end);

/// Adds an event to a calendar's file, or begins it. The file is replaced whole. Throws std::runtime_error when it cannot be
/// written.
void addEventToFile(const std::filesystem::path& file, const CalendarEvent& event);

} // namespace simulator
