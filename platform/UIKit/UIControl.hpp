#pragma once

#include "platform/UIKit/UIView.hpp"

enum UIControlEvents : NSUInteger {
    UIControlEventTouchDown = 1 << 0,
    UIControlEventTouchDragInside = 1 << 2,
    UIControlEventTouchDragOutside = 1 << 3,
    UIControlEventTouchDragEnter = 1 << 4,
    UIControlEventTouchDragExit = 1 << 5,
    UIControlEventTouchUpInside = 1 << 6,
    UIControlEventTouchUpOutside = 1 << 7,
    UIControlEventTouchCancel = 1 << 8,
    UIControlEventEditingDidEnd = 1 << 18,
};

enum UIControlState : NSUInteger {
    UIControlStateNormal = 0,
    UIControlStateHighlighted = 1 << 0,
    UIControlStateDisabled = 1 << 1,
    UIControlStateSelected = 1 << 2,
};

/// A view that turns touches into events and tells its targets of them.
class UIControl : public UIView {
public:
    bool isEnabled() const { return send<"isEnabled", BOOL>(this) != NO; }
    /// A control that is not enabled takes touches but makes no events of them.
    void setEnabled(bool enabled) { send<"setEnabled:">(this, BOOL{enabled}); }
    bool isHighlighted() const { return send<"isHighlighted", BOOL>(this) != NO; }
    void setHighlighted(bool highlighted) { send<"setHighlighted:">(this, BOOL{highlighted}); }
    UIControlState state() const { return send<"state", UIControlState>(this); }
    /// The target is not retained; the action may take the control.
    void addTarget_action_forControlEvents(id target, SEL action, UIControlEvents events)
    {
        send<"addTarget:action:forControlEvents:">(this, target, action, events);
    }
    void sendActionsForControlEvents(UIControlEvents events) { send<"sendActionsForControlEvents:">(this, events); }
};
