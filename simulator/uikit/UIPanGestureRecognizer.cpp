#include <cmath>

#include "simulator/uikit/UIGestureRecognizer.hpp"
#include "simulator/uikit/uikit.hpp"

/// Recognises a drag: a finger that has moved far enough, for as long as it stays down.

namespace simulator {

namespace {

struct PanGestureState {};

constexpr CGFloat shortestDrag = 10;

void touchesMoved_withEvent(UIPanGestureRecognizer* self, SEL, NSSet* touches, UIEvent* event)
{
    superOf<PanGestureState, "touchesMoved:withEvent:">(self, touches, event);
    const auto& gesture = ivarsOf<GestureState>(self);
    if (gesture.state != UIGestureRecognizerStatePossible)
        self->setState(UIGestureRecognizerStateChanged);
    else if (std::hypot(gesture.location.x - gesture.start.x, gesture.location.y - gesture.start.y) >= shortestDrag)
        self->setState(UIGestureRecognizerStateBegan);
}

void touchesEnded_withEvent(UIPanGestureRecognizer* self, SEL, NSSet* touches, UIEvent* event)
{
    superOf<PanGestureState, "touchesEnded:withEvent:">(self, touches, event);
    if (ivarsOf<GestureState>(self).state != UIGestureRecognizerStatePossible)
        self->setState(UIGestureRecognizerStateEnded);
}

CGPoint translationInView(UIPanGestureRecognizer* self, SEL, UIView*)
{
    const auto& gesture = ivarsOf<GestureState>(self);
    return {gesture.location.x - gesture.start.x, gesture.location.y - gesture.start.y};
}

} // namespace

void registerUIPanGestureRecognizer()
{
    SimulatedClass<PanGestureState>("UIPanGestureRecognizer", "UIGestureRecognizer")
        .method<"touchesMoved:withEvent:">(touchesMoved_withEvent)
        .method<"touchesEnded:withEvent:">(touchesEnded_withEvent)
        .method<"translationInView:">(translationInView)
        .registerClass();
}

} // namespace simulator
