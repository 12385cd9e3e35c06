#include "tests/support/Picture.hpp"

#include <algorithm>
#include <cstring>

#include "simulator/springboard/SpringBoard.hpp"

namespace {

unsigned char* rowOf(cairo_surface_t* surface, int y)
{
    return cairo_image_surface_get_data(surface) + static_cast<std::ptrdiff_t>(y) * cairo_image_surface_get_stride(surface);
}

template <class Colour>
Owned<UIImage> image(CGSize size, CGFloat scale, Colour colourAt)
{
    const auto bitmap = simulator::Bitmap::make(size, scale, false);
    cairo_surface_t* const surface = bitmap->surface();
    cairo_surface_flush(surface);
    for (int y = 0; y < cairo_image_surface_get_height(surface); ++y) {
        unsigned char* const row = rowOf(surface, y);
        for (int x = 0; x < cairo_image_surface_get_width(surface); ++x) {
            const std::uint32_t colour = colourAt(x, y);
            std::memcpy(row + static_cast<std::ptrdiff_t>(4) * x, &colour, sizeof colour);
        }
    }
    cairo_surface_mark_dirty(surface);
    return simulator::imageWithBitmap(bitmap);
}

} // namespace

std::optional<Picture::Box> Picture::boxOf(const std::function<bool(std::uint32_t)>& question) const
{
    Box box{width, height, 0, 0};
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            if (question(at(x, y)))
                box = {std::min(box.left, x), std::min(box.top, y), std::max(box.right, x + 1), std::max(box.bottom, y + 1)};
        }
    }
    return box.right == 0 ? std::nullopt : std::optional(box);
}

std::optional<Picture::Box> Picture::ink() const
{
    return boxOf([](std::uint32_t pixel) { return pixel >> 24 != 0; });
}

Picture pictureOf(UIImage* image)
{
    cairo_surface_t* const surface = ivarsOf<simulator::ImageState>(image).bitmap->surface();
    cairo_surface_flush(surface);
    Picture picture{cairo_image_surface_get_width(surface), cairo_image_surface_get_height(surface), {}};
    const auto width = static_cast<std::size_t>(picture.width);
    picture.pixels.resize(width * static_cast<std::size_t>(picture.height));
    for (int y = 0; y < picture.height; ++y)
        std::memcpy(&picture.pixels[static_cast<std::size_t>(y) * width], rowOf(surface, y), width * sizeof(std::uint32_t));
    return picture;
}

Picture shown(UIImageView* view)
{
    return view->image() == nullptr ? Picture{} : pictureOf(view->image());
}

Picture screenshot()
{
    return pictureOf(simulator::imageWithBitmap(simulator::screenPicture()));
}

Owned<UIImage> plainImage(CGSize size, CGFloat scale, std::uint32_t colour)
{
    return image(size, scale, [colour](int, int) { return colour; });
}

Owned<UIImage> patternedImage(CGSize size, CGFloat scale)
{
    return image(size, scale, [](int x, int y) {
        return 0xFF000000U | static_cast<std::uint32_t>((x * 37 % 200) << 16 | (y * 53 % 200) << 8 | ((x + y) * 91 % 200));
    });
}

void writePicture(UIImage* image, const std::filesystem::path& file)
{
    ivarsOf<simulator::ImageState>(image).bitmap->writePNG(file);
}
