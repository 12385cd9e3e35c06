#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <mutex>
#include <string>

#include "platform/CoreGraphics/CGGeometry.hpp"
#include "simulator/graphics/cairo_pointers.hpp"

namespace simulator {

/// Pixels (premultiplied sRGB with alpha) with a size in points and a scale in pixels per point.
class Bitmap {
public:
    /// Transparent, or black when opaque. The pixels cover the size, rounded up. A size without area gives null.
    static std::shared_ptr<Bitmap> make(CGSize size, double scale, bool opaque);
    /// No picture that is read has a longer side.
    static constexpr int largestSide = 8192;
    /// Of a PNG file's bytes; those that are no picture, not whole, or of one that is too large give null. They are decoded when
    /// the pixels are first asked for.
    static std::shared_ptr<Bitmap> fromPNG(std::string file, double scale);
    /// One that is made as `make` does and then drawn by the function, in points, when its pixels are first asked for.
    static std::shared_ptr<Bitmap> drawnLater(CGSize size, double scale, bool opaque, std::function<void(cairo_t*)> drawing);

    CGSize size() const { return size_; }
    double scale() const { return scale_; }
    cairo_surface_t* surface() const;

    /// A context that draws into it, in points.
    CairoPointer<cairo_t> context() const;

    /// Draws it, scaled to fill the rectangle.
    void draw(cairo_t* cairo, CGRect rect) const;

    /// As writeWholeFile writes. Throws std::runtime_error with the reason when the file cannot be written.
    void writePNG(const std::filesystem::path& file) const;

private:
    using Pixels = std::function<CairoPointer<cairo_surface_t>()>;
    Bitmap(CGSize size, double scale, Pixels pixels);

    /// Makes the surface, whichever thread asks for it first; null when it is made.
    mutable Pixels pixels_;
    mutable std::once_flag made_;
    mutable CairoPointer<cairo_surface_t> surface_;
    CGSize size_;
    double scale_;
};

} // namespace simulator
