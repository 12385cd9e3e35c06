#pragma once

#include "platform/CoreGraphics/CGGeometry.hpp"

class UIImage;

#pragma GCC visibility push(default)
extern "C" {
/// Opens an image context of that size in points and makes it current; scale 0 is the main screen's. A size without
/// area opens a context that takes no drawing and gives no image.
void UIGraphicsBeginImageContextWithOptions(CGSize size, BOOL opaque, CGFloat scale);
/// What has been drawn so far, not owned by the caller; nil without a current image context.
UIImage* UIGraphicsGetImageFromCurrentImageContext(void);
void UIGraphicsEndImageContext(void);
}
#pragma GCC visibility pop
