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
    std::time_t start;
    /// An event that takes whole days ends with the last second of its last day.
    std::time_t end;
    bool isAllDay;
};

/// The files in a folder that hold a calendar, in alphabetical order. A file that holds none is passed over.
std::vector<std::filesystem::path> calendarFiles(const std::filesystem::path& folder);

/// The events of a calendar of which some part lies between `start` and `end`, by their beginning. Times without a time
/// zone are the process's. An event that makes no sense is passed over.
std::vector<CalendarEvent> eventsInFile(const std::filesystem::path& file, std::time_t start, std::time_t end);

/// Adds an event to a calendar's file, or begins it. The file is replaced whole. Throws std::runtime_error when it cannot be
/// written.
void addEventToFile(const std::filesystem::path& file, const CalendarEvent& event);

} // namespace simulator
