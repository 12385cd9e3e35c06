#include "text/greeting.hpp"

#include "platform/Foundation/NSCalendar.hpp"
#include "platform/runtime/Owned.hpp"

constinit Strong<NSString> morningString;
constinit Strong<NSString> afternoonString;
constinit Strong<NSString> eveningString;
constinit Strong<NSString> nightString;

namespace {

struct TimeOfDay {
    NSUInteger firstHour;
    NSUInteger lastHour;
    const Strong<NSString>& greeting;
};

constexpr TimeOfDay timesOfDay[] = {
    {7, 12, morningString},
    {13, 17, afternoonString},
    {18, 21, eveningString},
};
constexpr NSInteger night = 3;

NSInteger timeOfDayAtHour(NSInteger hour)
{
    for (NSInteger i = 0; i < night; ++i) {
        const TimeOfDay& time = timesOfDay[i];
        // Unsigned, so that an hour before the first is far beyond the last.
        if (static_cast<NSUInteger>(hour) - time.firstHour <= time.lastHour - time.firstHour)
            return i;
    }
    return night;
}

NSInteger localHour()
{
    const Owned<NSCalendar> calendar = adopt(NSCalendar::alloc()->initWithCalendarIdentifier(NSGregorianCalendar));
    return calendar->components_fromDate(NSCalendarUnitHour, NSDate::date())->hour();
}

} // namespace

NSInteger dateStatus()
{
    return timeOfDayAtHour(localHour());
}

NSString* dateStatusString()
{
    const NSInteger time = timeOfDayAtHour(localHour());
    const Strong<NSString>& greeting = time == night ? nightString : timesOfDay[time].greeting;
    // The variable may get another text while the caller still uses this one.
    return Owned<NSString>(greeting).autorelease();
}
