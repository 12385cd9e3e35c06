#pragma once

#include <initializer_list>
#include <string>

#include "platform/Foundation/NSDate.hpp"
#include "simulator/foundation/clock.hpp"
#include "tests/calendar/MonthCalendar.hpp"

/// Calendar files of a phone, and what the month calendar makes of them.

inline NSDate* localTime(const std::string& time)
{
    return NSDate::dateWithTimeIntervalSince1970(simulator::momentOfLocalTime(time).value());
}

inline std::string component(const std::string& name, std::initializer_list<std::string> lines)
{
    std::string text = "BEGIN:" + name + "\r\n";
    for (const std::string& line : lines)
        text += line + "\r\n";
    return text + "END:" + name + "\r\n";
}

/// One event: its lines between BEGIN and END.
inline std::string event(std::initializer_list<std::string> lines)
{
    return component("VEVENT", lines);
}

inline std::string calendarOf(const std::string& components)
{
    return "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:-//Solvane//tests//EN\r\n" + components + "END:VCALENDAR\r\n";
}

/// A phone with one calendar.
class Diary {
public:
    explicit Diary(const std::string& components, const Region& region = english) : phone_(region)
    {
        add("Calendar.ics", calendarOf(components));
    }

    void add(const std::string& file, const std::string& contents) const { writeFile(folder() / file, contents); }
    void remove(const std::string& file) const { std::filesystem::remove(folder() / file); }
    std::filesystem::path folder() const { return phone_.tree().root() / "User/Library/Calendar"; }

    /// The events of the day that begins at that local time.
    std::string after(const std::string& time) const
    {
        const AutoreleasePool pool;
        const auto calendar = newCalendar();
        return textOf(send<"getCalenderEventsForDay:", NSString*>(calendar.get(), localTime(time)));
    }
    std::string on(const std::string& day) const { return after(day + "T00:00:00"); }

private:
    RegionalPhone phone_;
};
