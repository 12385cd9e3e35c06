#pragma once

#include "calendar/APLCalendar.hpp"

/// The arithmetic of the month calendar: methods of `APLCalendar`.

NSInteger getTotalDaysInCurrentMonth(APLCalendar* self, SEL);
NSInteger getOffsetDays(APLCalendar* self, SEL);

void goOneMonthForward(APLCalendar* self, SEL);
void goOneMonthBack(APLCalendar* self, SEL);
void goOneYearForward(APLCalendar* self, SEL);
void goOneYearBack(APLCalendar* self, SEL);

void nextMonth(APLCalendar* self, SEL);
void prevMonth(APLCalendar* self, SEL);
void nextYear(APLCalendar* self, SEL);
void prevYear(APLCalendar* self, SEL);
