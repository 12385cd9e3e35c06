#include <cmath>

#include "platform/Foundation/NSSet.hpp"
#include "simulator/uikit/UIGestureRecognizer.hpp"
#include "simulator/uikit/uikit.hpp"

/// Recognises a stroke along one axis: a slow one must be straight and may be short, a fast one may slant and must be long.

namespace simulator {

namespace {

struct SwipeGestureState {
    NSUInteger direction = UISwipeGestureRecognizerDirectionRight;
};

/// What is asked of a stroke.
struct Demand {
    /// In points along its axis.
    CGFloat length;
    /// How far it may stray to the side, by its length.
    CGFloat slant;
};

constexpr NSTimeInterval longestStroke = 0.5;
constexpr Demand ofTheFastest{70, 0.8};
constexpr Demand ofTheSlowest{30, 0.3};

Demand demandAfter(NSTimeInterval time)
{
    const auto slowness = static_cast<CGFloat>(time / longestStroke);
    return {std::lerp(ofTheFastest.length, ofTheSlowest.length, slowness),
            std::lerp(ofTheFastest.slant, ofTheSlowest.slant, slowness)};
}

/// The direction of a stroke that meets the demand along one axis; 0 for any other.
NSUInteger directionOf(CGFloat x, CGFloat y, Demand demand)
{
    const auto goesAlong = [demand](CGFloat main, CGFloat side) {
        return std::abs(main) >= demand.length && std::abs(side) <= demand.slant * std::abs(main);
    };
    if (goesAlong(x, y))
        return x > 0 ? UISwipeGestureRecognizerDirectionRight : UISwipeGestureRecognizerDirectionLeft;
    if (goesAlong(y, x))
        return y > 0 ? UISwipeGestureRecognizerDirectionDown : UISwipeGestureRecognizerDirectionUp;
    return 0;
}

void touchesMoved_withEvent(UISwipeGestureRecognizer* self, SEL, NSSet* touches, UIEvent* event)
{
    superOf<SwipeGestureState, "touchesMoved:withEvent:">(self, touches, event);
    const auto& gesture = ivarsOf<GestureState>(self);
    const NSTimeInterval time = touches->anyObject<UITouch>()->timestamp() - gesture.startTime;
    if (time > longestStroke) {
        self->setState(UIGestureRecognizerStateFailed);
        return;
    }
    const NSUInteger made =
        directionOf(gesture.location.x - gesture.start.x, gesture.location.y - gesture.start.y, demandAfter(time));
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
