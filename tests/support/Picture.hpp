#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <vector>

#include "platform/UIKit/UIImageView.hpp"
#include "platform/runtime/Owned.hpp"
#include "simulator/uikit/UIImage.hpp"

/// The pixels of an image, each as 0xAARRGGBB with premultiplied components.
struct Picture {
    int width = 0;
    int height = 0;
    std::vector<std::uint32_t> pixels;

    bool operator==(const Picture&) const = default;

    std::uint32_t at(int x, int y) const
    {
        return pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(x)];
    }

    /// The smallest rectangle, in pixels, that holds every pixel of which the question is true.
    struct Box {
        int left, top, right, bottom;
        bool operator==(const Box&) const = default;
    };
    std::optional<Box> boxOf(const std::function<bool(std::uint32_t)>& question) const;
    /// The box of all that is not quite transparent.
    std::optional<Box> ink() const;
};

Picture pictureOf(UIImage* image);
/// What a view shows when its image is that; nothing without one.
Picture shown(UIImageView* view);
/// The screen, laid out and drawn.
Picture screenshot();

/// An image of one colour (0xAARRGGBB, premultiplied); its size is in points.
Owned<UIImage> plainImage(CGSize size, CGFloat scale, std::uint32_t colour);
/// An image in which no two neighbouring pixels are alike.
Owned<UIImage> patternedImage(CGSize size, CGFloat scale);

/// Puts an image's pixels into a PNG file.
void writePicture(UIImage* image, const std::filesystem::path& file);
