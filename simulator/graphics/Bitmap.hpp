#pragma once

#include <filesystem>
#include <memory>
#include <string_view>

#include "platform/CoreGraphics/CGGeometry.hpp"
#include "simulator/graphics/cairo_pointers.hpp"

namespace simulator {

/// Pixels (premultiplied sRGB with alpha) with a size in points and a scale in pixels per point.
class Bitmap {
public:
    /// Transparent, or black when opaque. The pixels cover the size, rounded up. A size without area gives null.
    static std::shared_ptr<Bitmap> make(CGSize size, double scale, bool opaque);
    /// No file of more bytes is read as a picture, and no picture has a longer side.
    static constexpr std::size_t mostBytes = std::size_t{64} << 20;
    static constexpr int largestSide = 8192;
    /// A PNG file; one that is missing, no picture or too large gives null.
    static std::shared_ptr<Bitmap> read(const std::filesystem::path& file, double scale);
    /// The same of a file's bytes.
    static std::shared_ptr<Bitmap> fromPNG(std::string_view bytes, double scale);

    CGSize size() const { return size_; }
    double scale() const { return scale_; }
    cairo_surface_t* surface() const { return surface_.get(); }

    /// A context that draws into it, in points.
    CairoPointer<cairo_t> context() const;

    /// Draws it, scaled to fill the rectangle.
    void draw(cairo_t* cairo, CGRect rect) const;

    /// As writeWholeFile writes. Throws std::runtime_error with the reason when the file cannot be written.
    void writePNG(const std::filesystem::path& file) const;

private:
    Bitmap(CairoPointer<cairo_surface_t> surface, CGSize size, double scale);

    CairoPointer<cairo_surface_t> surface_;
    CGSize size_;
    double scale_;
};

} // namespace simulator
