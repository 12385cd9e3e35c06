#include "simulator/graphics/blur.hpp"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <gtest/gtest.h>
#include <vector>

#include "simulator/graphics/cairo_pointers.hpp"

/// The blur beside what it stands for: three boxes, each along the rows and then along the columns, one byte after the other.

namespace {

struct Image {
    int width;
    int height;
    std::vector<int> bytes;

    static constexpr int channels = 4;

    int& at(int x, int y, int channel)
    {
        const int column = std::clamp(x, 0, width - 1);
        const int row = std::clamp(y, 0, height - 1);
        return bytes[static_cast<std::size_t>(row * width + column) * std::size_t{channels} + static_cast<std::size_t>(channel)];
    }
};

Image boxBlurred(Image image, int reach, bool alongRows)
{
    Image result = image;
    const int count = 2 * reach + 1;
    for (int y = 0; y < image.height; ++y) {
        for (int x = 0; x < image.width; ++x) {
            for (int channel = 0; channel < Image::channels; ++channel) {
                int sum = count / 2;
                for (int i = -reach; i <= reach; ++i)
                    sum += alongRows ? image.at(x + i, y, channel) : image.at(x, y + i, channel);
                result.at(x, y, channel) = sum / count;
            }
        }
    }
    return result;
}

Image blurred(Image image, double radius)
{
    const int reach = static_cast<int>(std::lround((std::sqrt(4 * radius * radius + 1) - 1) / 2));
    for (int box = 0; box < 3; ++box) {
        for (const bool alongRows : {true, false})
            image = boxBlurred(std::move(image), reach, alongRows);
    }
    return image;
}

int greatestDifference(Image& expected, double radius, const Image& original)
{
    const simulator::CairoPointer<cairo_surface_t> surface(
        cairo_image_surface_create(CAIRO_FORMAT_ARGB32, original.width, original.height));
    unsigned char* const bytes = cairo_image_surface_get_data(surface.get());
    std::ranges::transform(original.bytes, bytes, [](int byte) { return static_cast<unsigned char>(byte); });
    cairo_surface_mark_dirty(surface.get());
    simulator::blur(surface.get(), radius);
    int greatest = 0;
    for (std::size_t i = 0; i < expected.bytes.size(); ++i)
        greatest = std::max(greatest, std::abs(expected.bytes[i] - bytes[i]));
    return greatest;
}

/// Hills, slopes and edges of all heights, each channel with its own.
Image landscape(int width, int height)
{
    Image image{width, height, {}};
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            for (int channel = 0; channel < Image::channels; ++channel) {
                const double hills = 60 * std::sin(x * 0.11 + channel) * std::cos(y * 0.07);
                const double edge = (x / 23 + y / 31) % 2 == 0 ? 40 : -20;
                image.bytes.push_back(std::clamp(static_cast<int>(120 + hills + edge + channel * 9 - y * 0.4), 0, 255));
            }
        }
    }
    return image;
}

} // namespace

TEST(Blur, IsWithinOneStepOfThreeBoxes)
{
    for (const auto& [width, height] : {std::pair{97, 70}, {64, 32}, {5, 90}, {1, 1}, {1, 9}, {9, 1}}) {
        for (const double radius : {0.0, 0.4, 2.0, 4.0, 16.0, 63.0, 64.0, 100.0}) {
            SCOPED_TRACE(testing::Message() << width << " x " << height << ", radius " << radius);
            const Image original = landscape(width, height);
            Image expected = blurred(original, radius);
            EXPECT_LE(greatestDifference(expected, radius, original), 1);
        }
    }
}

TEST(Blur, LeavesOneColourAsItIs)
{
    for (const int byte : {0, 1, 127, 254, 255}) {
        Image plain{40, 30, std::vector<int>(40 * 30 * Image::channels, byte)};
        for (const double radius : {1.0, 8.0, 31.0, 200.0, 1e300, HUGE_VAL, -8.0, std::nan("")})
            EXPECT_EQ(greatestDifference(plain, radius, plain), 0) << byte << ", radius " << radius;
    }
}
