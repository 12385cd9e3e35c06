#pragma once

#include "platform/CoreGraphics/CGGeometry.hpp"
#include "platform/Foundation/NSObject.hpp"

/// A display.
class UIScreen : public NSObject {
public:
    static UIScreen* mainScreen() { return send<"mainScreen", UIScreen*>(classNamed<"UIScreen">()); }
    /// In points, with the origin at zero.
    CGRect bounds() const { return send<"bounds", CGRect>(this); }
    /// Pixels per point.
    CGFloat scale() const { return send<"scale", CGFloat>(this); }
};
