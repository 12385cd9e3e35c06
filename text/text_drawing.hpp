#pragma once

#include "platform/Foundation/NSString.hpp"
#include "platform/UIKit/UIImage.hpp"

#pragma GCC visibility push(default)
extern "C" {

/// A copy of the image, at the main screen's scale, with the text drawn into it: bold system face, 16 points, white, its
/// first line starting at the point (in points, from the image's top left), wrapped at the image's width and clipped at
/// its edges. Autoreleased. A nil image gives nil; a nil or empty text gives a plain copy.
UIImage* drawTextInImage(NSString* text, UIImage* image, CGPoint point);

/// The same, for the badges: each caller binds to a name of its own.
UIImage* drawTextInImage2(NSString* text, UIImage* image, CGPoint point);
}
#pragma GCC visibility pop
