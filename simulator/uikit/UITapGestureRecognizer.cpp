#include <cmath>

#include "platform/Foundation/NSSet.hpp"
#include "simulator/uikit/GestureState.hpp"
#include "simulator/uikit/uikit.hpp"

namespace simulator {

namespace {

struct TapState {
    NSUInteger numberOfTapsRequired = 1;
    NSUInteger taps = 0;
    CGPoint firstPlace{};
    NSTimeInterval lastTime = 0;
};

constexpr NSTimeInterval longestPause = 0.35;
constexpr CGFloat farthestTap = 45;

CGFloat distance(CGPoint a, CGPoint b)
{
    return std::hypot(a.x - b.x, a.y - b.y);
}

void touchesBegan(UITapGestureRecognizer* self, SEL, NSSet* touches, UIEvent* event)
{
    superOf<TapState, "touchesBegan:withEvent:">(self, touches, event);
    auto& tap = ivarsOf<TapState>(self);
    const GestureState& gesture = stateOf(self);
    const bool continues = tap.taps > 0 && gesture.startTime - tap.lastTime <= longestPause &&
                           distance(gesture.start, tap.firstPlace) <= farthestTap;
    if (!continues) {
        tap.taps = 0;
        tap.firstPlace = gesture.start;
    }
}

void touchesEnded(UITapGestureRecognizer* self, SEL, NSSet* touches, UIEvent* event)
{
    superOf<TapState, "touchesEnded:withEvent:">(self, touches, event);
    auto& tap = ivarsOf<TapState>(self);
    const GestureState& gesture = stateOf(self);
    if (distance(gesture.location, gesture.start) > farthestTap) {
        tap.taps = 0;
        self->setState(UIGestureRecognizerStateFailed);
        return;
    }
    tap.lastTime = static_cast<UITouch*>(touches->anyObject())->timestamp();
    if (++tap.taps >= tap.numberOfTapsRequired) {
        tap.taps = 0;
        self->setState(UIGestureRecognizerStateEnded);
    }
}

} // namespace

void registerUITapGestureRecognizer()
{
    SimulatedClass<TapState>("UITapGestureRecognizer", "UIGestureRecognizer")
        .property<&TapState::numberOfTapsRequired>("numberOfTapsRequired")
        .method<"touchesBegan:withEvent:">(touchesBegan)
        .method<"touchesEnded:withEvent:">(touchesEnded)
        .registerClass();
}

} // namespace simulator
