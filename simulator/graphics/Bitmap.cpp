#include "simulator/graphics/Bitmap.hpp"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <utility>

#include "simulator/files/whole_file.hpp"

namespace simulator {

namespace {

cairo_status_t takeBytes(void* rest, unsigned char* bytes, unsigned count)
{
    auto& unread = *static_cast<std::string_view*>(rest);
    if (count > unread.size())
        return CAIRO_STATUS_READ_ERROR;
    unread.copy(reinterpret_cast<char*>(bytes), count);
    unread.remove_prefix(count);
    return CAIRO_STATUS_SUCCESS;
}

cairo_status_t addBytes(void* written, const unsigned char* bytes, unsigned count)
{
    static_cast<std::string*>(written)->append(reinterpret_cast<const char*>(bytes), count);
    return CAIRO_STATUS_SUCCESS;
}

/// What a PNG file's header claims before any of the picture is there; 0 for what is no such file.
std::uint32_t longestSideIn(std::string_view bytes)
{
    constexpr std::size_t widthAt = 16;
    constexpr std::size_t headerEnd = 24;
    if (bytes.size() < headerEnd)
        return 0;
    const auto sideAt = [&](std::size_t offset) {
        std::uint32_t side = 0;
        for (const char byte : bytes.substr(offset, sizeof side))
            side = side << 8 | static_cast<unsigned char>(byte);
        return side;
    };
    return std::max(sideAt(widthAt), sideAt(widthAt + sizeof(std::uint32_t)));
}

} // namespace

Bitmap::Bitmap(CairoPointer<cairo_surface_t> surface, CGSize size, double scale)
    : surface_(std::move(surface)), size_(size), scale_(scale)
{
}

std::shared_ptr<Bitmap> Bitmap::make(CGSize size, double scale, bool opaque)
{
    // A margin for sums that are whole numbers but for their rounding.
    constexpr double margin = 1e-6;
    const double width = std::ceil(size.width * scale - margin);
    const double height = std::ceil(size.height * scale - margin);
    constexpr double largestSide = 32767;
    if (!(width >= 1 && height >= 1 && width <= largestSide && height <= largestSide))
        return nullptr;
    CairoPointer<cairo_surface_t> surface(
        cairo_image_surface_create(CAIRO_FORMAT_ARGB32, static_cast<int>(width), static_cast<int>(height)));
    if (cairo_surface_status(surface.get()) != CAIRO_STATUS_SUCCESS)
        return nullptr;
    std::shared_ptr<Bitmap> bitmap(new Bitmap(std::move(surface), size, scale));
    if (opaque)
        cairo_paint(bitmap->context().get());
    return bitmap;
}

std::shared_ptr<Bitmap> Bitmap::read(const std::filesystem::path& file, double scale)
{
    const auto bytes = readWholeFile(file, mostBytes);
    return bytes ? fromPNG(*bytes, scale) : nullptr;
}

std::shared_ptr<Bitmap> Bitmap::fromPNG(std::string_view bytes, double scale)
{
    if (longestSideIn(bytes) > largestSide)
        return nullptr;
    CairoPointer<cairo_surface_t> surface(cairo_image_surface_create_from_png_stream(takeBytes, &bytes));
    if (cairo_surface_status(surface.get()) != CAIRO_STATUS_SUCCESS)
        return nullptr;
    const CGSize size{static_cast<CGFloat>(cairo_image_surface_get_width(surface.get()) / scale),
                      static_cast<CGFloat>(cairo_image_surface_get_height(surface.get()) / scale)};
    return std::shared_ptr<Bitmap>(new Bitmap(std::move(surface), size, scale));
}

CairoPointer<cairo_t> Bitmap::context() const
{
    CairoPointer<cairo_t> cairo(cairo_create(surface_.get()));
    cairo_scale(cairo.get(), scale_, scale_);
    return cairo;
}

void Bitmap::draw(cairo_t* cairo, CGRect rect) const
{
    const double width = cairo_image_surface_get_width(surface_.get());
    const double height = cairo_image_surface_get_height(surface_.get());
    if (rect.size.width <= 0 || rect.size.height <= 0)
        return;
    cairo_save(cairo);
    cairo_rectangle(cairo, rect.origin.x, rect.origin.y, rect.size.width, rect.size.height);
    cairo_clip(cairo);
    cairo_translate(cairo, rect.origin.x, rect.origin.y);
    cairo_scale(cairo, rect.size.width / width, rect.size.height / height);
    cairo_set_source_surface(cairo, surface_.get(), 0, 0);
    // Beyond its edge the picture goes on, so that a scaled one has no faint rim.
    cairo_pattern_set_extend(cairo_get_source(cairo), CAIRO_EXTEND_PAD);
    cairo_paint(cairo);
    cairo_restore(cairo);
}

void Bitmap::writePNG(const std::filesystem::path& file) const
{
    std::string bytes;
    const cairo_status_t status = cairo_surface_write_to_png_stream(surface_.get(), addBytes, &bytes);
    if (status != CAIRO_STATUS_SUCCESS)
        throw std::runtime_error("cannot write " + file.native() + ": " + cairo_status_to_string(status));
    writeWholeFile(file, bytes);
}

} // namespace simulator
