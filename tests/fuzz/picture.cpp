#include "simulator/graphics/Bitmap.hpp"
#include "tests/fuzz/target.hpp"

/// A picture's file: what is read of it can be drawn.

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    const auto picture = simulator::Bitmap::fromPNG(textIn(bytes, size), 2);
    if (picture == nullptr)
        return 0;
    const CGRect icon = CGRect::make(0, 0, 20, 20);
    const auto screen = simulator::Bitmap::make(icon.size, 2, true);
    picture->draw(screen->context().get(), icon);
    return 0;
}
