#pragma once

#include <compare>

/// A moment on the user's clock.
struct LocalTime {
    int year;
    int month;
    int day;
    int hour;
    int minute;
    int second;

    auto operator<=>(const LocalTime&) const = default;
};

/// Whether the clock of the C library's time zone ever shows it: what is left out when a clock is set forward is never shown.
bool isShown(const LocalTime& time);
