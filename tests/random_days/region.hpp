#pragma once

#include <array>
#include <string>

/// What the user of a phone has chosen, and what follows from it for the month calendar.
struct Region {
    /// As the C library names them.
    std::string language;
    std::string timeZone;
    /// From 0, Sunday.
    int firstWeekday;
    std::array<const char*, 12> months;
    /// The digits from 0 to 9.
    std::array<const char*, 10> digits;
    /// Whether the short names of the months are their first three letters.
    bool hasThreeLetterMonths;

    /// "March 2014".
    std::string title(long year, long month) const;
};

/// The screen in points, and its pixels per point.
struct Screen {
    int width;
    int height;
    int scale;
};
