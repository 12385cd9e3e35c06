#include "simulator/uikit/UIImage.hpp"

#include <algorithm>
#include <utility>

#include "platform/UIKit/UIScreen.hpp"
#include "simulator/foundation/phone_root.hpp"
#include "simulator/foundation/phone_system.hpp"
#include "simulator/foundation/strings.hpp"
#include "simulator/graphics/contexts.hpp"
#include "simulator/graphics/pictures.hpp"
#include "simulator/runtime/SimulatedClass.hpp"
#include "simulator/uikit/uikit.hpp"

/// A picture: made from pixels, or read from a file.

namespace simulator {

namespace {

/// What a file's name ends in when its pixels are so many a point, and the first system that heeds it.
struct ScaleMark {
    std::string_view mark;
    CGFloat scale;
    System since;

    bool isHeeded() const { return since <= phoneSystem(); }
};

/// The best first.
constexpr ScaleMark scaleMarks[] = {{"@3x", 3, System::v8_1}, {"@2x", 2, System::v7_0}};

const ScaleMark* markOf(const std::filesystem::path& file)
{
    const auto* const found = std::ranges::find_if(
        scaleMarks, [&](const ScaleMark& scaled) { return scaled.isHeeded() && file.stem().native().ends_with(scaled.mark); });
    return found == std::end(scaleMarks) ? nullptr : found;
}

std::filesystem::path siblingOf(const std::filesystem::path& file, const ScaleMark& scaled)
{
    std::filesystem::path name = file.stem();
    name += scaled.mark;
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
    if (const ScaleMark* const scaled = markOf(file))
        return imageWithBitmap(pictureInFile(file, scaled->scale));
    for (const ScaleMark& scaled : scaleMarks) {
        if (!scaled.isHeeded() || scaled.scale > UIScreen::mainScreen()->scale())
            continue;
        if (Owned<UIImage> image = imageWithBitmap(pictureInFile(siblingOf(file, scaled), scaled.scale)))
            return image;
    }
    return imageWithBitmap(pictureInFile(file, 1));
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
