#pragma once

#include <cairo.h>

namespace simulator {

/// A colour in sRGB, not premultiplied; components from 0 to 1.
struct Colour {
    double red = 0;
    double green = 0;
    double blue = 0;
    double alpha = 0;

    bool operator==(const Colour&) const = default;

    void applyTo(cairo_t* cairo) const { cairo_set_source_rgba(cairo, red, green, blue, alpha); }
};

} // namespace simulator
