#include <libdeflate.h>
#include <string>

#include "simulator/graphics/Bitmap.hpp"
#include "tests/fuzz/target.hpp"

/// A picture's file: what is read of it can be drawn. The checksums of its parts are made true first, or none would be read.

namespace {

constexpr std::size_t word = 4;

std::uint32_t numberAt(const std::string& file, std::size_t offset)
{
    std::uint32_t number = 0;
    for (std::size_t i = 0; i < word; ++i)
        number = number << 8 | static_cast<std::uint8_t>(file[offset + i]);
    return number;
}

void makeTrue(std::string& file)
{
    constexpr std::size_t firstPart = 8;
    // The length, the kind, the contents, the checksum of the last two.
    for (std::size_t at = firstPart; at + 3 * word <= file.size();) {
        const std::size_t length = numberAt(file, at);
        if (length > file.size() - at - 3 * word)
            return;
        std::uint32_t checksum = libdeflate_crc32(0, file.data() + at + word, word + length);
        for (std::size_t i = word; i-- > 0; checksum >>= 8)
            file[at + 2 * word + length + i] = static_cast<char>(checksum);
        at += 3 * word + length;
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    std::string file(textIn(bytes, size));
    makeTrue(file);
    const auto picture = simulator::Bitmap::fromPNG(std::move(file), 2);
    if (picture == nullptr)
        return 0;
    const CGRect icon = CGRect::make(0, 0, 20, 20);
    const auto screen = simulator::Bitmap::make(icon.size, 2, true);
    picture->draw(screen->context().get(), icon);
    return 0;
}
