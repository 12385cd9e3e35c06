#include "simulator/uikit/UIGestureRecognizer.hpp"

#include "platform/Foundation/NSSet.hpp"
#include "platform/UIKit/UIWindow.hpp"
#include "simulator/uikit/uikit.hpp"

/// What all recognisers share: the targets, the state, and where the touch began and is.

namespace simulator {

namespace {

UIGestureRecognizer* initWithTarget_action(UIGestureRecognizer* self, SEL, id target, SEL action)
{
    self->addTarget_action(target, action);
    return self;
}

void addTarget_action(UIGestureRecognizer* self, SEL, id target, SEL action)
{
    if (target != nullptr && action != nullptr)
        ivarsOf<GestureState>(self).targets.push_back({target, action});
}

void setState(UIGestureRecognizer* self, SEL, UIGestureRecognizerState state)
{
    ivarsOf<GestureState>(self).state = state;
    ivarsOf<GestureState>(self).hasNews = state != UIGestureRecognizerStatePossible && state != UIGestureRecognizerStateFailed;
}

CGPoint locationInView(UIGestureRecognizer* self, SEL, UIView* view)
{
    return self->view()->window()->convertPoint_toView(ivarsOf<GestureState>(self).location, view);
}

void remember(UIGestureRecognizer* self, NSSet* touches)
{
    ivarsOf<GestureState>(self).location = touches->anyObject<UITouch>()->locationInView(nullptr);
}

void touchesBegan_withEvent(UIGestureRecognizer* self, SEL, NSSet* touches, UIEvent*)
{
    remember(self, touches);
    ivarsOf<GestureState>(self).start = ivarsOf<GestureState>(self).location;
    ivarsOf<GestureState>(self).startTime = touches->anyObject<UITouch>()->timestamp();
}

void touchesMovedOrEnded_withEvent(UIGestureRecognizer* self, SEL, NSSet* touches, UIEvent*)
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
    SimulatedClass<GestureState>("UIGestureRecognizer", "NSObject")
        .method<"initWithTarget:action:">(initWithTarget_action)
        .method<"addTarget:action:">(addTarget_action)
        .readOnly<&GestureState::view>("view")
        .readOnly<&GestureState::state>("state")
        .method<"setState:">(setState)
        .flag<&GestureState::enabled>("enabled")
        .property<&GestureState::cancelsTouchesInView>("cancelsTouchesInView")
        .method<"locationInView:">(locationInView)
        .method<"touchesBegan:withEvent:">(touchesBegan_withEvent)
        .method<"touchesMoved:withEvent:">(touchesMovedOrEnded_withEvent)
        .method<"touchesEnded:withEvent:">(touchesMovedOrEnded_withEvent)
        .method<"reset">(reset)
        .registerClass();
}

} // namespace simulator
