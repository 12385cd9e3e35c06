#include <cmath>

#include "simulator/uikit/GestureState.hpp"
#include "simulator/uikit/uikit.hpp"

namespace simulator {

namespace {

struct PanState {};

constexpr CGFloat shortestDrag = 10;

void touchesMoved(UIPanGestureRecognizer* self, SEL, NSSet* touches, UIEvent* event)
{
    superOf<PanState, "touchesMoved:withEvent:">(self, touches, event);
    const GestureState& gesture = stateOf(self);
    if (gesture.state != UIGestureRecognizerStatePossible)
        self->setState(UIGestureRecognizerStateChanged);
    else if (std::hypot(gesture.location.x - gesture.start.x, gesture.location.y - gesture.start.y) >= shortestDrag)
        self->setState(UIGestureRecognizerStateBegan);
}

void touchesEnded(UIPanGestureRecognizer* self, SEL, NSSet* touches, UIEvent* event)
{
    superOf<PanState, "touchesEnded:withEvent:">(self, touches, event);
    if (stateOf(self).state != UIGestureRecognizerStatePossible)
        self->setState(UIGestureRecognizerStateEnded);
}

CGPoint translationInView(UIPanGestureRecognizer* self, SEL, UIView*)
{
    const GestureState& gesture = stateOf(self);
    return {gesture.location.x - gesture.start.x, gesture.location.y - gesture.start.y};
}

} // namespace

void registerUIPanGestureRecognizer()
{
    SimulatedClass<PanState>("UIPanGestureRecognizer", "UIGestureRecognizer")
        .method<"touchesMoved:withEvent:">(touchesMoved)
        .method<"touchesEnded:withEvent:">(touchesEnded)
        .method<"translationInView:">(translationInView)
        .registerClass();
}

} // namespace simulator
