#include <cmath>

#include "platform/Foundation/NSSet.hpp"
#include "simulator/uikit/UIGestureRecognizer.hpp"
#include "simulator/uikit/uikit.hpp"

/// Recognises a quick stroke that is clearly along one axis.

namespace simulator {

namespace {

struct SwipeGestureState {
    NSUInteger direction = UISwipeGestureRecognizerDirectionRight;
};

constexpr CGFloat shortestStroke = 50;
constexpr NSTimeInterval longestStroke = 0.5;

/// The direction of a stroke that is clearly along one axis; 0 for any other.
NSUInteger directionOf(CGFloat x, CGFloat y)
{
    constexpr CGFloat slant = 0.6;
    if (std::abs(x) >= shortestStroke && std::abs(y) <= slant * std::abs(x))
        return x > 0 ? UISwipeGestureRecognizerDirectionRight : UISwipeGestureRecognizerDirectionLeft;
    if (std::abs(y) >= shortestStroke && std::abs(x) <= slant * std::abs(y))
        return y > 0 ? UISwipeGestureRecognizerDirectionDown : UISwipeGestureRecognizerDirectionUp;
    return 0;
}

void touchesMoved_withEvent(UISwipeGestureRecognizer* self, SEL, NSSet* touches, UIEvent* event)
{
    superOf<SwipeGestureState, "touchesMoved:withEvent:">(self, touches, event);
    const auto& gesture = ivarsOf<GestureState>(self);
    if (touches->anyObject<UITouch>()->timestamp() - gesture.startTime > longestStroke) {
        self->setState(UIGestureRecognizerStateFailed);
        return;
    }
    const NSUInteger made = directionOf(gesture.location.x - gesture.start.x, gesture.location.y - gesture.start.y);
    if ((made & self->direction()) != 0)
        self->setState(UIGestureRecognizerStateEnded);
}

} // namespace

void registerUISwipeGestureRecognizer()
{
    SimulatedClass<SwipeGestureState>("UISwipeGestureRecognizer", "UIGestureRecognizer")
        .property<&SwipeGestureState::direction>("direction")
        .method<"touchesMoved:withEvent:">(touchesMoved_withEvent)
        .registerClass();
}

} // namespace simulator
