#include <cmath>

#include "platform/Foundation/NSSet.hpp"
#include "simulator/uikit/UIGestureRecognizer.hpp"
#include "simulator/uikit/uikit.hpp"

/// Recognises a number of short taps that follow each other quickly in about the same place.

namespace simulator {

namespace {

struct TapGestureState {
    NSUInteger numberOfTapsRequired = 1;
    NSUInteger taps = 0;
    CGPoint firstPlace{};
    NSTimeInterval lastTime = 0;
};

constexpr NSTimeInterval longestPause = 0.35;
constexpr NSTimeInterval longestTouch = 0.75;
constexpr CGFloat farthestTap = 45;

CGFloat distance(CGPoint a, CGPoint b)
{
    return std::hypot(a.x - b.x, a.y - b.y);
}

void touchesBegan_withEvent(UITapGestureRecognizer* self, SEL, NSSet* touches, UIEvent* event)
{
    superOf<TapGestureState, "touchesBegan:withEvent:">(self, touches, event);
    auto& tap = ivarsOf<TapGestureState>(self);
    const auto& gesture = ivarsOf<GestureState>(self);
    const bool continues = tap.taps > 0 && gesture.startTime - tap.lastTime <= longestPause &&
                           distance(gesture.start, tap.firstPlace) <= farthestTap;
    if (!continues) {
        tap.taps = 0;
        tap.firstPlace = gesture.start;
    }
}

/// Whether the finger has stayed too long or moved off by now.
bool isNoTap(const GestureState& gesture, NSSet* touches)
{
    return touches->anyObject<UITouch>()->timestamp() - gesture.startTime > longestTouch ||
           distance(gesture.location, gesture.start) > farthestTap;
}

void touchesMoved_withEvent(UITapGestureRecognizer* self, SEL, NSSet* touches, UIEvent* event)
{
    superOf<TapGestureState, "touchesMoved:withEvent:">(self, touches, event);
    if (isNoTap(ivarsOf<GestureState>(self), touches))
        self->setState(UIGestureRecognizerStateFailed);
}

void touchesEnded_withEvent(UITapGestureRecognizer* self, SEL, NSSet* touches, UIEvent* event)
{
    superOf<TapGestureState, "touchesEnded:withEvent:">(self, touches, event);
    auto& tap = ivarsOf<TapGestureState>(self);
    if (isNoTap(ivarsOf<GestureState>(self), touches)) {
        self->setState(UIGestureRecognizerStateFailed);
        return;
    }
    tap.lastTime = touches->anyObject<UITouch>()->timestamp();
    if (++tap.taps >= tap.numberOfTapsRequired)
        self->setState(UIGestureRecognizerStateEnded);
}

/// Whatever decides the gesture, the count begins anew.
void setState(UITapGestureRecognizer* self, SEL, UIGestureRecognizerState state)
{
    superOf<TapGestureState, "setState:">(self, state);
    if (state != UIGestureRecognizerStatePossible)
        ivarsOf<TapGestureState>(self).taps = 0;
}

} // namespace

void registerUITapGestureRecognizer()
{
    SimulatedClass<TapGestureState>("UITapGestureRecognizer", "UIGestureRecognizer")
        .property<&TapGestureState::numberOfTapsRequired>("numberOfTapsRequired")
        .method<"touchesBegan:withEvent:">(touchesBegan_withEvent)
        .method<"touchesMoved:withEvent:">(touchesMoved_withEvent)
        .method<"touchesEnded:withEvent:">(touchesEnded_withEvent)
        .method<"setState:">(setState)
        .registerClass();
}

} // namespace simulator
