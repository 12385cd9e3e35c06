#include "simulator/graphics/Bitmap.hpp"

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

#include "simulator/files/whole_file.hpp"
#include "simulator/graphics/png.hpp"

namespace simulator {

namespace {

/// What covers the size, rounded up; none for a size without area, or one that no surface has.
std::optional<PictureExtent> extentOf(CGSize size, double scale)
{
    // A margin for sums that are whole numbers but for their rounding.
    constexpr double margin = 1e-6;
    const double width = std::ceil(size.width * scale - margin);
    const double height = std::ceil(size.height * scale - margin);
    constexpr double largestSide = 32767;
    if (!(width >= 1 && height >= 1 && width <= largestSide && height <= largestSide))
        return std::nullopt;
    return PictureExtent{static_cast<int>(width), static_cast<int>(height)};
}

CairoPointer<cairo_surface_t> newSurface(PictureExtent extent, bool opaque)
{
    CairoPointer<cairo_surface_t> surface(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, extent.width, extent.height));
    if (opaque)
        cairo_paint(CairoPointer<cairo_t>(cairo_create(surface.get())).get());
    return surface;
}

} // namespace

Bitmap::Bitmap(CGSize size, double scale, Pixels pixels) : pixels_(std::move(pixels)), size_(size), scale_(scale)
{
}

std::shared_ptr<Bitmap> Bitmap::make(CGSize size, double scale, bool opaque)
{
    const auto bitmap = drawnLater(size, scale, opaque, [](cairo_t*) {});
    return bitmap == nullptr || cairo_surface_status(bitmap->surface()) != CAIRO_STATUS_SUCCESS ? nullptr : bitmap;
}

std::shared_ptr<Bitmap> Bitmap::drawnLater(CGSize size, double scale, bool opaque, std::function<void(cairo_t*)> drawing)
{
    const auto extent = extentOf(size, scale);
    if (!extent)
        return nullptr;
    return std::shared_ptr<Bitmap>(new Bitmap(size, scale, [extent = *extent, scale, opaque, drawing = std::move(drawing)] {
        auto surface = newSurface(extent, opaque);
        const CairoPointer<cairo_t> cairo(cairo_create(surface.get()));
        cairo_scale(cairo.get(), scale, scale);
        drawing(cairo.get());
        return surface;
    }));
}

std::shared_ptr<Bitmap> Bitmap::fromPNG(std::string file, double scale)
{
    const auto extent = extentOfPNG(file);
    if (!extent || std::max(extent->width, extent->height) > largestSide)
        return nullptr;
    const CGSize size{static_cast<CGFloat>(extent->width / scale), static_cast<CGFloat>(extent->height / scale)};
    return std::shared_ptr<Bitmap>(
        new Bitmap(size, scale, [extent = *extent, file = std::move(file)] { return decodePNG(file, extent); }));
}

cairo_surface_t* Bitmap::surface() const
{
    std::call_once(made_, [this] {
        if (pixels_ != nullptr)
            surface_ = std::exchange(pixels_, nullptr)();
    });
    return surface_.get();
}

CairoPointer<cairo_t> Bitmap::context() const
{
    CairoPointer<cairo_t> cairo(cairo_create(surface()));
    cairo_scale(cairo.get(), scale_, scale_);
    return cairo;
}

void Bitmap::draw(cairo_t* cairo, CGRect rect) const
{
    const double width = cairo_image_surface_get_width(surface());
    const double height = cairo_image_surface_get_height(surface());
    if (rect.size.width <= 0 || rect.size.height <= 0 || width <= 0 || height <= 0)
        return;
    cairo_save(cairo);
    cairo_rectangle(cairo, rect.origin.x, rect.origin.y, rect.size.width, rect.size.height);
    cairo_clip(cairo);
    cairo_translate(cairo, rect.origin.x, rect.origin.y);
    cairo_scale(cairo, rect.size.width / width, rect.size.height / height);
    cairo_set_source_surface(cairo, surface(), 0, 0);
    // Beyond its edge the picture goes on, so that a scaled one has no faint rim.
    cairo_pattern_set_extend(cairo_get_source(cairo), CAIRO_EXTEND_PAD);
    cairo_paint(cairo);
    cairo_restore(cairo);
}

void Bitmap::writePNG(const std::filesystem::path& file) const
{
    writeWholeFile(file, encodePNG(surface()));
}

} // namespace simulator
