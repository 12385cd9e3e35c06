#pragma once

#include "simulator/graphics/cairo_pointers.hpp"

namespace simulator {

/// A picture as it was at one time, to be shown blurred and with its colours saturated.
class Capture {
public:
    /// Copies the pixels of an image surface.
    explicit Capture(cairo_surface_t* picture);

    /// Paints what the clip lets be seen of it, pixel on pixel; the context's matrix is the identity. Only that is blurred, and
    /// kept until something else is to be seen.
    void paintBlurred(cairo_t* cairo, double radius, double saturation);

private:
    /// In pixels; the right and the lower edge are outside.
    struct Area {
        int left, top, right, bottom;

        bool isEmpty() const { return left >= right || top >= bottom; }
        Area intersection(const Area& other) const;
        /// With a margin of that width.
        Area outset(int margin) const;
        bool operator==(const Area&) const = default;
    };

    static CairoPointer<cairo_surface_t> copyOf(cairo_surface_t* picture, const Area& area);

    Area whole_;
    CairoPointer<cairo_surface_t> picture_;
    CairoPointer<cairo_surface_t> blurred_;
    Area blurredArea_{};
};

} // namespace simulator
