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

/// The image in a file of this machine. A file whose name has no scale in it ("@2x", "@3x") gives way to its sibling of the
/// screen's scale, or of the next lower one. Missing and unreadable files are passed over; nil when none is left.
Owned<UIImage> imageInFile(const std::filesystem::path& file);

} // namespace simulator
