#pragma once

#include "platform/Foundation/NSArray.hpp"
#include "platform/Foundation/NSDate.hpp"
#include "platform/Foundation/NSString.hpp"

/// The calendar store, read only.

class EKCalendar : public NSObject {};

class EKEvent : public NSObject {
public:
    NSString* title() const { return send<"title", NSString*>(this); }
    NSDate* startDate() const { return send<"startDate", NSDate*>(this); }
    NSDate* endDate() const { return send<"endDate", NSDate*>(this); }
};

class NSPredicate : public NSObject {};

class EKEventStore : public NSObject {
public:
    /// The caller owns it.
    static EKEventStore* newStore() { return send<"new", EKEventStore*>(classNamed<"EKEventStore">()); }
    /// Nil when there is none.
    EKCalendar* defaultCalendarForNewEvents() const { return send<"defaultCalendarForNewEvents", EKCalendar*>(this); }
    NSPredicate* predicateForEventsWithStartDate_endDate_calendars(NSDate* start, NSDate* end, NSArray* calendars) const
    {
        return send<"predicateForEventsWithStartDate:endDate:calendars:", NSPredicate*>(this, start, end, calendars);
    }
    /// Recurring events as the single ones that they stand for.
    NSArray* eventsMatchingPredicate(NSPredicate* predicate) const
    {
        return send<"eventsMatchingPredicate:", NSArray*>(this, predicate);
    }
};
