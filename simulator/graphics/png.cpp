#include "simulator/graphics/png.hpp"

#include <algorithm>
#include <cstdint>
#include <libdeflate.h>
#include <memory>
#include <new>
#include <vector>

namespace simulator {

namespace {

constexpr std::string_view signature("\x89PNG\r\n\x1a\n", 8);
constexpr int channels = 4;

/// Unsigned, the high byte first.
std::uint32_t wordAt(std::string_view bytes, std::size_t offset)
{
    std::uint32_t word = 0;
    for (const char byte : bytes.substr(offset, sizeof word))
        word = word << 8 | static_cast<unsigned char>(byte);
    return word;
}

std::uint32_t checksumOf(std::string_view bytes)
{
    return libdeflate_crc32(0, bytes.data(), bytes.size());
}

/// A part of a file: the length of its contents, its kind, these, a checksum of both.
struct Chunk {
    std::string_view kind;
    std::string_view contents;
};

/// Takes the first chunk off the bytes; none when it is not whole.
std::optional<Chunk> takeChunk(std::string_view& bytes)
{
    constexpr std::size_t word = sizeof(std::uint32_t);
    if (bytes.size() < 3 * word || bytes.size() - 3 * word < wordAt(bytes, 0))
        return std::nullopt;
    const std::size_t length = wordAt(bytes, 0);
    const std::string_view checked = bytes.substr(word, word + length);
    if (checksumOf(checked) != wordAt(bytes, 2 * word + length))
        return std::nullopt;
    bytes.remove_prefix(3 * word + length);
    return Chunk{checked.substr(0, word), checked.substr(word)};
}

/// A kind of colour, by its number in a header, and the bits that each of its channels may have.
struct ColourKind {
    char number;
    std::string_view depths;
};

constexpr char straightColour = 6;
constexpr ColourKind colourKinds[] = {
    {0, {"\1\2\4\10\20", 5}}, {2, {"\10\20", 2}}, {3, {"\1\2\4\10", 4}}, {4, {"\10\20", 2}}, {straightColour, {"\10\20", 2}},
};

/// What stands in a file's first chunk: two words, and a byte each for depth, colour, compression, filters, interlacing.
std::optional<PictureExtent> extentInHeader(std::string_view header)
{
    constexpr std::size_t size = 13;
    constexpr std::uint32_t greatest = 0x7FFFFFFF;
    if (header.size() != size)
        return std::nullopt;
    const std::uint32_t width = wordAt(header, 0);
    const std::uint32_t height = wordAt(header, sizeof width);
    const bool hasPixels = width > 0 && height > 0 && width <= greatest && height <= greatest;
    const bool hasColour = std::ranges::any_of(colourKinds, [&](const ColourKind& kind) {
        return header[9] == kind.number && kind.depths.find(header[8]) != std::string_view::npos;
    });
    const bool isKnown = header[10] == 0 && header[11] == 0 && (header[12] == 0 || header[12] == 1);
    if (!hasPixels || !hasColour || !isKnown)
        return std::nullopt;
    return PictureExtent{static_cast<int>(width), static_cast<int>(height)};
}

cairo_status_t takeBytes(void* rest, unsigned char* bytes, unsigned count)
{
    auto& unread = *static_cast<std::string_view*>(rest);
    if (count > unread.size())
        return CAIRO_STATUS_READ_ERROR;
    unread.copy(reinterpret_cast<char*>(bytes), count);
    unread.remove_prefix(count);
    return CAIRO_STATUS_SUCCESS;
}

/// Turns a row of premultiplied pixels, 0xAARRGGBB, into bytes of red, green, blue and alpha.
void straighten(const std::uint32_t* pixels, int count, std::uint32_t opaque, unsigned char* bytes)
{
    for (int i = 0; i < count; ++i, bytes += channels) {
        const std::uint32_t pixel = pixels[i] | opaque;
        const std::uint32_t alpha = pixel >> 24;
        const auto straight = [alpha](std::uint32_t component) -> std::uint32_t {
            if (alpha == 0 || alpha == 0xFF)
                return alpha == 0 ? 0 : component;
            return (component * 0xFF + alpha / 2) / alpha;
        };
        bytes[0] = static_cast<unsigned char>(straight(pixel >> 16 & 0xFF));
        bytes[1] = static_cast<unsigned char>(straight(pixel >> 8 & 0xFF));
        bytes[2] = static_cast<unsigned char>(straight(pixel & 0xFF));
        bytes[3] = static_cast<unsigned char>(alpha);
    }
}

void appendWord(std::string& bytes, std::uint32_t word)
{
    for (const int shift : {24, 16, 8, 0})
        bytes.push_back(static_cast<char>(word >> shift & 0xFF));
}

void appendChunk(std::string& file, std::string_view kind, std::string_view contents)
{
    appendWord(file, static_cast<std::uint32_t>(contents.size()));
    const std::size_t checked = file.size();
    file.append(kind).append(contents);
    appendWord(file, checksumOf(std::string_view(file).substr(checked)));
}

std::string headerOf(int width, int height)
{
    std::string header;
    appendWord(header, static_cast<std::uint32_t>(width));
    appendWord(header, static_cast<std::uint32_t>(height));
    constexpr char depth = 8;
    return header.append({depth, straightColour, 0, 0, 0});
}

/// The rows of an image, each after the byte for "no filter".
std::vector<unsigned char> rowsOf(cairo_surface_t* image)
{
    cairo_surface_flush(image);
    const int width = cairo_image_surface_get_width(image);
    const int height = cairo_image_surface_get_height(image);
    const std::ptrdiff_t stride = cairo_image_surface_get_stride(image);
    const std::uint32_t opaque = cairo_image_surface_get_format(image) == CAIRO_FORMAT_RGB24 ? 0xFF000000U : 0;
    const auto rowSize = 1 + static_cast<std::size_t>(width) * channels;
    std::vector<unsigned char> rows(rowSize * static_cast<std::size_t>(height));
    for (int y = 0; y < height; ++y) {
        const unsigned char* const pixels = cairo_image_surface_get_data(image) + y * stride;
        straighten(reinterpret_cast<const std::uint32_t*>(pixels), width, opaque,
                   &rows[rowSize * static_cast<std::size_t>(y) + 1]);
    }
    return rows;
}

struct CompressorDeleter {
    void operator()(libdeflate_compressor* compressor) const { libdeflate_free_compressor(compressor); }
};

std::string compressed(const std::vector<unsigned char>& bytes)
{
    constexpr int fastest = 1;
    const std::unique_ptr<libdeflate_compressor, CompressorDeleter> compressor(libdeflate_alloc_compressor(fastest));
    if (compressor == nullptr)
        throw std::bad_alloc();
    std::string shorter(libdeflate_zlib_compress_bound(compressor.get(), bytes.size()), '\0');
    shorter.resize(libdeflate_zlib_compress(compressor.get(), bytes.data(), bytes.size(), shorter.data(), shorter.size()));
    return shorter;
}

} // namespace

std::optional<PictureExtent> extentOfPNG(std::string_view file)
{
    if (!file.starts_with(signature))
        return std::nullopt;
    file.remove_prefix(signature.size());
    const auto first = takeChunk(file);
    if (!first || first->kind != "IHDR")
        return std::nullopt;
    bool hasPixels = false;
    while (const auto chunk = takeChunk(file)) {
        hasPixels |= chunk->kind == "IDAT";
        if (chunk->kind == "IEND")
            return hasPixels ? extentInHeader(first->contents) : std::nullopt;
    }
    return std::nullopt;
}

CairoPointer<cairo_surface_t> decodePNG(std::string_view file, PictureExtent extent)
{
    CairoPointer<cairo_surface_t> picture(cairo_image_surface_create_from_png_stream(takeBytes, &file));
    if (cairo_surface_status(picture.get()) != CAIRO_STATUS_SUCCESS)
        picture.reset(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, extent.width, extent.height));
    return picture;
}

std::string encodePNG(cairo_surface_t* image)
{
    std::string file(signature);
    appendChunk(file, "IHDR", headerOf(cairo_image_surface_get_width(image), cairo_image_surface_get_height(image)));
    appendChunk(file, "IDAT", compressed(rowsOf(image)));
    appendChunk(file, "IEND", {});
    return file;
}

} // namespace simulator
