#include "platform/QuartzCore/CAShapeLayer.hpp"

#include "simulator/quartzcore/CALayer.hpp"
#include "simulator/quartzcore/CGColor.hpp"
#include "simulator/quartzcore/CGPath.hpp"
#include "simulator/quartzcore/quartzcore.hpp"

/// A layer that fills an outline, wherever that reaches.

namespace simulator {

namespace {

struct ShapeState {
    Owned<CGPath> path;
    Owned<CGColor> fillColor = makeColor({0, 0, 0, 1});
};

CAShapeLayer* init(CAShapeLayer* self, SEL)
{
    ivarsOf<LayerState>(self).contentsEndAtBounds = false;
    return self;
}

void drawInContext(CAShapeLayer* self, SEL, void* context)
{
    const auto& shape = ivarsOf<ShapeState>(self);
    auto* const cairo = static_cast<cairo_t*>(context);
    outlineOf(shape.path).addTo(cairo);
    colourOf(shape.fillColor).applyTo(cairo);
    cairo_fill(cairo);
}

} // namespace

void registerCAShapeLayer()
{
    SimulatedClass<ShapeState>("CAShapeLayer", "CALayer")
        .method<"init">(init)
        .property<&ShapeState::path, layerChanged>("path")
        .property<&ShapeState::fillColor, layerChanged>("fillColor")
        .method<"drawInContext:">(drawInContext)
        .registerClass();
}

} // namespace simulator
