#include "simulator/quartzcore/compositor.hpp"

#include <algorithm>
#include <cmath>
#include <map>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "platform/Foundation/NSString.hpp"
#include "simulator/foundation/strings.hpp"
#include "simulator/graphics/Capture.hpp"
#include "simulator/graphics/contexts.hpp"
#include "simulator/quartzcore/CALayer.hpp"
#include "simulator/quartzcore/CGColor.hpp"

namespace simulator {

namespace {

void addRoundedRectangle(cairo_t* cairo, CGRect rect, double radius)
{
    const auto [x, y] = rect.origin;
    const auto [width, height] = rect.size;
    const auto r = std::min<double>({radius, width / 2, height / 2});
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

/// What a layer draws by itself ends at its bounds, as a rule, whatever its sublayers do.
void drawContents(cairo_t* cairo, CALayer* layer)
{
    const auto& state = ivarsOf<LayerState>(layer);
    if (state.contentsEndAtBounds && (state.bounds.size.width <= 0 || state.bounds.size.height <= 0))
        return;
    cairo_save(cairo);
    if (state.contentsEndAtBounds) {
        addRoundedRectangle(cairo, state.bounds, 0);
        cairo_clip(cairo);
    }
    pushGraphicsContext({.cairo = cairo});
    layer->drawInContext(cairo);
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

/// All that a layer and those below it draw, in the layer's own coordinates; none when there is no telling.
std::optional<CGRect> extentOf(const LayerState& layer)
{
    if (!layer.contentsEndAtBounds)
        return std::nullopt;
    double left = layer.bounds.origin.x;
    double top = layer.bounds.origin.y;
    double right = left + layer.bounds.size.width;
    double bottom = top + layer.bounds.size.height;
    if (layer.masksToBounds)
        return layer.bounds;
    for (CALayer* sublayer : layer.sublayers) {
        const auto& state = ivarsOf<LayerState>(sublayer);
        const auto extent = extentOf(state);
        if (!extent)
            return std::nullopt;
        const double x = state.position.x - state.bounds.size.width / 2 - state.bounds.origin.x + extent->origin.x;
        const double y = state.position.y - state.bounds.size.height / 2 - state.bounds.origin.y + extent->origin.y;
        left = std::min(left, x);
        top = std::min(top, y);
        right = std::max(right, x + extent->size.width);
        bottom = std::max(bottom, y + extent->size.height);
    }
    return CGRect::make(left, top, right - left, bottom - top);
}

/// Clips to the whole pixels that the rectangle touches.
void clipToPixelsOf(cairo_t* cairo, CGRect rect)
{
    double left = rect.origin.x;
    double top = rect.origin.y;
    double right = left + rect.size.width;
    double bottom = top + rect.size.height;
    cairo_user_to_device(cairo, &left, &top);
    cairo_user_to_device(cairo, &right, &bottom);
    cairo_matrix_t matrix;
    cairo_get_matrix(cairo, &matrix);
    cairo_identity_matrix(cairo);
    cairo_rectangle(cairo, std::floor(left), std::floor(top), std::ceil(right) - std::floor(left),
                    std::ceil(bottom) - std::floor(top));
    cairo_clip(cairo);
    cairo_set_matrix(cairo, &matrix);
}

/// What is given a coordinate that is no number draws nothing any more.
bool isSomewhere(const LayerState& state)
{
    const auto& [origin, size] = state.bounds;
    return std::isfinite(state.position.x + state.position.y + origin.x + origin.y + size.width + size.height);
}

/// Draws one tree of layers.
class Compositor {
public:
    explicit Compositor(cairo_t* cairo) : cairo_(cairo) {}

    void draw(CALayer* layer)
    {
        const auto& state = ivarsOf<LayerState>(layer);
        if (state.hidden || state.opacity <= 0 || !isSomewhere(state) || std::ranges::find(masked_, layer) != masked_.end())
            return;
        cairo_save(cairo_);
        cairo_translate(cairo_, state.position.x - state.bounds.size.width / 2 - state.bounds.origin.x,
                        state.position.y - state.bounds.size.height / 2 - state.bounds.origin.y);
        if (state.opacity < 1 || state.mask != nullptr || state.compositingFilter != nullptr)
            drawAsGroup(layer);
        else
            drawInside(layer);
        cairo_restore(cairo_);
    }

private:
    /// In the layer's own coordinates.
    void drawInside(CALayer* layer)
    {
        const auto& state = ivarsOf<LayerState>(layer);
        if (state.backdrop)
            drawBackdrop(state, *state.backdrop);
        drawBackground(cairo_, state);
        drawContents(cairo_, layer);
        cairo_save(cairo_);
        if (state.masksToBounds) {
            addRoundedRectangle(cairo_, state.bounds, state.cornerRadius);
            cairo_clip(cairo_);
        }
        for (CALayer* sublayer : state.sublayers)
            draw(sublayer);
        cairo_restore(cairo_);
        drawBorder(cairo_, state);
    }

    void drawAsGroup(CALayer* layer)
    {
        const auto& state = ivarsOf<LayerState>(layer);
        if (const auto extent = extentOf(state))
            clipToPixelsOf(cairo_, *extent);
        cairo_push_group(cairo_);
        drawInside(layer);
        if (state.mask != nullptr) {
            masked_.push_back(layer);
            applyMask(state.mask);
            masked_.pop_back();
        }
        cairo_pop_group_to_source(cairo_);
        cairo_set_operator(cairo_, blendOf(state.compositingFilter));
        cairo_paint_with_alpha(cairo_, state.opacity);
    }

    /// Leaves of the innermost group what the mask covers.
    void applyMask(CALayer* mask)
    {
        cairo_push_group(cairo_);
        draw(mask);
        cairo_pop_group_to_source(cairo_);
        cairo_save(cairo_);
        cairo_set_operator(cairo_, CAIRO_OPERATOR_DEST_IN);
        cairo_paint(cairo_);
        cairo_restore(cairo_);
    }

    /// All backdrops of a picture that blur and saturate alike show one capture of it, taken when the first is drawn, so that
    /// neighbouring ones run into each other without a seam.
    void drawBackdrop(const LayerState& state, const LayerBackdrop& backdrop)
    {
        if (state.bounds.size.width <= 0 || state.bounds.size.height <= 0)
            return;
        auto& capture = captures_[{backdrop.blurRadius, backdrop.saturation}];
        if (capture == nullptr)
            capture = std::make_unique<Capture>(cairo_get_target(cairo_));
        double radiusInPixels = backdrop.blurRadius;
        double unused = 0;
        cairo_user_to_device_distance(cairo_, &radiusInPixels, &unused);
        cairo_save(cairo_);
        addRoundedRectangle(cairo_, state.bounds, state.cornerRadius);
        cairo_clip(cairo_);
        cairo_identity_matrix(cairo_);
        capture->paintBlurred(cairo_, radiusInPixels, backdrop.saturation);
        backdrop.tint.applyTo(cairo_);
        cairo_paint(cairo_);
        cairo_restore(cairo_);
    }

    cairo_t* cairo_;
    /// By radius and saturation.
    std::map<std::pair<double, double>, std::unique_ptr<Capture>> captures_;
    /// Those whose masks are being drawn: nothing masks itself.
    std::vector<CALayer*> masked_;
};

} // namespace

void drawLayerTree(cairo_t* cairo, CALayer* layer)
{
    Compositor(cairo).draw(layer);
}

} // namespace simulator
