#include "simulator/foundation/clock.hpp"

#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <string>

#include "platform/Foundation/NSDate.hpp"
#include "simulator/foundation/foundation.hpp"
#include "simulator/foundation/strings.hpp"
#include "simulator/runtime/SimulatedClass.hpp"

namespace simulator {

namespace {

std::optional<double> frozenSeconds;
NSDate* (*machinesDate)(NSObject*, SEL);

NSDate* date(NSObject* self, SEL selector)
{
    return frozenSeconds ? NSDate::dateWithTimeIntervalSince1970(*frozenSeconds) : machinesDate(self, selector);
}

/// TZ names the C library's time zone; GNUstep asks the machine's settings first, and the two must agree.
void setTimeZone()
{
    const char* name = std::getenv("TZ");
    if (name == nullptr)
        return;
    if (*name == ':')
        ++name;
    const id zone = send<"timeZoneWithName:", id>(classNamed<"NSTimeZone">(), toNSString(name));
    if (zone != nullptr)
        send<"setDefaultTimeZone:">(classNamed<"NSTimeZone">(), zone);
}

bool isValid(const std::tm& time)
{
    std::tm normalised = time;
    normalised.tm_isdst = 0;
    const time_t seconds = timegm(&normalised);
    std::tm back{};
    gmtime_r(&seconds, &back);
    return back.tm_year == time.tm_year && back.tm_mon == time.tm_mon && back.tm_mday == time.tm_mday &&
           back.tm_hour == time.tm_hour && back.tm_min == time.tm_min && back.tm_sec == time.tm_sec;
}

} // namespace

void replaceClock()
{
    setTimeZone();
    machinesDate = replaceMethod<"date">(metaclassOf(classNamed<"NSDate">()), &date);
}

std::optional<double> momentOfLocalTime(std::string_view localTime)
{
    std::tm time{};
    int end = 0;
    const std::string text(localTime);
    const int fields = std::sscanf(text.c_str(), "%4d-%2d-%2dT%2d:%2d:%2d%n", &time.tm_year, &time.tm_mon, &time.tm_mday,
                                   &time.tm_hour, &time.tm_min, &time.tm_sec, &end);
    constexpr std::size_t writtenLength = std::string_view("2014-03-05T08:30:00").size();
    if (fields != 6 || static_cast<std::size_t>(end) != text.size() || text.size() != writtenLength)
        return std::nullopt;
    time.tm_year -= 1900;
    time.tm_mon -= 1;
    if (!isValid(time))
        return std::nullopt;
    time.tm_isdst = -1;
    return static_cast<double>(mktime(&time));
}

void freezeClockAt(double seconds)
{
    frozenSeconds = seconds;
}

void runClock()
{
    frozenSeconds.reset();
}

std::optional<double> frozenClock()
{
    return frozenSeconds;
}

} // namespace simulator
