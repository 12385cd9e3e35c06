#include "simulator/foundation/clock.hpp"

#include <chrono>
#include <cstdio>
#include <string>

#include "platform/Foundation/NSDate.hpp"
#include "simulator/foundation/foundation.hpp"
#include "simulator/foundation/surroundings.hpp"
#include "simulator/foundation/time_zones.hpp"
#include "simulator/foundation/wall_clock.hpp"
#include "simulator/runtime/SimulatedClass.hpp"

namespace simulator {

namespace {

NSDate* (*machinesDate)(NSObject*, SEL);

NSDate* date(NSObject* self, SEL selector)
{
    const auto frozen = surroundings().frozenClock;
    return frozen ? NSDate::dateWithTimeIntervalSince1970(*frozen) : machinesDate(self, selector);
}

} // namespace

void replaceClock()
{
    machinesDate = replaceMethod<"date">(metaclassOf(classNamed<"NSDate">()), &date);
}

std::optional<double> momentOfLocalTime(std::string_view localTime)
{
    int year = 0;
    unsigned month = 0;
    unsigned day = 0;
    unsigned hour = 0;
    unsigned minute = 0;
    unsigned second = 0;
    int end = 0;
    const std::string text(localTime);
    const int fields = std::sscanf(text.c_str(), "%4d-%2u-%2uT%2u:%2u:%2u%n", &year, &month, &day, &hour, &minute, &second, &end);
    constexpr std::size_t writtenLength = std::string_view("2014-03-05T08:30:00").size();
    if (fields != 6 || static_cast<std::size_t>(end) != text.size() || text.size() != writtenLength)
        return std::nullopt;
    const std::chrono::year_month_day date{std::chrono::year(year), std::chrono::month(month), std::chrono::day(day)};
    if (!date.ok() || hour > 23 || minute > 59 || second > 59)
        return std::nullopt;
    const std::chrono::seconds shown = std::chrono::sys_days(date).time_since_epoch() + std::chrono::hours(hour) +
                                       std::chrono::minutes(minute) + std::chrono::seconds(second);
    return static_cast<double>(momentsOfWallClock(shown.count(), userOffsetAt).first());
}

double presentMoment()
{
    const std::chrono::duration<double> machines = std::chrono::system_clock::now().time_since_epoch();
    return surroundings().frozenClock.value_or(machines.count());
}

} // namespace simulator
