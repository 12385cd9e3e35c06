#pragma once

#include "platform/CoreGraphics/CGGeometry.hpp"
#include "platform/Foundation/NSDictionary.hpp"
#include "platform/Foundation/NSString.hpp"

#pragma GCC visibility push(default)
extern "C" {
extern NSString* const NSFontAttributeName;
extern NSString* const NSForegroundColorAttributeName;
}
#pragma GCC visibility pop

/// The messages of "NSString UIKit Additions" that draw a text into the current graphics context.
namespace NSStringDrawing {

/// Wraps at the rectangle's width and clips at its edges; the first line starts at its top left corner.
inline void drawInRect_withAttributes(NSString* text, CGRect rect, NSDictionary* attributes)
{
    send<"drawInRect:withAttributes:">(text, rect, attributes);
}

} // namespace NSStringDrawing
