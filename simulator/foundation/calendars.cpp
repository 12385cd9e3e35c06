#include "simulator/foundation/calendars.hpp"

#include <limits>
#include <string>

#include "platform/Foundation/NSCalendar.hpp"
#include "platform/Foundation/NSLocale.hpp"
#include "platform/Foundation/NSLog.hpp"
#include "simulator/foundation/foundation.hpp"
#include "simulator/foundation/locale_data.hpp"
#include "simulator/foundation/strings.hpp"
#include "simulator/foundation/time_zones.hpp"
#include "simulator/runtime/SimulatedClass.hpp"

/// NSCalendar's arithmetic, done by ICU. GNUstep leaves the lengths of months open, and takes a nil date for one in 1970.

namespace simulator {

namespace {

using CalendarPointer = std::unique_ptr<icu::Calendar>;

/// ICU's calendar behind one of Foundation's, with the weeks of the user's region, set to the date.
CalendarPointer openAt(NSCalendar* calendar, NSDate* date)
{
    icu::Locale locale = localeBehind(NSLocale::currentLocale());
    UErrorCode failure = U_ZERO_ERROR;
    locale.setKeywordValue("calendar", toUTF8(send<"calendarIdentifier", NSString*>(calendar)).c_str(), failure);
    CalendarPointer opened = openCalendar(locale, zoneBehind(send<"timeZone", NSObject*>(calendar)));
    if (opened != nullptr)
        opened->setTime(date->timeIntervalSince1970() * U_MILLIS_PER_SECOND, failure);
    return opened;
}

/// The phone does not stop at a question about no date, but it says so.
bool complainsOfNil(NSDate* date, const char* method)
{
    if (date == nullptr)
        NSLog(constantString<"*** -[NSCalendar %s]: date cannot be nil">(), method);
    return date == nullptr;
}

struct UnitField {
    NSUInteger unit;
    UCalendarDateFields field;
    /// What ICU's 0 is called here.
    int zero;
};

constexpr UnitField unitFields[] = {
    {1 << 1, UCAL_ERA, 0},
    {NSCalendarUnitYear, UCAL_YEAR, 0},
    {NSCalendarUnitMonth, UCAL_MONTH, 1},
    {NSCalendarUnitDay, UCAL_DAY_OF_MONTH, 0},
    {NSCalendarUnitHour, UCAL_HOUR_OF_DAY, 0},
    {1 << 6, UCAL_MINUTE, 0},
    {1 << 7, UCAL_SECOND, 0},
    {1 << 9, UCAL_DAY_OF_WEEK, 0},
    {1 << 10, UCAL_DAY_OF_WEEK_IN_MONTH, 0},
    {1 << 12, UCAL_WEEK_OF_MONTH, 0},
    {1 << 13, UCAL_WEEK_OF_YEAR, 0},
    {1 << 14, UCAL_YEAR_WOY, 0},
};

/// Nil for a nil date.
NSDateComponents* componentsFromDate(NSCalendar* self, SEL selector, NSUInteger units, NSDate* date)
{
    if (complainsOfNil(date, sel_getName(selector)))
        return nullptr;
    const CalendarPointer calendar = openAt(self, date);
    if (calendar == nullptr)
        return nullptr;
    Owned<NSDateComponents> components = adopt(NSDateComponents::alloc()->init());
    for (const UnitField& known : unitFields) {
        if ((units & known.unit) == 0)
            continue;
        UErrorCode failure = U_ZERO_ERROR;
        const NSInteger value = calendar->get(known.field, failure) + known.zero;
        send<"setValue:forComponent:">(components.get(), value, known.unit);
    }
    return components.autorelease();
}

/// Nil for a nil date.
NSDate* dateByAddingComponents(NSCalendar* self, SEL selector, NSDateComponents* components, NSDate* date, NSUInteger)
{
    if (complainsOfNil(date, sel_getName(selector)))
        return nullptr;
    const CalendarPointer calendar = openAt(self, date);
    if (calendar == nullptr)
        return nullptr;
    UErrorCode failure = U_ZERO_ERROR;
    for (const UnitField& known : unitFields) {
        constexpr NSInteger undefined = std::numeric_limits<NSInteger>::max();
        const auto value = send<"valueForComponent:", NSInteger>(components, known.unit);
        if (value != undefined && value != 0)
            calendar->add(known.field, static_cast<std::int32_t>(value), failure);
    }
    return NSDate::dateWithTimeIntervalSince1970(calendar->getTime(failure) / U_MILLIS_PER_SECOND);
}

struct KnownRange {
    NSCalendarUnit smaller;
    NSCalendarUnit larger;
    UCalendarDateFields field;
};

constexpr KnownRange knownRanges[] = {
    {NSCalendarUnitDay, NSCalendarUnitMonth, UCAL_DAY_OF_MONTH},
    {NSCalendarUnitDay, NSCalendarUnitYear, UCAL_DAY_OF_YEAR},
    {NSCalendarUnitMonth, NSCalendarUnitYear, UCAL_MONTH},
};

/// Units that do not lie in one another give {NSNotFound, NSNotFound}; a nil date gives {0, 0}.
NSRange rangeOfUnit(NSCalendar* self, SEL selector, NSCalendarUnit smaller, NSCalendarUnit larger, NSDate* date)
{
    if (complainsOfNil(date, sel_getName(selector)))
        return {0, 0};
    for (const KnownRange& known : knownRanges) {
        if (known.smaller != smaller || known.larger != larger)
            continue;
        const CalendarPointer calendar = openAt(self, date);
        if (calendar == nullptr)
            break;
        UErrorCode failure = U_ZERO_ERROR;
        const int least = calendar->getActualMinimum(known.field, failure);
        const int most = calendar->getActualMaximum(known.field, failure);
        return {1, static_cast<NSUInteger>(most - least + 1)};
    }
    return {static_cast<NSUInteger>(NSNotFound), static_cast<NSUInteger>(NSNotFound)};
}

/// The user's: chosen, or else the region's own.
NSCalendar* currentCalendar(Class, SEL)
{
    const CalendarPointer calendar = openCalendar(localeBehind(NSLocale::currentLocale()), zoneBehind(nullptr));
    return adopt(NSCalendar::alloc()->initWithCalendarIdentifier(toNSString(calendar->getType()))).autorelease();
}

} // namespace

icu::Locale localeBehind(NSObject* locale)
{
    return withDataOfTheSystem(icu::Locale::createFromName(toUTF8(send<"localeIdentifier", NSString*>(locale)).c_str()));
}

std::unique_ptr<icu::Calendar> openCalendar(const icu::Locale& locale, std::unique_ptr<icu::TimeZone> zone)
{
    UErrorCode failure = U_ZERO_ERROR;
    CalendarPointer calendar(icu::Calendar::createInstance(zone.release(), locale, failure));
    if (U_FAILURE(failure))
        return nullptr;
    beginWeekByTheSystem(*calendar, locale);
    return calendar;
}

void replaceCalendars()
{
    const Class calendar = classNamed<"NSCalendar">();
    replaceMethod<"currentCalendar">(metaclassOf(calendar), &currentCalendar);
    replaceMethod<"components:fromDate:">(calendar, &componentsFromDate);
    replaceMethod<"dateByAddingComponents:toDate:options:">(calendar, &dateByAddingComponents);
    replaceMethod<"rangeOfUnit:inUnit:forDate:">(calendar, &rangeOfUnit);
}

} // namespace simulator
