#include "simulator/graphics/blur.hpp"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <memory>
#include <vector>

namespace simulator {

namespace {

constexpr int channels = 4;
constexpr int boxes = 3;

template <class T>
struct Rows {
    T* first;
    /// How many lie from one row to the next.
    std::ptrdiff_t stride;

    T* operator[](int row) const { return first + row * stride; }
};

using Bytes = Rows<std::uint8_t>;
using Pixels = Rows<std::uint32_t>;

/// How a Sum of bytes is divided by their number with what every processor does to many of them at a time: a multiplication of
/// which the high half is kept, and a shift that is always the same. The sum is scaled for it beforehand. The result is exact.
template <class Sum, class Product>
struct Division {
    static constexpr int half = std::numeric_limits<Sum>::digits;
    static constexpr int shift = half - 10;
    /// More bytes than that do not fit into a sum.
    static constexpr unsigned most = (1U << (shift + 1)) - 1;

    explicit Division(unsigned count)
        : scale(static_cast<Sum>(1U << (shift + 1 - std::bit_width(count)))),
          reciprocal(static_cast<Sum>((Product{1} << (half + std::bit_width(count) - 1)) / count + 1))
    {
    }

    std::uint8_t operator()(Sum scaled) const
    {
        return static_cast<std::uint8_t>(static_cast<Sum>(Product{scaled} * reciprocal >> half) >> shift);
    }

