#pragma once

#include "calendar/APLCalendar.hpp"

/// The picture of the month calendar, made of ordinary views: methods of `APLCalendar`. Each drawing adds views and removes
/// none.

void drawHeader(APLCalendar* self, SEL);
void drawDays(APLCalendar* self, SEL);
void plotCellAtX_Y_Day_isGreyDay(APLCalendar* self, SEL, NSInteger x, NSInteger y, NSInteger day, BOOL isGreyDay);
void clearViews(APLCalendar* self, SEL);
