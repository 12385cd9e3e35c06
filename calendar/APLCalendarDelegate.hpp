#pragma once

#include "platform/Foundation/NSString.hpp"

/// What an owner of a month calendar may want to be told. Every method is optional: the calendar asks before each call.
class APLCalendarDelegate : public NSObject {
public:
    /// A day's button was touched down; the number of the day.
    void didSelectCalendarDay(NSInteger day) { send<"didSelectCalendarDay:">(this, day); }
    /// After that: the day as digits, "20140305" for 5 March 2014. The year is not padded.
    void didSelectCalendarDate(NSString* date) { send<"didSelectCalendarDate:">(this, date); }
    /// The touch on a day's button has ended, inside it or outside.
    void didDeselectCalendarDay(NSInteger day) { send<"didDeselectCalendarDay:">(this, day); }
};

/// Makes the protocol known to the runtime. To be called once, before a class adopts it.
void registerAPLCalendarDelegate();
