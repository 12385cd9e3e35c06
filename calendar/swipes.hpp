#pragma once

#include "calendar/APLCalendar.hpp"

/// The swipe recogniser of the month calendar, and its handler: methods of `APLCalendar`.

/// Gives a calendar that is being made its recogniser, for all four directions.
void addSwipeRecognizer(APLCalendar* self);

void swipePerformed(APLCalendar* self, SEL, UISwipeGestureRecognizer* recognizer);
BOOL gestureRecognizer_shouldReceiveTouch(APLCalendar* self, SEL, UIGestureRecognizer* recognizer, UITouch* touch);
