#pragma once

#include <chrono>
#include <cstdint>

#include "simulator/services/recurrence.hpp"

/// Days by their number, in the Gregorian calendar, with their weeks, months and years.
namespace simulator {

/// Days since 1970-01-01.
using Day = std::int64_t;

inline constexpr std::int64_t secondsPerMinute = 60;
inline constexpr std::int64_t secondsPerHour = 3600;
inline constexpr std::int64_t secondsPerDay = 86400;

std::int64_t floorDivided(std::int64_t number, std::int64_t divisor);

Day dayOf(WallTime time);
Day firstOfMonth(std::int64_t monthsSinceYearZero);
Day firstOfYear(std::int64_t year);
std::chrono::year_month_day dateOf(Day day);
/// Months since year zero.
std::int64_t monthOf(Day day);
/// Sunday is 0.
int weekdayOf(Day day);
/// The first day of a day's week.
Day firstOfWeek(Day day, int weekStart);

/// The place of a day among others, counted from either end: 1 is the first, -1 the last.
struct Place {
    int fromFirst;
    int fromLast;

    bool is(int number) const { return number == fromFirst || number == fromLast; }
};

/// `end` is the day behind the last; the others are `step` days apart.
Place placeIn(Day day, Day first, Day end, int step = 1);

/// The week's number in its year: the first week has four days of the year at least.
Place weekPlace(Day day, int weekStart);

} // namespace simulator
