#pragma once

#include "platform/CoreGraphics/CGGeometry.hpp"
#include "platform/CoreGraphics/CGPath.hpp"
#include "platform/Foundation/NSObject.hpp"

enum UIRectCorner : NSUInteger {
    UIRectCornerTopLeft = 1 << 0,
    UIRectCornerTopRight = 1 << 1,
    UIRectCornerBottomLeft = 1 << 2,
    UIRectCornerBottomRight = 1 << 3,
};

/// An outline.
class UIBezierPath : public NSObject {
public:
    /// A rectangle of which the corners in the mask are rounded.
    static UIBezierPath* bezierPathWithRoundedRect_byRoundingCorners_cornerRadii(CGRect rect, NSUInteger corners, CGSize radii)
    {
        return send<"bezierPathWithRoundedRect:byRoundingCorners:cornerRadii:", UIBezierPath*>(classNamed<"UIBezierPath">(), rect,
                                                                                               corners, radii);
    }
    CGPathRef CGPath() const { return send<"CGPath", CGPathRef>(this); }
};
