#pragma once

#include "platform/UIKit/UITouch.hpp"
#include "platform/UIKit/UIWindow.hpp"
#include "simulator/runtime/SimulatedClass.hpp"

namespace simulator {

/// What every touch holds ("UITouch", UIKit).
struct TouchState {
    UITouchPhase phase = UITouchPhaseBegan;
    NSTimeInterval timestamp = 0;
    Owned<UIView> view;
    Owned<UIWindow> window;
    /// In the window.
    CGPoint location{};
};

} // namespace simulator
