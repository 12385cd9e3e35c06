#pragma once

#include "calendar/APLCalendar.hpp"

/// The events of a day as text: methods of `APLCalendar`.

/// The events of the default calendar from the moment given until a calendar day later, each as its title, its times and an
/// empty line. A store without a default calendar gives the empty text. Autoreleased.
NSString* getCalenderEventsForDay(APLCalendar* self, SEL, NSDate* start);
NSString* getStringFromDate(APLCalendar* self, SEL, NSDate* date);
