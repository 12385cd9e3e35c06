#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "platform/QuartzCore/CALayer.hpp"
#include "platform/runtime/Owned.hpp"
#include "simulator/graphics/Bitmap.hpp"
#include "simulator/graphics/Colour.hpp"
#include "simulator/runtime/SimulatedClass.hpp"

namespace simulator {

/// What a layer makes of that which lies behind it.
struct LayerBackdrop {
    /// In points.
    double blurRadius;
    /// How far colours move from the grey of their luminance; 1 leaves them as they are.
    double saturation;
    Colour tint;
};

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
    /// What the layer itself draws is cut off at its bounds.
    bool contentsEndAtBounds = true;
    /// None in a layer that lets what lies behind it show as it is.
    std::optional<LayerBackdrop> backdrop;
    Owned<NSObject> compositingFilter;
    /// Not retained; a view clears it when it goes.
    NSObject* delegate = nullptr;

    ~LayerState();
};

/// For properties whose change shows: draws the screen again.
void layerChanged(NSObject* layer);

} // namespace simulator
