#include "platform/UIKit/UIControl.hpp"

#include <vector>

#include "platform/Foundation/NSSet.hpp"
#include "platform/UIKit/UITouch.hpp"
#include "simulator/uikit/ControlState.hpp"
#include "simulator/uikit/uikit.hpp"

namespace simulator {

namespace {

void stateChanged(NSObject* self)
{
    static_cast<UIControl*>(self)->setNeedsLayout();
}

void addTarget(UIControl* self, SEL, id target, SEL action, UIControlEvents events)
{
    stateOf(self).targets.push_back({target, action, events});
}

/// The actions are called in the order in which they were added.
void sendActionsForControlEvents(UIControl* self, SEL, UIControlEvents events)
{
    const Owned<UIControl> kept(self);
    // A copy, since an action may add another.
    for (const ControlState::Target& target : std::vector(stateOf(self).targets)) {
        if ((target.events & events) != 0)
            perform(target.object, target.action, self);
    }
}

/// The texts of the selectors that a target is sent for an event; nil when there are none.
NSArray* actionsForTarget(UIControl* self, SEL, id object, UIControlEvents event)
{
    std::vector<id> names;
    for (const ControlState::Target& target : stateOf(self).targets) {
        if (target.object == object && (target.events & event) != 0)
            names.push_back(NSString::stringWithUTF8String(sel_getName(target.action)));
    }
    return names.empty() ? nullptr : NSArray::arrayWithObjects_count(names.data(), names.size());
}

NSUInteger state(UIControl* self, SEL)
{
    const ControlState& control = stateOf(self);
    NSUInteger state = UIControlStateNormal;
    if (control.highlighted)
        state |= UIControlStateHighlighted;
    if (!control.enabled)
        state |= UIControlStateDisabled;
    if (control.selected)
        state |= UIControlStateSelected;
    return state;
}

bool isInside(UIControl* self, NSSet* touches)
{
    const CGPoint point = static_cast<UITouch*>(touches->anyObject())->locationInView(self);
    return send<"pointInside:withEvent:", BOOL>(self, point, static_cast<UIEvent*>(nullptr)) != NO;
}

void setHighlighted(UIControl* self, bool highlighted)
{
    send<"setHighlighted:">(self, BOOL{highlighted});
}

void touchesBegan(UIControl* self, SEL, NSSet*, UIEvent*)
{
    if (!self->isEnabled())
        return;
    stateOf(self).isTracking = true;
    setHighlighted(self, true);
    self->sendActionsForControlEvents(UIControlEventTouchDown);
}

void touchesMoved(UIControl* self, SEL, NSSet* touches, UIEvent*)
{
    if (stateOf(self).isTracking)
        setHighlighted(self, isInside(self, touches));
}

void endTracking(UIControl* self, UIControlEvents event)
{
    if (!stateOf(self).isTracking)
        return;
    stateOf(self).isTracking = false;
    setHighlighted(self, false);
    self->sendActionsForControlEvents(event);
}

void touchesEnded(UIControl* self, SEL, NSSet* touches, UIEvent*)
{
    endTracking(self, isInside(self, touches) ? UIControlEventTouchUpInside : UIControlEventTouchUpOutside);
}

void touchesCancelled(UIControl* self, SEL, NSSet*, UIEvent*)
{
    endTracking(self, UIControlEventTouchCancel);
}

} // namespace

void registerUIControl()
{
    SimulatedClass<ControlState>("UIControl", "UIView")
        .flag<&ControlState::enabled, stateChanged>("enabled")
        .flag<&ControlState::highlighted, stateChanged>("highlighted")
        .flag<&ControlState::selected, stateChanged>("selected")
        .method<"state">(state)
        .method<"addTarget:action:forControlEvents:">(addTarget)
        .method<"actionsForTarget:forControlEvent:">(actionsForTarget)
        .method<"sendActionsForControlEvents:">(sendActionsForControlEvents)
        .method<"touchesBegan:withEvent:">(touchesBegan)
        .method<"touchesMoved:withEvent:">(touchesMoved)
        .method<"touchesEnded:withEvent:">(touchesEnded)
        .method<"touchesCancelled:withEvent:">(touchesCancelled)
        .registerClass();
}

} // namespace simulator
