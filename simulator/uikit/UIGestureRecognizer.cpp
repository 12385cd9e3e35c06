#include "platform/UIKit/UIGestureRecognizer.hpp"

#include "platform/Foundation/NSSet.hpp"
#include "platform/UIKit/UIWindow.hpp"
#include "simulator/uikit/GestureState.hpp"
#include "simulator/uikit/uikit.hpp"

namespace simulator {

namespace {

using Gesture = GestureState;

UIGestureRecognizer* initWithTarget(UIGestureRecognizer* self, SEL, id target, SEL action)
{
    self->addTarget_action(target, action);
    return self;
}

void addTarget(UIGestureRecognizer* self, SEL, id target, SEL action)
{
    if (target != nullptr && action != nullptr)
        stateOf(self).targets.push_back({target, action});
}

void setState(UIGestureRecognizer* self, SEL, UIGestureRecognizerState state)
{
    stateOf(self).state = state;
    stateOf(self).hasNews = state != UIGestureRecognizerStatePossible && state != UIGestureRecognizerStateFailed;
}

CGPoint locationInView(UIGestureRecognizer* self, SEL, UIView* view)
{
    return self->view()->window()->convertPoint_toView(stateOf(self).location, view);
}

void remember(UIGestureRecognizer* self, NSSet* touches)
{
    stateOf(self).location = static_cast<UITouch*>(touches->anyObject())->locationInView(nullptr);
}

void touchesBegan(UIGestureRecognizer* self, SEL, NSSet* touches, UIEvent*)
{
    remember(self, touches);
    stateOf(self).start = stateOf(self).location;
    stateOf(self).startTime = static_cast<UITouch*>(touches->anyObject())->timestamp();
}

void touchesMovedOrEnded(UIGestureRecognizer* self, SEL, NSSet* touches, UIEvent*)
{
    remember(self, touches);
}

void reset(UIGestureRecognizer* self, SEL)
{
    self->setState(UIGestureRecognizerStatePossible);
}

} // namespace

void registerUIGestureRecognizer()
{
    SimulatedClass<Gesture>("UIGestureRecognizer", "NSObject")
        .method<"initWithTarget:action:">(initWithTarget)
        .method<"addTarget:action:">(addTarget)
        .property<&Gesture::view>("view")
        .readOnly<&Gesture::state>("state")
        .method<"setState:">(setState)
        .flag<&Gesture::enabled>("enabled")
        .property<&Gesture::cancelsTouchesInView>("cancelsTouchesInView")
        .method<"locationInView:">(locationInView)
        .method<"touchesBegan:withEvent:">(touchesBegan)
        .method<"touchesMoved:withEvent:">(touchesMovedOrEnded)
        .method<"touchesEnded:withEvent:">(touchesMovedOrEnded)
        .method<"reset">(reset)
        .registerClass();
}

} // namespace simulator
