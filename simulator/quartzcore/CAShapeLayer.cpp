#include "platform/QuartzCore/CAShapeLayer.hpp"

#include "simulator/quartzcore/LayerState.hpp"
#include "simulator/quartzcore/colours.hpp"
#include "simulator/quartzcore/paths.hpp"
#include "simulator/quartzcore/quartzcore.hpp"

namespace simulator {

namespace {

struct ShapeState {
    Owned<CGPath> path;
    Owned<CGColor> fillColor = makeColor({0, 0, 0, 1});
};

CAShapeLayer* init(CAShapeLayer* self, SEL)
{
    stateOf(self).contentsEndAtBounds = false;
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
