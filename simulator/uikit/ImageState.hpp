#pragma once

#include <memory>

#include "platform/UIKit/UIImage.hpp"
#include "platform/runtime/ClassBuilder.hpp"
#include "platform/runtime/Owned.hpp"
#include "simulator/graphics/Bitmap.hpp"

namespace simulator {

struct ImageState {
    /// Null in an image that was made with plain init.
    std::shared_ptr<Bitmap> bitmap;
};

inline const ImageState& stateOf(UIImage* image)
{
    return ivarsOf<ImageState>(image);
}

/// Null pixels give nil.
Owned<UIImage> imageWithBitmap(std::shared_ptr<Bitmap> bitmap);

/// The image in a file of this machine, or in its "@2x" sibling on a screen of scale 2 or more. Missing and unreadable
/// files give nil.
Owned<UIImage> imageInFile(const std::filesystem::path& file);

} // namespace simulator
