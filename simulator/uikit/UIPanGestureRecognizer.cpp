#include <algorithm>
#include <cmath>
#include <vector>

#include "platform/Foundation/NSSet.hpp"
#include "simulator/uikit/UIGestureRecognizer.hpp"
#include "simulator/uikit/uikit.hpp"

/// Recognises a drag: a finger that has moved far enough, for as long as it stays down.

namespace simulator {

namespace {

/// Where the finger was, in the window.
struct Step {
    NSTimeInterval time;
    CGPoint location;
};

struct PanGestureState {
    /// The latest, of no longer than a moment.
    std::vector<Step> steps;
};

constexpr CGFloat shortestDrag = 10;
/// How far back the finger's speed is measured, in seconds. The steps of a script's finger are not to fall on its border.
constexpr NSTimeInterval moment = 0.09;

void follow(UIPanGestureRecognizer* self, NSSet* touches)
{
    auto& steps = ivarsOf<PanGestureState>(self).steps;
    const NSTimeInterval now = touches->anyObject<UITouch>()->timestamp();
    std::erase_if(steps, [now](const Step& step) { return now - step.time > moment; });
    steps.push_back({now, ivarsOf<GestureState>(self).location});
}

void touchesBegan_withEvent(UIPanGestureRecognizer* self, SEL, NSSet* touches, UIEvent* event)
{
    superOf<PanGestureState, "touchesBegan:withEvent:">(self, touches, event);
    ivarsOf<PanGestureState>(self).steps.clear();
    follow(self, touches);
}

void touchesMoved_withEvent(UIPanGestureRecognizer* self, SEL, NSSet* touches, UIEvent* event)
{
    superOf<PanGestureState, "touchesMoved:withEvent:">(self, touches, event);
    follow(self, touches);
    const auto& gesture = ivarsOf<GestureState>(self);
    if (gesture.state != UIGestureRecognizerStatePossible)
        self->setState(UIGestureRecognizerStateChanged);
    else if (std::hypot(gesture.location.x - gesture.start.x, gesture.location.y - gesture.start.y) >= shortestDrag)
        self->setState(UIGestureRecognizerStateBegan);
}

void touchesEnded_withEvent(UIPanGestureRecognizer* self, SEL, NSSet* touches, UIEvent* event)
{
    superOf<PanGestureState, "touchesEnded:withEvent:">(self, touches, event);
    follow(self, touches);
    if (ivarsOf<GestureState>(self).state != UIGestureRecognizerStatePossible)
        self->setState(UIGestureRecognizerStateEnded);
}

CGPoint translationInView(UIPanGestureRecognizer* self, SEL, UIView*)
{
    const auto& gesture = ivarsOf<GestureState>(self);
    return {gesture.location.x - gesture.start.x, gesture.location.y - gesture.start.y};
}

/// A finger that has rested for a moment has none.
CGPoint velocityInView(UIPanGestureRecognizer* self, SEL, UIView*)
{
    const auto& steps = ivarsOf<PanGestureState>(self).steps;
    if (steps.empty() || steps.back().time == steps.front().time)
        return {};
    const auto time = static_cast<CGFloat>(steps.back().time - steps.front().time);
    return {(steps.back().location.x - steps.front().location.x) / time,
            (steps.back().location.y - steps.front().location.y) / time};
}

} // namespace

void registerUIPanGestureRecognizer()
{
    SimulatedClass<PanGestureState>("UIPanGestureRecognizer", "UIGestureRecognizer")
        .method<"touchesBegan:withEvent:">(touchesBegan_withEvent)
        .method<"touchesMoved:withEvent:">(touchesMoved_withEvent)
        .method<"touchesEnded:withEvent:">(touchesEnded_withEvent)
        .method<"translationInView:">(translationInView)
        .method<"velocityInView:">(velocityInView)
        .registerClass();
}

} // namespace simulator
