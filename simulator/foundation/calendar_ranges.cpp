#include <memory>
#include <string>

#include <unicode/ucal.h>

#include "platform/Foundation/NSCalendar.hpp"
#include "simulator/foundation/foundation.hpp"
#include "simulator/foundation/strings.hpp"
#include "simulator/runtime/SimulatedClass.hpp"

/// How many days a month has, and the like, which GNUstep leaves open.

namespace simulator {

namespace {

struct CalendarCloser {
    void operator()(UCalendar* calendar) const { ucal_close(calendar); }
};
using CalendarPointer = std::unique_ptr<UCalendar, CalendarCloser>;

/// ICU's calendar behind one of Foundation's (the same system, the same time zone), set to the date.
CalendarPointer openCalendar(NSCalendar* calendar, NSDate* date)
{
    const std::string system = "@calendar=" + toUTF8(send<"calendarIdentifier", NSString*>(calendar));
    NSString* const zone = send<"name", NSString*>(send<"timeZone", id>(calendar));
    std::u16string zoneName(zone->length(), u'\0');
    send<"getCharacters:range:">(zone, zoneName.data(), NSRange{0, zone->length()});

    UErrorCode failure = U_ZERO_ERROR;
    CalendarPointer opened(
        ucal_open(zoneName.data(), static_cast<std::int32_t>(zoneName.size()), system.c_str(), UCAL_DEFAULT, &failure));
    constexpr double millisecondsPerSecond = 1000;
    ucal_setMillis(opened.get(), date->timeIntervalSince1970() * millisecondsPerSecond, &failure);
    return opened;
}

struct KnownRange {
    NSCalendarUnit smaller;
    NSCalendarUnit larger;
    UCalendarDateFields field;
    /// What ICU's first number is called here.
    int first;
};

constexpr KnownRange knownRanges[] = {
    {NSCalendarUnitDay, NSCalendarUnitMonth, UCAL_DAY_OF_MONTH, 1},
    {NSCalendarUnitDay, NSCalendarUnitYear, UCAL_DAY_OF_YEAR, 1},
    {NSCalendarUnitMonth, NSCalendarUnitYear, UCAL_MONTH, 1},
};

/// Nil dates, and units that do not lie in one another, give {NSNotFound, NSNotFound}.
NSRange rangeOfUnit(NSCalendar* self, SEL, NSCalendarUnit smaller, NSCalendarUnit larger, NSDate* date)
{
    for (const KnownRange& known : knownRanges) {
        if (date == nullptr || known.smaller != smaller || known.larger != larger)
            continue;
        const CalendarPointer calendar = openCalendar(self, date);
        UErrorCode failure = U_ZERO_ERROR;
        const int least = ucal_getLimit(calendar.get(), known.field, UCAL_ACTUAL_MINIMUM, &failure);
        const int most = ucal_getLimit(calendar.get(), known.field, UCAL_ACTUAL_MAXIMUM, &failure);
        return {static_cast<NSUInteger>(known.first), static_cast<NSUInteger>(most - least + 1)};
    }
    return {static_cast<NSUInteger>(NSNotFound), static_cast<NSUInteger>(NSNotFound)};
}

} // namespace

void replaceCalendarRanges()
{
    replaceMethod<"rangeOfUnit:inUnit:forDate:">(classNamed<"NSCalendar">(), &rangeOfUnit);
}

} // namespace simulator
