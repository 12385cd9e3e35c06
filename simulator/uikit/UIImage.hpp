#pragma once

#include <memory>

#include "platform/UIKit/UIImage.hpp"
#include "simulator/graphics/Bitmap.hpp"
#include "simulator/runtime/SimulatedClass.hpp"

namespace simulator {

/// What every image holds ("UIImage", UIKit).
struct ImageState {
    /// Null in an image that was made with plain init.
    std::shared_ptr<Bitmap> bitmap;
};

/// Null pixels give nil.
Owned<UIImage> imageWithBitmap(std::shared_ptr<Bitmap> bitmap);

/// The image in a file of this machine, or in its "@2x" sibling on a screen of scale 2 or more. Missing and unreadable
/// files give nil.
Owned<UIImage> imageInFile(const std::filesystem::path& file);

} // namespace simulator
