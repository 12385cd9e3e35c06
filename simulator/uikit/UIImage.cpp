#include "simulator/uikit/UIImage.hpp"

#include <utility>

#include "platform/UIKit/UIScreen.hpp"
#include "simulator/foundation/phone_root.hpp"
#include "simulator/foundation/strings.hpp"
#include "simulator/graphics/contexts.hpp"
#include "simulator/runtime/SimulatedClass.hpp"
#include "simulator/uikit/uikit.hpp"

/// A picture: made from pixels, or read from a file.

namespace simulator {

namespace {

constexpr std::string_view doubleScaleMark = "@2x";

std::filesystem::path doubleScaleSibling(const std::filesystem::path& file)
{
    std::filesystem::path name = file.stem();
    name += doubleScaleMark;
    name += file.extension();
    return file.parent_path() / name;
}

UIImage* imageWithContentsOfFile(Class, SEL, NSString* path)
{
    return path == nullptr ? nullptr : imageInFile(onThisMachine(toUTF8(path))).autorelease();
}

CGSize size(UIImage* self, SEL)
{
    const auto& bitmap = ivarsOf<ImageState>(self).bitmap;
    return bitmap == nullptr ? CGSize{} : bitmap->size();
}

CGFloat scale(UIImage* self, SEL)
{
    const auto& bitmap = ivarsOf<ImageState>(self).bitmap;
    return bitmap == nullptr ? 1 : bitmap->scale();
}

void drawInRect(UIImage* self, SEL, CGRect rect)
{
    const GraphicsContext* const context = currentGraphicsContext();
    const auto& bitmap = ivarsOf<ImageState>(self).bitmap;
    if (context != nullptr && context->cairo != nullptr && bitmap != nullptr)
        bitmap->draw(context->cairo, rect);
}

} // namespace

Owned<UIImage> imageWithBitmap(std::shared_ptr<Bitmap> bitmap)
{
    if (bitmap == nullptr)
        return nullptr;
    Owned<UIImage> image = adopt(send<"new", UIImage*>(classNamed<"UIImage">()));
    ivarsOf<ImageState>(image.get()).bitmap = std::move(bitmap);
    return image;
}

Owned<UIImage> imageInFile(const std::filesystem::path& file)
{
    const bool isDoubleScale = file.stem().native().ends_with(doubleScaleMark);
    if (!isDoubleScale && UIScreen::mainScreen()->scale() >= 2) {
        if (Owned<UIImage> image = imageWithBitmap(Bitmap::read(doubleScaleSibling(file), 2)))
            return image;
    }
    return imageWithBitmap(Bitmap::read(file, isDoubleScale ? 2 : 1));
}

void registerUIImage()
{
    SimulatedClass<ImageState>("UIImage", "NSObject")
        .classMethod<"imageWithContentsOfFile:">(imageWithContentsOfFile)
        .method<"size">(size)
        .method<"scale">(scale)
        .method<"drawInRect:">(drawInRect)
        .registerClass();
}

} // namespace simulator
