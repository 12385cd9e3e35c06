#pragma once

#include "platform/CoreGraphics/CGPath.hpp"
#include "platform/QuartzCore/CALayer.hpp"

/// A layer that fills a path.
class CAShapeLayer : public CALayer {
public:
    static CAShapeLayer* layer() { return send<"layer", CAShapeLayer*>(classNamed<"CAShapeLayer">()); }
    void setPath(CGPathRef path) { send<"setPath:">(this, path); }
};
