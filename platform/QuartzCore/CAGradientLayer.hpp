#pragma once

#include "platform/QuartzCore/CALayer.hpp"

/// A layer that runs through its colours from top to bottom.
class CAGradientLayer : public CALayer {
public:
    static CAGradientLayer* layer() { return send<"layer", CAGradientLayer*>(classNamed<"CAGradientLayer">()); }
    /// Of CGColorRefs.
    void setColors(NSArray* colors) { send<"setColors:">(this, colors); }
};
