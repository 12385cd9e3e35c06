#include "simulator/graphics/saturation.hpp"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace simulator {

namespace {

// Whole numbers, which come out alike on every processor: shares of the luminance in 4096ths, the factor in 256ths.
constexpr int shareBits = 12;
constexpr int factorBits = 8;
constexpr int bits = shareBits + factorBits;

constexpr int redShare = 871;
constexpr int greenShare = 2929;
constexpr int blueShare = (1 << shareBits) - redShare - greenShare;

/// A premultiplied pixel, 0xAARRGGBB.
std::uint32_t saturated(std::uint32_t pixel, int factor)
{
    const auto alpha = static_cast<int>(pixel >> 24);
    const auto red = static_cast<int>(pixel >> 16 & 0xFF);
    const auto green = static_cast<int>(pixel >> 8 & 0xFF);
    const auto blue = static_cast<int>(pixel & 0xFF);
    const int grey = redShare * red + greenShare * green + blueShare * blue;
    const auto moved = [&](int component) {
        constexpr int half = 1 << (bits - 1);
        const int value = (grey << factorBits) + ((component << shareBits) - grey) * factor;
        return static_cast<std::uint32_t>(std::clamp((value + half) >> bits, 0, alpha));
    };
    return (pixel & 0xFF000000U) | moved(red) << 16 | moved(green) << 8 | moved(blue);
}

} // namespace

void saturate(cairo_surface_t* image, double factor)
{
    constexpr double greatest = 4;
    const auto whole = static_cast<int>(std::lround(std::clamp(factor, 0.0, greatest) * (1 << factorBits)));
    if (whole == 1 << factorBits)
        return;
    cairo_surface_flush(image);
    const std::ptrdiff_t stride = cairo_image_surface_get_stride(image);
    for (int y = 0; y < cairo_image_surface_get_height(image); ++y) {
        auto* const row = reinterpret_cast<std::uint32_t*>(cairo_image_surface_get_data(image) + y * stride);
        for (int x = 0; x < cairo_image_surface_get_width(image); ++x)
            row[x] = saturated(row[x], whole);
    }
    cairo_surface_mark_dirty(image);
}

} // namespace simulator
