#pragma once

#include "calendar/APLCalendar.hpp"

/// What each file of this folder adds to the class `APLCalendar`.

using CalendarClass = ClassBuilder<APLCalendarIvars>;

/// The arithmetic: month lengths, the first weekday, steps by month and year.
void addMonthModel(CalendarClass& calendar);
/// The picture, made of ordinary views. Each drawing adds views and removes none.
void addMonthDrawing(CalendarClass& calendar);
/// The swipe recogniser's handler.
void addSwipes(CalendarClass& calendar);
/// The actions of the day buttons.
void addDaySelection(CalendarClass& calendar);
/// The events of a day as text.
void addDayEvents(CalendarClass& calendar);

/// Gives a calendar that is being made its recogniser, for all four directions.
void addSwipeRecognizer(APLCalendar* self);
