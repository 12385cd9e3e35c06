#pragma once

#include <filesystem>
#include <memory>

#include "simulator/graphics/Bitmap.hpp"

/// Pictures in files, read, decoded and scaled once: they are kept, up to a bound, as long as the file is the same.
namespace simulator {

/// No file of more bytes is read as a picture.
constexpr std::size_t largestPictureFile = std::size_t{64} << 20;

/// The picture in a PNG file, not to be drawn into; one that is missing, no picture or too large gives null.
std::shared_ptr<Bitmap> pictureInFile(const std::filesystem::path& file, double scale);

/// How a picture is fitted into another: in points of that one.
struct Fitting {
    CGSize size;
    double scale;
    /// What the picture fills.
    CGRect rect;
    bool opaque;
    bool operator==(const Fitting&) const = default;
};

/// The picture drawn so, when it is first asked for; not to be drawn into. A size without area gives null, as no picture does.
std::shared_ptr<Bitmap> fitted(const std::shared_ptr<Bitmap>& picture, const Fitting& fitting);

} // namespace simulator
