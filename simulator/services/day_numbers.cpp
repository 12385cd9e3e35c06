#include "simulator/services/day_numbers.hpp"

namespace simulator {

using std::chrono::days;
using std::chrono::sys_days;
using std::chrono::year_month_day;

std::int64_t floorDivided(std::int64_t number, std::int64_t divisor)
{
    return number / divisor - (number % divisor < 0 ? 1 : 0);
}

Day dayOf(WallTime time)
{
    return floorDivided(time, secondsPerDay);
}

Day firstOfMonth(std::int64_t monthsSinceYearZero)
{
    const std::chrono::year year(static_cast<int>(floorDivided(monthsSinceYearZero, 12)));
    const std::chrono::month month(static_cast<unsigned>(monthsSinceYearZero - floorDivided(monthsSinceYearZero, 12) * 12) + 1);
    return sys_days(year / month / 1).time_since_epoch().count();
}

Day firstOfYear(std::int64_t year)
{
    return firstOfMonth(year * 12);
}

year_month_day dateOf(Day day)
{
    return sys_days(days(day));
}

std::int64_t monthOf(Day day)
{
    const year_month_day date = dateOf(day);
    return int{date.year()} * std::int64_t{12} + unsigned{date.month()} - 1;
}

int weekdayOf(Day day)
{
    return static_cast<int>(day + 4 - floorDivided(day + 4, 7) * 7);
}

Day firstOfWeek(Day day, int weekStart)
{
    return day - (weekdayOf(day) - weekStart + 7) % 7;
}

Place placeIn(Day day, Day first, Day end, int step)
{
    return {static_cast<int>((day - first) / step) + 1, -static_cast<int>((end - 1 - day) / step) - 1};
}

Place weekPlace(Day day, int weekStart)
{
    constexpr int fourthDay = 3;
    const Day week = firstOfWeek(day, weekStart);
    const auto year = int{dateOf(week + fourthDay).year()};
    const auto firstWeekOf = [&](int wanted) { return firstOfWeek(firstOfYear(wanted) + fourthDay, weekStart); };
    return placeIn(week, firstWeekOf(year), firstWeekOf(year + 1), 7);
}

} // namespace simulator
