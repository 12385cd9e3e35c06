#pragma once

#include "platform/CoreGraphics/CGGeometry.hpp"
#include "platform/Foundation/NSObject.hpp"

class NSString;

/// An immutable picture. Its size is in points; its pixels are size times scale.
class UIImage : public NSObject {
public:
    static UIImage* alloc() { return send<"alloc", UIImage*>(classNamed<"UIImage">()); }
    /// Reads a file, or its "@2x" or, since iOS 8, "@3x" sibling on a screen of that scale. A missing or unreadable file gives
    /// nil.
    static UIImage* imageWithContentsOfFile(NSString* path)
    {
        return send<"imageWithContentsOfFile:", UIImage*>(classNamed<"UIImage">(), path);
    }

    CGSize size() const { return send<"size", CGSize>(this); }
    CGFloat scale() const { return send<"scale", CGFloat>(this); }
    /// Draws it into the current graphics context, scaled to fill the rectangle.
    void drawInRect(CGRect rect) { send<"drawInRect:">(this, rect); }
};
