#pragma once

#include <memory>
#include <vector>

#include "platform/QuartzCore/CALayer.hpp"
#include "platform/runtime/Owned.hpp"
#include "simulator/graphics/Bitmap.hpp"
#include "simulator/runtime/SimulatedClass.hpp"

namespace simulator {

/// What one layer holds ("CALayer", Core Animation).
struct LayerState {
    CGRect bounds{};
    /// Where the centre of the bounds lies in the superlayer.
    CGPoint position{};
    std::vector<Owned<CALayer>> sublayers;
    CALayer* superlayer = nullptr;
    Owned<CALayer> mask;
    std::shared_ptr<Bitmap> contents;
    Owned<CGColor> backgroundColor;
    Owned<CGColor> borderColor;
    CGFloat borderWidth = 0;
    CGFloat cornerRadius = 0;
    float opacity = 1;
    bool hidden = false;
    bool masksToBounds = false;
    Owned<NSObject> compositingFilter;
    /// Not retained; a view clears it when it goes.
    NSObject* delegate = nullptr;

    ~LayerState();
};

inline LayerState& stateOf(CALayer* layer)
{
    return ivarsOf<LayerState>(layer);
}

} // namespace simulator
