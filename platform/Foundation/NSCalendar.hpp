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
    NSInteger year() { return send<"year", NSInteger>(this); }
    NSInteger month() { return send<"month", NSInteger>(this); }
    NSInteger day() { return send<"day", NSInteger>(this); }
    NSInteger hour() { return send<"hour", NSInteger>(this); }
};

/// A calendar system with its arithmetic, in the process's time zone unless told otherwise.
class NSCalendar : public NSObject {
public:
    static NSCalendar* alloc() { return send<"alloc", NSCalendar*>(classNamed<"NSCalendar">()); }
    NSCalendar* initWithCalendarIdentifier(NSString* identifier)
    {
        return send<"initWithCalendarIdentifier:", NSCalendar*>(this, identifier);
    }
    static NSCalendar* currentCalendar() { return send<"currentCalendar", NSCalendar*>(classNamed<"NSCalendar">()); }

    NSDateComponents* components_fromDate(NSCalendarUnit units, NSDate* date)
    {
        return send<"components:fromDate:", NSDateComponents*>(this, units, date);
    }
};

extern "C" [[gnu::visibility("default")]] NSString* const NSCalendarIdentifierGregorian;
