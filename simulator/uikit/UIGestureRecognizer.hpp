#pragma once

#include <vector>

#include "platform/UIKit/UIGestureRecognizer.hpp"
#include "simulator/runtime/SimulatedClass.hpp"

namespace simulator {

/// What every gesture recogniser holds ("UIGestureRecognizer", UIKit).
struct GestureState {
    struct Target {
        /// Not retained.
        NSObject* object;
        SEL action;
    };
    std::vector<Target> targets;
    UIView* view = nullptr;
    UIGestureRecognizerState state = UIGestureRecognizerStatePossible;
    /// The gesture was recognised, or went on, and the targets have not been told yet.
    bool hasNews = false;
    bool enabled = true;
    bool cancelsTouchesInView = true;
    /// Of the touch, in the window.
    CGPoint start{};
    CGPoint location{};
    NSTimeInterval startTime = 0;
};

} // namespace simulator
