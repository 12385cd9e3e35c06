#include "platform/QuartzCore/CAGradientLayer.hpp"

#include "platform/runtime/each.hpp"
#include "simulator/quartzcore/CALayer.hpp"
#include "simulator/quartzcore/CGColor.hpp"
#include "simulator/quartzcore/quartzcore.hpp"

/// A layer that passes from colour to colour, from its top to its bottom.

namespace simulator {

namespace {

struct GradientState {
    Owned<NSArray> colors;
};

/// The colours stand at even distances, the first at the top, the last at the bottom.
void drawInContext(CAGradientLayer* self, SEL, void* context)
{
    NSArray* const colors = ivarsOf<GradientState>(self).colors;
    if (colors->count() == 0)
        return;
    const CGRect bounds = ivarsOf<LayerState>(self).bounds;
    const CairoPointer<cairo_pattern_t> gradient(
        cairo_pattern_create_linear(0, bounds.origin.y, 0, bounds.origin.y + bounds.size.height));
    const double last = colors->count() > 1 ? static_cast<double>(colors->count() - 1) : 1;
    double index = 0;
    for (CGColorRef color : each<CGColor>(colors)) {
        const Colour colour = colourOf(color);
        cairo_pattern_add_color_stop_rgba(gradient.get(), index++ / last, colour.red, colour.green, colour.blue, colour.alpha);
    }
    auto* const cairo = static_cast<cairo_t*>(context);
    cairo_set_source(cairo, gradient.get());
    cairo_paint(cairo);
}

} // namespace

void registerCAGradientLayer()
{
    SimulatedClass<GradientState>("CAGradientLayer", "CALayer")
        .property<&GradientState::colors, layerChanged>("colors")
        .method<"drawInContext:">(drawInContext)
        .registerClass();
}

} // namespace simulator