    Sum scale;
    Sum reciprocal;
};

/// Each byte becomes the mean of those up to `reach` rows above and below it, by a sum for each column that moves down. Rows
/// that have changed are needed once more as they were, so the last ones are kept.
template <class Sum, class Product>
void boxBlurIn(const Bytes& rows, int height, int width, int reach)
{
    const auto last = [&](int y) { return std::min(y, height - 1); };
    const auto count = static_cast<unsigned>(2 * reach + 1);
    const Division<Sum, Product> mean(count);
    const int keptRows = std::min(reach + 1, height);
    const auto size = static_cast<std::size_t>(width);
    const auto originals = std::make_unique_for_overwrite<std::uint8_t[]>(size * static_cast<std::size_t>(keptRows));
    const Bytes kept{originals.get(), width};
    // Half of the divisor beforehand, to round.
    std::vector<Sum> moving(size, static_cast<Sum>(count / 2 * mean.scale));
    Sum* const __restrict sums = moving.data();
    for (int y = -reach; y <= reach; ++y) {
        const std::uint8_t* const entering = rows[last(std::max(y, 0))];
        for (int x = 0; x < width; ++x)
            sums[x] = static_cast<Sum>(sums[x] + entering[x] * mean.scale);
    }
    for (int y = 0; y < height; ++y) {
        std::memcpy(kept[y % keptRows], rows[y], size);
        const std::uint8_t* const entering = last(y + reach + 1) == y ? kept[y % keptRows] : rows[last(y + reach + 1)];
        const std::uint8_t* const leaving = kept[std::max(y - reach, 0) % keptRows];
        std::uint8_t* const __restrict means = rows[y];
        for (int x = 0; x < width; ++x) {
            const Sum sum = sums[x];
            sums[x] = static_cast<Sum>(sum + (entering[x] - leaving[x]) * mean.scale);
            means[x] = mean(sum);
        }
    }
}

void boxBlur(const Bytes& rows, int height, int width, int reach)
{
    const bool fitsNarrowly = 2 * static_cast<unsigned>(reach) < Division<std::uint16_t, std::uint32_t>::most;
    const auto blurred = fitsNarrowly ? boxBlurIn<std::uint16_t, std::uint32_t> : boxBlurIn<std::uint32_t, std::uint64_t>;
    blurred(rows, height, width, reach);
}

constexpr int block = 4;
using FourPixels [[gnu::vector_size(block * sizeof(std::uint32_t))]] = std::uint32_t;

void transposeBlock(const Pixels& from, int x, int y, const Pixels& to)
{
    FourPixels rows[block];
    for (int i = 0; i < block; ++i)
        std::memcpy(&rows[i], from[y + i] + x, sizeof rows[i]);
    const FourPixels left = __builtin_shufflevector(rows[0], rows[1], 0, 4, 1, 5);
    const FourPixels right = __builtin_shufflevector(rows[0], rows[1], 2, 6, 3, 7);
    const FourPixels leftBelow = __builtin_shufflevector(rows[2], rows[3], 0, 4, 1, 5);
    const FourPixels rightBelow = __builtin_shufflevector(rows[2], rows[3], 2, 6, 3, 7);
    const FourPixels columns[block] = {
        __builtin_shufflevector(left, leftBelow, 0, 1, 4, 5),
        __builtin_shufflevector(left, leftBelow, 2, 3, 6, 7),
        __builtin_shufflevector(right, rightBelow, 0, 1, 4, 5),
        __builtin_shufflevector(right, rightBelow, 2, 3, 6, 7),
    };
    for (int i = 0; i < block; ++i)
        std::memcpy(to[x + i] + y, &columns[i], sizeof columns[i]);
}

/// Makes the rows columns; the size is what is given.
void transpose(const Pixels& from, int width, int height, const Pixels& to)
{
    const int wholeWidth = width - width % block;
    const int wholeHeight = height - height % block;
    for (int y = 0; y < wholeHeight; y += block) {
        for (int x = 0; x < wholeWidth; x += block)
            transposeBlock(from, x, y, to);
    }
    for (int y = 0; y < height; ++y) {
        for (int x = y < wholeHeight ? wholeWidth : 0; x < width; ++x)
            to[x][y] = from[y][x];
    }
}

Bytes bytesOf(const Pixels& pixels)
{
    return {reinterpret_cast<std::uint8_t*>(pixels.first), pixels.stride * channels};
}

/// A strip of the image, which stays near the processor from the first box to the last.
constexpr int strip = 32;

void blurColumns(const Pixels& rows, int height, int width, int reach)
{
    for (int x = 0; x < width; x += strip) {
        const Pixels part{rows[0] + x, rows.stride};
        for (int box = 0; box < boxes; ++box)
            boxBlur(bytesOf(part), height, std::min(strip, width - x) * channels, reach);
    }
}

/// As columns are, turned on their side.
void blurRows(const Pixels& rows, int count, int length, int reach)
{
    const auto pixels = std::make_unique_for_overwrite<std::uint32_t[]>(std::size_t{strip} * static_cast<std::size_t>(length));
    const Pixels turned{pixels.get(), strip};
    for (int first = 0; first < count; first += strip) {
        const Pixels part{rows[first], rows.stride};
        const int thickness = std::min(strip, count - first);
        transpose(part, length, thickness, turned);
        blurColumns(turned, length, thickness, reach);
        transpose(turned, thickness, length, part);
    }
}

/// That of one box: three of them have the variance of the Gaussian. No picture is so large that a longer one would differ.
int boxReach(double radius)
{
    constexpr double longest = 8192;
    return std::isnan(radius) ? 0
                              : static_cast<int>(std::lround(std::min((std::sqrt(4 * radius * radius + 1) - 1) / 2, longest)));
}

} // namespace

int blurReach(double radius)
{
    return boxes * boxReach(radius);
}

void blur(cairo_surface_t* image, double radius)
{
    const int reach = boxReach(radius);
    if (reach < 1)
        return;
    cairo_surface_flush(image);
    const int width = cairo_image_surface_get_width(image);
    const int height = cairo_image_surface_get_height(image);
    const Pixels pixels{reinterpret_cast<std::uint32_t*>(cairo_image_surface_get_data(image)),
                        cairo_image_surface_get_stride(image) / channels};
    blurRows(pixels, height, width, reach);
    blurColumns(pixels, height, width, reach);
    cairo_surface_mark_dirty(image);
}

} // namespace simulator
