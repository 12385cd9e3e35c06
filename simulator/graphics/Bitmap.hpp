#pragma once

#include <filesystem>
#include <memory>

#include "platform/CoreGraphics/CGGeometry.hpp"
#include "simulator/graphics/cairo_pointers.hpp"

namespace simulator {

/// Pixels (premultiplied sRGB with alpha) with a size in points and a scale in pixels per point.
class Bitmap {
public:
    /// Transparent, or black when opaque. The pixels cover the size, rounded up. A size without area gives null.
    static std::shared_ptr<Bitmap> make(CGSize size, double scale, bool opaque);
    /// A PNG file; one that is missing or no picture gives null.
    static std::shared_ptr<Bitmap> read(const std::filesystem::path& file, double scale);

    CGSize size() const { return size_; }
    double scale() const { return scale_; }
    cairo_surface_t* surface() const { return surface_.get(); }

    /// A context that draws into it, in points.
    CairoPointer<cairo_t> context() const;

    /// Draws it, scaled to fill the rectangle.
    void draw(cairo_t* cairo, CGRect rect) const;

    /// Throws std::runtime_error when the file cannot be written.
    void writePNG(const std::filesystem::path& file) const;

private:
    Bitmap(CairoPointer<cairo_surface_t> surface, CGSize size, double scale);

    CairoPointer<cairo_surface_t> surface_;
    CGSize size_;
    double scale_;
};

} // namespace simulator
