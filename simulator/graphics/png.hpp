#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "simulator/graphics/cairo_pointers.hpp"

/// PNG files: what is in one without its pixels, its pixels, and how one is made.
namespace simulator {

/// In pixels.
struct PictureExtent {
    int width;
    int height;
};

/// The extent of the picture in a PNG file; none when the file is no such picture, is cut short or was changed on its way, as
/// the checksum of each of its parts tells. Its pixels are not decoded.
std::optional<PictureExtent> extentOfPNG(std::string_view file);

/// Its pixels. Those of a file that cannot be decoded, though it is whole, are transparent.
CairoPointer<cairo_surface_t> decodePNG(std::string_view file, PictureExtent extent);

/// A PNG file of an image surface (ARGB32 or RGB24), 8 bits a channel with alpha. Made for speed: its rows are compressed as
/// they are, by the least thorough of the compressor's ways.
std::string encodePNG(cairo_surface_t* image);

} // namespace simulator
