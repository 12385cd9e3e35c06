#pragma once

#include "platform/CoreGraphics/CGGeometry.hpp"
#include "platform/Foundation/NSObject.hpp"

class UIView;

enum UITouchPhase : NSInteger {
    UITouchPhaseBegan = 0,
    UITouchPhaseMoved = 1,
    UITouchPhaseStationary = 2,
    UITouchPhaseEnded = 3,
    UITouchPhaseCancelled = 4,
};

/// One finger on the screen, from the moment it comes down until it is lifted.
class UITouch : public NSObject {
public:
    UITouchPhase phase() const { return send<"phase", UITouchPhase>(this); }
    /// In seconds, on a clock that never goes back.
    NSTimeInterval timestamp() const { return send<"timestamp", NSTimeInterval>(this); }
    UIView* view() const { return send<"view", UIView*>(this); }
    /// Nil stands for the window.
    CGPoint locationInView(UIView* view) const { return send<"locationInView:", CGPoint>(this, view); }
};
