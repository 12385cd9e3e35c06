#include "simulator/graphics/Outline.hpp"

namespace simulator {

void Outline::addTo(cairo_t* cairo) const
{
    for (const auto& [kind, points] : segments_) {
        switch (kind) {
        case Kind::move:
            cairo_move_to(cairo, points[0].x, points[0].y);
            break;
        case Kind::line:
            cairo_line_to(cairo, points[0].x, points[0].y);
            break;
        case Kind::curve:
            cairo_curve_to(cairo, points[0].x, points[0].y, points[1].x, points[1].y, points[2].x, points[2].y);
            break;
        case Kind::close:
            cairo_close_path(cairo);
            break;
        }
    }
}

} // namespace simulator
