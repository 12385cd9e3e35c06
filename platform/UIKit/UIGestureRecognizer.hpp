#pragma once

#include "platform/UIKit/UITouch.hpp"
#include "platform/UIKit/UIView.hpp"

enum UIGestureRecognizerState : NSInteger {
    UIGestureRecognizerStatePossible = 0,
    UIGestureRecognizerStateBegan = 1,
    UIGestureRecognizerStateChanged = 2,
    UIGestureRecognizerStateEnded = 3,
    UIGestureRecognizerStateCancelled = 4,
    UIGestureRecognizerStateFailed = 5,
};

enum UISwipeGestureRecognizerDirection : NSUInteger {
    UISwipeGestureRecognizerDirectionRight = 1 << 0,
    UISwipeGestureRecognizerDirectionLeft = 1 << 1,
    UISwipeGestureRecognizerDirectionUp = 1 << 2,
    UISwipeGestureRecognizerDirectionDown = 1 << 3,
};

/// Watches the touches of a view and its subviews for a gesture, and tells its targets.
class UIGestureRecognizer : public NSObject {
public:
    UIView* view() const { return send<"view", UIView*>(this); }
    UIGestureRecognizerState state() const { return send<"state", UIGestureRecognizerState>(this); }
    void setState(UIGestureRecognizerState state) { send<"setState:">(this, state); }
    bool isEnabled() const { return send<"isEnabled", BOOL>(this) != NO; }
    void setEnabled(bool enabled) { send<"setEnabled:">(this, BOOL{enabled}); }
    bool cancelsTouchesInView() const { return send<"cancelsTouchesInView", BOOL>(this) != NO; }
    void setCancelsTouchesInView(bool cancels) { send<"setCancelsTouchesInView:">(this, BOOL{cancels}); }
    /// The target is not retained.
    void addTarget_action(id target, SEL action) { send<"addTarget:action:">(this, target, action); }
    CGPoint locationInView(UIView* view) const { return send<"locationInView:", CGPoint>(this, view); }
    /// Makes it ready for the next gesture.
    void reset() { send<"reset">(this); }
};

/// Recognises a number of taps in quick succession.
class UITapGestureRecognizer : public UIGestureRecognizer {
public:
    static UITapGestureRecognizer* alloc()
    {
        return send<"alloc", UITapGestureRecognizer*>(classNamed<"UITapGestureRecognizer">());
    }
    UITapGestureRecognizer* initWithTarget_action(id target, SEL action)
    {
        return send<"initWithTarget:action:", UITapGestureRecognizer*>(this, target, action);
    }
    NSUInteger numberOfTapsRequired() const { return send<"numberOfTapsRequired", NSUInteger>(this); }
    void setNumberOfTapsRequired(NSUInteger taps) { send<"setNumberOfTapsRequired:">(this, taps); }
};

/// Recognises a quick stroke in one of the directions of its mask.
class UISwipeGestureRecognizer : public UIGestureRecognizer {
public:
    static UISwipeGestureRecognizer* alloc()
    {
        return send<"alloc", UISwipeGestureRecognizer*>(classNamed<"UISwipeGestureRecognizer">());
    }
    UISwipeGestureRecognizer* initWithTarget_action(id target, SEL action)
    {
        return send<"initWithTarget:action:", UISwipeGestureRecognizer*>(this, target, action);
    }
    /// The mask as it was set, not the direction of the stroke.
    NSUInteger direction() const { return send<"direction", NSUInteger>(this); }
    void setDirection(NSUInteger mask) { send<"setDirection:">(this, mask); }
};

/// Follows a finger that drags.
class UIPanGestureRecognizer : public UIGestureRecognizer {
public:
    static UIPanGestureRecognizer* alloc()
    {
        return send<"alloc", UIPanGestureRecognizer*>(classNamed<"UIPanGestureRecognizer">());
    }
    UIPanGestureRecognizer* initWithTarget_action(id target, SEL action)
    {
        return send<"initWithTarget:action:", UIPanGestureRecognizer*>(this, target, action);
    }
    CGPoint translationInView(UIView* view) const { return send<"translationInView:", CGPoint>(this, view); }
    /// In points a second.
    CGPoint velocityInView(UIView* view) const { return send<"velocityInView:", CGPoint>(this, view); }
};
