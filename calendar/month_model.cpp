#include "calendar/methods.hpp"

#include "platform/Foundation/NSCalendar.hpp"
#include "platform/Foundation/NSDateFormatter.hpp"
#include "platform/runtime/ObjectLock.hpp"

namespace {

Owned<NSDateFormatter> formatterWithPattern(NSString* pattern)
{
    Owned<NSDateFormatter> formatter = adopt(NSDateFormatter::alloc()->init());
    formatter->setDateFormat(pattern);
    return formatter;
}

NSDate* dateFromDigits(NSString* digits)
{
    const Owned<NSDateFormatter> formatter = formatterWithPattern(constantString<"dd-MM-yyyy">());
    return Owned(formatter->dateFromString(digits)).autorelease();
}

/// Every month has this day. A day of creation after it may be missing in the month that is shown, and a date that does
/// not exist reads as none, or as one of the next month.
constexpr NSInteger lastDayOfEveryMonth = 28;

/// Some day of the month that is shown: that of creation if it can be had. A clock change may leave out the midnight with
/// which a day begins, and a short month of another calendar system may lack the day; the first or the second of the month
/// is there then.
NSDate* someDayOfShownMonth(const APLCalendarIvars& ivars)
{
    const NSInteger days[] = {ivars._day < lastDayOfEveryMonth ? ivars._day : lastDayOfEveryMonth, 1, 2};
    NSDate* date = nullptr;
    for (const NSInteger day : days) {
        if (date == nullptr)
            date = dateFromDigits(NSString::stringWithFormat(constantString<"%li-%li-%li">(), day, ivars._month, ivars._year));
    }
    return date;
}

/// Steps and draws anew, holding the view's lock.
template <void (APLCalendar::*Step)()>
void redrawAfter(APLCalendar* self, SEL)
{
    const ObjectLock lock(self);
    self->clearViews();
    (self->*Step)();
    self->drawDays();
    self->drawHeader();
}

NSInteger getTotalDaysInCurrentMonth(APLCalendar* self, SEL)
{
    NSDate* const date = someDayOfShownMonth(ivarsOf(self));
    const NSRange days = NSCalendar::currentCalendar()->rangeOfUnit_inUnit_forDate(NSCalendarUnitDay, NSCalendarUnitMonth, date);
    return static_cast<NSInteger>(days.length);
}

NSInteger getOffsetDays(APLCalendar* self, SEL)
{
    const APLCalendarIvars& ivars = ivarsOf(self);
    NSDate* const first =
        dateFromDigits(NSString::stringWithFormat(constantString<"%i-%li-%li">(), 1, ivars._month, ivars._year));
    const Owned<NSDateFormatter> formatter = adopt(NSDateFormatter::alloc()->init());
    formatter->setFormatterBehavior(NSDateFormatterBehavior10_4);
    formatter->setDateFormat(constantString<"e">());
    const NSInteger weekday = formatter->stringFromDate(first)->intValue();
    return weekday == 1 ? 7 : weekday - 1;
}

void goOneMonthForward(APLCalendar* self, SEL)
{
    APLCalendarIvars& ivars = ivarsOf(self);
    if (ivars._month < 12) {
        ++ivars._month;
    } else {
        ivars._month = 1;
        ++ivars._year;
    }
}

void goOneMonthBack(APLCalendar* self, SEL)
{
    APLCalendarIvars& ivars = ivarsOf(self);
    if (ivars._month >= 2) {
        --ivars._month;
    } else {
        ivars._month = 12;
        --ivars._year;
    }
}

void goOneYearForward(APLCalendar* self, SEL)
{
    ++ivarsOf(self)._year;
}

void goOneYearBack(APLCalendar* self, SEL)
{
    --ivarsOf(self)._year;
}

} // namespace

void addMonthModel(CalendarClass& calendar)
{
    calendar.method<"getTotalDaysInCurrentMonth">(getTotalDaysInCurrentMonth)
        .method<"getOffsetDays">(getOffsetDays)
        .method<"goOneMonthForward">(goOneMonthForward)
        .method<"goOneMonthBack">(goOneMonthBack)
        .method<"goOneYearForward">(goOneYearForward)
        .method<"goOneYearBack">(goOneYearBack)
        .method<"nextMonth">(redrawAfter<&APLCalendar::goOneMonthForward>)
        .method<"prevMonth">(redrawAfter<&APLCalendar::goOneMonthBack>)
        .method<"nextYear">(redrawAfter<&APLCalendar::goOneYearForward>)
        .method<"prevYear">(redrawAfter<&APLCalendar::goOneYearBack>);
}
