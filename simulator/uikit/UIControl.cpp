#include "simulator/uikit/UIControl.hpp"

#include <utility>
#include <vector>

#include "platform/Foundation/NSSet.hpp"
#include "platform/Foundation/NSString.hpp"
#include "platform/UIKit/UITouch.hpp"
#include "simulator/uikit/uikit.hpp"

/// A view that follows a touch and tells its targets what came of it.

namespace simulator {

namespace {

void stateChanged(NSObject* self)
{
    static_cast<UIControl*>(self)->setNeedsLayout();
}

void addTarget_action_forControlEvents(UIControl* self, SEL, id target, SEL action, UIControlEvents events)
{
    ivarsOf<ControlState>(self).targets.push_back({target, action, events});
}

/// The actions are called in the order in which they were added.
void sendActionsForControlEvents(UIControl* self, SEL, UIControlEvents events)
{
    const Owned<UIControl> kept(self);
    // A copy, since an action may add another.
    for (const ControlState::Target& target : std::vector(ivarsOf<ControlState>(self).targets)) {
        if ((target.events & events) != 0)
            target.object->performSelector_withObject(target.action, self);
    }
}

/// The texts of the selectors that a target is sent for an event; nil when there are none.
NSArray* actionsForTarget_forControlEvent(UIControl* self, SEL, id object, UIControlEvents event)
{
    std::vector<id> names;
    for (const ControlState::Target& target : ivarsOf<ControlState>(self).targets) {
        if (target.object == object && (target.events & event) != 0)
            names.push_back(NSString::stringWithUTF8String(sel_getName(target.action)));
    }
    return names.empty() ? nullptr : NSArray::arrayWithObjects_count(names.data(), names.size());
}

NSUInteger state(UIControl* self, SEL)
{
    const auto& control = ivarsOf<ControlState>(self);
    NSUInteger state = UIControlStateNormal;
    if (control.highlighted)
        state |= UIControlStateHighlighted;
    if (!control.enabled)
        state |= UIControlStateDisabled;
    if (control.selected)
        state |= UIControlStateSelected;
    return state;
}

/// A finger that came down on the control is taken to be inside for as long as it is no farther away than this, in points.
constexpr CGFloat reach = 70;

bool isWithinReach(UIControl* self, NSSet* touches)
{
    const CGPoint point = touches->anyObject<UITouch>()->locationInView(self);
    const auto [origin, size] = self->bounds();
    return point.x >= origin.x - reach && point.x < origin.x + size.width + reach && point.y >= origin.y - reach &&
           point.y < origin.y + size.height + reach;
}

void touchesBegan_withEvent(UIControl* self, SEL, NSSet*, UIEvent*)
{
    if (!self->isEnabled())
        return;
    auto& control = ivarsOf<ControlState>(self);
    control.tracking = true;
    control.touchInside = true;
    self->setHighlighted(true);
    self->sendActionsForControlEvents(UIControlEventTouchDown);
}

void touchesMoved_withEvent(UIControl* self, SEL, NSSet* touches, UIEvent*)
{
    auto& control = ivarsOf<ControlState>(self);
    if (!control.tracking)
        return;
    const bool wasInside = std::exchange(control.touchInside, isWithinReach(self, touches));
    self->setHighlighted(control.touchInside);
    NSUInteger events = control.touchInside ? UIControlEventTouchDragInside : UIControlEventTouchDragOutside;
    if (control.touchInside != wasInside)
        events |= control.touchInside ? UIControlEventTouchDragEnter : UIControlEventTouchDragExit;
    self->sendActionsForControlEvents(static_cast<UIControlEvents>(events));
}

void endTracking(UIControl* self, UIControlEvents event)
{
    auto& control = ivarsOf<ControlState>(self);
    if (!control.tracking)
        return;
    control.tracking = false;
    control.touchInside = false;
    self->setHighlighted(false);
    self->sendActionsForControlEvents(event);
}

void touchesEnded_withEvent(UIControl* self, SEL, NSSet* touches, UIEvent*)
{
    endTracking(self, isWithinReach(self, touches) ? UIControlEventTouchUpInside : UIControlEventTouchUpOutside);
}

void touchesCancelled_withEvent(UIControl* self, SEL, NSSet*, UIEvent*)
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
        .readOnlyFlag<&ControlState::tracking>("tracking")
        .readOnlyFlag<&ControlState::touchInside>("touchInside")
        .method<"state">(state)
        .method<"addTarget:action:forControlEvents:">(addTarget_action_forControlEvents)
        .method<"actionsForTarget:forControlEvent:">(actionsForTarget_forControlEvent)
        .method<"sendActionsForControlEvents:">(sendActionsForControlEvents)
        .method<"touchesBegan:withEvent:">(touchesBegan_withEvent)
        .method<"touchesMoved:withEvent:">(touchesMoved_withEvent)
        .method<"touchesEnded:withEvent:">(touchesEnded_withEvent)
        .method<"touchesCancelled:withEvent:">(touchesCancelled_withEvent)
        .registerClass();
}

} // namespace simulator
