#include "calendar/methods.hpp"
#include "platform/UIKit/UIButton.hpp"

namespace {

/// The number in two digits; one of three or more stays as it is.
Owned<NSMutableString> twoDigits(NSInteger number)
{
    NSString* const digits = NSString::stringWithFormat(constantString<"%li">(), number);
    Owned<NSMutableString> text = adopt(NSMutableString::alloc()->initWithString(digits));
    if (text->length() == 1)
        text->insertString_atIndex(constantString<"0">(), 0);
    return text;
}

void selectDay(APLCalendar* self, SEL, UIButton* button)
{
    button->setBackgroundColor(UIColor::greenColor());
    if (self->delegate()->respondsToSelector(selector<"didSelectCalendarDay:">()))
        self->delegate()->didSelectCalendarDay(button->tag());
    if (self->delegate()->respondsToSelector(selector<"didSelectCalendarDate:">())) {
        const Owned<NSMutableString> day = twoDigits(button->tag());
        const Owned<NSMutableString> month = twoDigits(ivarsOf(self)._month);
        self->delegate()->didSelectCalendarDate(
            NSString::stringWithFormat(constantString<"%li%@%@">(), ivarsOf(self)._year, month.get(), day.get()));
    }
}

void deselectDay(APLCalendar* self, SEL, UIButton* button)
{
    button->setBackgroundColor(UIColor::clearColor());
    if (self->delegate()->respondsToSelector(selector<"didDeselectCalendarDay:">()))
        self->delegate()->didDeselectCalendarDay(button->tag());
}

} // namespace

void addDaySelection(CalendarClass& calendar)
{
    calendar.method<"selectDay:">(selectDay).method<"deselectDay:">(deselectDay);
}
