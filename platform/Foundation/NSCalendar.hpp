#pragma once

#include "platform/Foundation/NSDate.hpp"

class NSString;

/// The units of a date that a question to a calendar is about.
enum NSCalendarUnit : NSUInteger {
    NSCalendarUnitYear = 1 << 2,
    NSCalendarUnitMonth = 1 << 3,
    NSCalendarUnitDay = 1 << 4,
    NSCalendarUnitHour = 1 << 5,
};

/// The units of one date, taken apart.
class NSDateComponents : public NSObject {
public:
    static NSDateComponents* alloc() { return send<"alloc", NSDateComponents*>(classNamed<"NSDateComponents">()); }
    NSDateComponents* init() { return send<"init", NSDateComponents*>(this); }
    NSInteger year() const { return send<"year", NSInteger>(this); }
    NSInteger month() const { return send<"month", NSInteger>(this); }
    NSInteger day() const { return send<"day", NSInteger>(this); }
    void setDay(NSInteger day) { send<"setDay:">(this, day); }
    NSInteger hour() const { return send<"hour", NSInteger>(this); }
};

constexpr NSCalendarUnit operator|(NSCalendarUnit left, NSCalendarUnit right)
{
    return static_cast<NSCalendarUnit>(static_cast<NSUInteger>(left) | static_cast<NSUInteger>(right));
}

/// A calendar system with its arithmetic, in the process's time zone unless told otherwise.
class NSCalendar : public NSObject {
public:
    static NSCalendar* alloc() { return send<"alloc", NSCalendar*>(classNamed<"NSCalendar">()); }
    NSCalendar* initWithCalendarIdentifier(NSString* identifier)
    {
        return send<"initWithCalendarIdentifier:", NSCalendar*>(this, identifier);
    }
    static NSCalendar* currentCalendar() { return send<"currentCalendar", NSCalendar*>(classNamed<"NSCalendar">()); }

    NSDateComponents* components_fromDate(NSCalendarUnit units, NSDate* date) const
    {
        return send<"components:fromDate:", NSDateComponents*>(this, units, date);
    }
    /// Options 0: the smaller units stay as they are, so a day later is the same time of day.
    NSDate* dateByAddingComponents_toDate_options(NSDateComponents* components, NSDate* date, NSUInteger options) const
    {
        return send<"dateByAddingComponents:toDate:options:", NSDate*>(this, components, date, options);
    }
    /// The numbers that the smaller unit takes in the one larger unit that holds the date.
    NSRange rangeOfUnit_inUnit_forDate(NSCalendarUnit smaller, NSCalendarUnit larger, NSDate* date) const
    {
        return send<"rangeOfUnit:inUnit:forDate:", NSRange>(this, smaller, larger, date);
    }
};

/// The identifier "gregorian" by its older name, which systems before 8 are sure to export.
extern "C" [[gnu::visibility("default")]] NSString* const NSGregorianCalendar;
