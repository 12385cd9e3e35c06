#pragma once

#include <string>

#include "tests/transcripts/Transcript.hpp"

/// What the month calendar and the widget say.
namespace tables {

/// A calendar, and the month that it shows.
struct Month {
    long day = 5;
    long month = 3;
    long year = 2014;
    /// Its name, and how long it and the one before it are.
    std::string name = "March";
    long length = 31;
    long lengthBefore = 28;
    /// The local number of the weekday of the 1st: 7 for a Saturday where weeks begin on Sunday.
    long weekday = 7;
    long today = 5;
    double width = 320;
    long cell = 45;
    long border = 1;
    long font = 12;
    long title = 18;
};

/// The calendar is called "calendar".
Rows monthLength(const Month& month);
Rows weekdayOfTheFirst(const Month& month);
Rows monthHeader(const Month& month);
Rows monthGrid(const Month& month);
Rows dayCell(const Month& month, long x, long y, long day, bool isGrey);
Rows calendarConstruction(const Month& month, const std::string& frame);

/// The widget's initialiser, and its making of a calendar; the widget is called "widget".
Rows widgetConstruction(const Month& month, const std::string& frame);
Rows calendarLoading(const Month& month);

} // namespace tables
