#include "calendar/methods.hpp"

#include "platform/Foundation/NSLog.hpp"

namespace {

constexpr NSUInteger allDirections = UISwipeGestureRecognizerDirectionRight | UISwipeGestureRecognizerDirectionLeft |
                                     UISwipeGestureRecognizerDirectionUp | UISwipeGestureRecognizerDirectionDown;

struct Answer {
    NSUInteger direction;
    void (APLCalendar::*navigation)();
};

constexpr Answer answers[] = {
    {UISwipeGestureRecognizerDirectionRight, &APLCalendar::nextMonth},
    {UISwipeGestureRecognizerDirectionLeft, &APLCalendar::prevMonth},
    {UISwipeGestureRecognizerDirectionUp, &APLCalendar::prevYear},
    {UISwipeGestureRecognizerDirectionDown, &APLCalendar::nextYear},
};

/// What is read is the recogniser's mask, which names all four directions and so none: a swipe changes nothing. This is
/// meant.
void swipePerformed(APLCalendar* self, SEL, UISwipeGestureRecognizer* recognizer)
{
    NSLog(constantString<"Swipe!">());
    const NSUInteger direction = recognizer->direction();
    for (const Answer& answer : answers) {
        if (direction == answer.direction)
            (self->*answer.navigation)();
    }
}

BOOL gestureRecognizer_shouldReceiveTouch(APLCalendar*, SEL, UIGestureRecognizer*, UITouch*)
{
    return YES;
}

} // namespace

void addSwipes(CalendarClass& calendar)
{
    calendar.method<"swipePerformed:">(swipePerformed)
        .method<"gestureRecognizer:shouldReceiveTouch:">(gestureRecognizer_shouldReceiveTouch);
}

void addSwipeRecognizer(APLCalendar* self)
{
    Strong<UISwipeGestureRecognizer>& recognizer = ivarsOf(self)._recognizer;
    // There is none yet: the message reaches nothing, and the recogniser keeps the platform's default. This is meant.
    recognizer->setCancelsTouchesInView(true);
    recognizer = adopt(UISwipeGestureRecognizer::alloc()->initWithTarget_action(self, selector<"swipePerformed:">()));
    recognizer->setDirection(allDirections);
    self->addGestureRecognizer(recognizer);
}
