#include "simulator/graphics/blur.hpp"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <vector>

namespace simulator {

namespace {

constexpr int channels = 4;
constexpr int boxes = 3;

/// A row or a column of pixels.
struct Line {
    std::uint8_t* first;
    int count;
    std::ptrdiff_t step;
};

/// The mean over `reach` pixels to either side, by a sum that moves along.
void boxBlur(const Line& line, int reach, std::vector<std::uint32_t>& copy)
{
    for (int i = 0; i < line.count; ++i)
        copy[static_cast<std::size_t>(i)] = *reinterpret_cast<const std::uint32_t*>(line.first + i * line.step);
    const auto pixel = [&](int index) { return copy[static_cast<std::size_t>(std::clamp(index, 0, line.count - 1))]; };
    const auto channel = [](std::uint32_t value, int which) { return value >> (8 * which) & 0xFF; };

    const auto width = static_cast<std::uint32_t>(2 * reach + 1);
    // Division by multiplication: exact for sums of up to 2^16 bytes.
    const auto reciprocal = static_cast<std::uint64_t>((std::uint64_t{1} << 32) / width + 1);
    std::uint32_t sums[channels]{};
    for (int i = -reach; i <= reach; ++i) {
        for (int c = 0; c < channels; ++c)
            sums[c] += channel(pixel(i), c);
    }
    for (int i = 0; i < line.count; ++i) {
        std::uint32_t mean = 0;
        const std::uint32_t entering = pixel(i + reach + 1);
        const std::uint32_t leaving = pixel(i - reach);
        for (int c = 0; c < channels; ++c) {
            mean |= static_cast<std::uint32_t>((sums[c] + width / 2) * reciprocal >> 32) << (8 * c);
            sums[c] += channel(entering, c) - channel(leaving, c);
        }
        *reinterpret_cast<std::uint32_t*>(line.first + i * line.step) = mean;
    }
}

} // namespace

void blur(cairo_surface_t* image, double radius)
{
    // Three boxes of this reach have the variance of the Gaussian.
    const int reach = static_cast<int>(std::lround((std::sqrt(4 * radius * radius + 1) - 1) / 2));
    if (reach < 1)
        return;
    cairo_surface_flush(image);
    std::uint8_t* const bytes = cairo_image_surface_get_data(image);
    const std::ptrdiff_t stride = cairo_image_surface_get_stride(image);
    const int width = cairo_image_surface_get_width(image);
    const int height = cairo_image_surface_get_height(image);
    std::vector<std::uint32_t> copy(static_cast<std::size_t>(std::max(width, height)));
    for (int box = 0; box < boxes; ++box) {
        for (int y = 0; y < height; ++y)
            boxBlur({bytes + y * stride, width, channels}, reach, copy);
        for (int x = 0; x < width; ++x)
            boxBlur({bytes + std::ptrdiff_t{x} * channels, height, stride}, reach, copy);
    }
    cairo_surface_mark_dirty(image);
}

} // namespace simulator
