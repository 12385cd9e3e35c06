#pragma once

#include "calendar/APLCalendar.hpp"
#include "platform/UIKit/UIButton.hpp"

/// What a pressed and a released day do: methods of `APLCalendar`, the actions of the day buttons.

void selectDay(APLCalendar* self, SEL, UIButton* button);
void deselectDay(APLCalendar* self, SEL, UIButton* button);
