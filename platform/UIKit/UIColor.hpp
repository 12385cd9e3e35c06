#pragma once

#include "platform/CoreGraphics/CGColor.hpp"
#include "platform/Foundation/NSObject.hpp"

/// A colour with its opacity.
class UIColor : public NSObject {
public:
    static UIColor* alloc() { return send<"alloc", UIColor*>(classNamed<"UIColor">()); }
    static UIColor* whiteColor() { return send<"whiteColor", UIColor*>(classNamed<"UIColor">()); }
    static UIColor* blackColor() { return send<"blackColor", UIColor*>(classNamed<"UIColor">()); }
    static UIColor* grayColor() { return send<"grayColor", UIColor*>(classNamed<"UIColor">()); }
    static UIColor* greenColor() { return send<"greenColor", UIColor*>(classNamed<"UIColor">()); }
    static UIColor* clearColor() { return send<"clearColor", UIColor*>(classNamed<"UIColor">()); }
    /// Components from 0 to 1.
    static UIColor* colorWithWhite_alpha(CGFloat white, CGFloat alpha)
    {
        return send<"colorWithWhite:alpha:", UIColor*>(classNamed<"UIColor">(), white, alpha);
    }
    static UIColor* colorWithRed_green_blue_alpha(CGFloat red, CGFloat green, CGFloat blue, CGFloat alpha)
    {
        return send<"colorWithRed:green:blue:alpha:", UIColor*>(classNamed<"UIColor">(), red, green, blue, alpha);
    }

    UIColor* initWithRed_green_blue_alpha(CGFloat red, CGFloat green, CGFloat blue, CGFloat alpha)
    {
        return send<"initWithRed:green:blue:alpha:", UIColor*>(this, red, green, blue, alpha);
    }
    CGColorRef CGColor() const { return send<"CGColor", CGColorRef>(this); }
    /// Gives its components, each but where there is null; NO for a colour that has none.
    bool getRed_green_blue_alpha(CGFloat* red, CGFloat* green, CGFloat* blue, CGFloat* alpha) const
    {
        return send<"getRed:green:blue:alpha:", BOOL>(this, red, green, blue, alpha) != NO;
    }
    /// Makes it the fill and stroke colour of the current graphics context.
    void set() { send<"set">(this); }
};
