#include "simulator/graphics/Capture.hpp"

#include <algorithm>
#include <cmath>

#include "simulator/graphics/blur.hpp"
#include "simulator/graphics/saturation.hpp"

namespace simulator {

Capture::Area Capture::Area::intersection(const Area& other) const
{
    return {std::max(left, other.left), std::max(top, other.top), std::min(right, other.right), std::min(bottom, other.bottom)};
}

Capture::Area Capture::Area::outset(int margin) const
{
    return {left - margin, top - margin, right + margin, bottom + margin};
}

CairoPointer<cairo_surface_t> Capture::copyOf(cairo_surface_t* picture, const Area& area)
{
    CairoPointer<cairo_surface_t> copy(
        cairo_image_surface_create(CAIRO_FORMAT_ARGB32, area.right - area.left, area.bottom - area.top));
    const CairoPointer<cairo_t> cairo(cairo_create(copy.get()));
    cairo_set_source_surface(cairo.get(), picture, -area.left, -area.top);
    cairo_set_operator(cairo.get(), CAIRO_OPERATOR_SOURCE);
    cairo_paint(cairo.get());
    return copy;
}

Capture::Capture(cairo_surface_t* picture)
    : whole_{0, 0, cairo_image_surface_get_width(picture), cairo_image_surface_get_height(picture)},
      picture_(copyOf(picture, whole_))
{
}

void Capture::paintBlurred(cairo_t* cairo, double radius, double saturation)
{
    double left = 0;
    double top = 0;
    double right = 0;
    double bottom = 0;
    cairo_clip_extents(cairo, &left, &top, &right, &bottom);
    const auto seen = Area{static_cast<int>(std::floor(left)), static_cast<int>(std::floor(top)),
                           static_cast<int>(std::ceil(right)), static_cast<int>(std::ceil(bottom))}
                          .intersection(whole_);
    if (seen.isEmpty())
        return;
    // What lies further away does not show.
    const Area needed = seen.outset(blurReach(radius)).intersection(whole_);
    if (needed != blurredArea_) {
        blurred_ = copyOf(picture_.get(), needed);
        blur(blurred_.get(), radius);
        saturate(blurred_.get(), saturation);
        blurredArea_ = needed;
    }
    cairo_set_source_surface(cairo, blurred_.get(), needed.left, needed.top);
    cairo_paint(cairo);
}

} // namespace simulator
