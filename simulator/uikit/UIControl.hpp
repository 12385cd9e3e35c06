#pragma once

#include <vector>

#include "platform/UIKit/UIControl.hpp"
#include "simulator/runtime/SimulatedClass.hpp"

namespace simulator {

/// What every control holds ("UIControl", UIKit).
struct ControlState {
    struct Target {
        /// Not retained.
        NSObject* object;
        SEL action;
        NSUInteger events;
    };
    std::vector<Target> targets;
    bool enabled = true;
    bool highlighted = false;
    bool selected = false;
    bool tracking = false;
    bool touchInside = false;
};

} // namespace simulator
