#include "simulator/quartzcore/compositor.hpp"

#include <algorithm>
#include <cmath>

#include "platform/Foundation/NSString.hpp"
#include "simulator/foundation/strings.hpp"
#include "simulator/graphics/contexts.hpp"
#include "simulator/quartzcore/LayerState.hpp"
#include "simulator/quartzcore/colours.hpp"

namespace simulator {

namespace {

void addRoundedRectangle(cairo_t* cairo, CGRect rect, double radius)
{
    const auto [x, y] = rect.origin;
    const auto [width, height] = rect.size;
    const double r = std::min({radius, width / 2, height / 2});
    if (r <= 0) {
        cairo_rectangle(cairo, x, y, width, height);
        return;
    }
    cairo_new_sub_path(cairo);
    cairo_arc(cairo, x + width - r, y + r, r, -M_PI_2, 0);
    cairo_arc(cairo, x + width - r, y + height - r, r, 0, M_PI_2);
    cairo_arc(cairo, x + r, y + height - r, r, M_PI_2, M_PI);
    cairo_arc(cairo, x + r, y + r, r, M_PI, 3 * M_PI_2);
    cairo_close_path(cairo);
}

CGRect inset(CGRect rect, double by)
{
    return CGRect::make(rect.origin.x + by, rect.origin.y + by, rect.size.width - 2 * by, rect.size.height - 2 * by);
}

void drawBackground(cairo_t* cairo, const LayerState& layer)
{
    const Colour colour = colourOf(layer.backgroundColor);
    if (colour.alpha <= 0)
        return;
    addRoundedRectangle(cairo, layer.bounds, layer.cornerRadius);
    colour.applyTo(cairo);
    cairo_fill(cairo);
}

/// A layer's own drawing ends at its bounds, whatever its sublayers do.
void drawContents(cairo_t* cairo, CALayer* layer)
{
    const LayerState& state = stateOf(layer);
    if (state.bounds.size.width <= 0 || state.bounds.size.height <= 0)
        return;
    cairo_save(cairo);
    addRoundedRectangle(cairo, state.bounds, 0);
    cairo_clip(cairo);
    pushGraphicsContext({.cairo = cairo});
    send<"drawInContext:">(layer, static_cast<void*>(cairo));
    popGraphicsContext();
    cairo_restore(cairo);
}

void drawBorder(cairo_t* cairo, const LayerState& layer)
{
    const Colour colour = colourOf(layer.borderColor);
    if (layer.borderWidth <= 0 || colour.alpha <= 0)
        return;
    addRoundedRectangle(cairo, inset(layer.bounds, layer.borderWidth / 2), layer.cornerRadius - layer.borderWidth / 2);
    cairo_set_line_width(cairo, layer.borderWidth);
    colour.applyTo(cairo);
    cairo_stroke(cairo);
}

/// In the layer's own coordinates.
void drawInside(cairo_t* cairo, CALayer* layer)
{
    const LayerState& state = stateOf(layer);
    drawBackground(cairo, state);
    drawContents(cairo, layer);
    cairo_save(cairo);
    if (state.masksToBounds) {
        addRoundedRectangle(cairo, state.bounds, state.cornerRadius);
        cairo_clip(cairo);
    }
    for (CALayer* sublayer : state.sublayers)
        drawLayerTree(cairo, sublayer);
    cairo_restore(cairo);
    drawBorder(cairo, state);
}

struct BlendMode {
    const char* filter;
    cairo_operator_t blend;
};

constexpr BlendMode blendModes[] = {
    {"plusL", CAIRO_OPERATOR_ADD},
    {"screenBlendMode", CAIRO_OPERATOR_SCREEN},
    {"multiplyBlendMode", CAIRO_OPERATOR_MULTIPLY},
};

cairo_operator_t blendOf(NSObject* compositingFilter)
{
    if (!compositingFilter->isKindOfClass(classNamed<"NSString">()))
        return CAIRO_OPERATOR_OVER;
    const std::string name = toUTF8(static_cast<NSString*>(compositingFilter));
    for (const BlendMode& mode : blendModes) {
        if (name == mode.filter)
            return mode.blend;
    }
    return CAIRO_OPERATOR_OVER;
}

void drawAsGroup(cairo_t* cairo, CALayer* layer)
{
    const LayerState& state = stateOf(layer);
    cairo_push_group(cairo);
    drawInside(cairo, layer);
    if (state.mask != nullptr) {
        cairo_push_group(cairo);
        drawLayerTree(cairo, state.mask);
        const CairoPointer<cairo_pattern_t> mask(cairo_pop_group(cairo));
        cairo_pop_group_to_source(cairo);
        cairo_push_group(cairo);
        cairo_mask(cairo, mask.get());
    }
    cairo_pop_group_to_source(cairo);
    cairo_set_operator(cairo, blendOf(state.compositingFilter));
    cairo_paint_with_alpha(cairo, state.opacity);
}

} // namespace

void drawLayerTree(cairo_t* cairo, CALayer* layer)
{
    const LayerState& state = stateOf(layer);
    if (state.hidden || state.opacity <= 0)
        return;
    cairo_save(cairo);
    cairo_translate(cairo, state.position.x - state.bounds.size.width / 2 - state.bounds.origin.x,
                    state.position.y - state.bounds.size.height / 2 - state.bounds.origin.y);
    if (state.opacity < 1 || state.mask != nullptr || state.compositingFilter != nullptr)
        drawAsGroup(cairo, layer);
    else
        drawInside(cairo, layer);
    cairo_restore(cairo);
}

} // namespace simulator
