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

    /// The one colour that looks like this one laid over another.
    Colour over(const Colour& below) const
    {
        const double rest = below.alpha * (1 - alpha);
        const double whole = alpha + rest;
        if (whole <= 0)
            return {};
        const auto mix = [&](double upper, double lower) { return (upper * alpha + lower * rest) / whole; };
        return {mix(red, below.red), mix(green, below.green), mix(blue, below.blue), whole};
    }

    void applyTo(cairo_t* cairo) const { cairo_set_source_rgba(cairo, red, green, blue, alpha); }
};

} // namespace simulator
