#pragma once

#include "platform/Foundation/NSObject.hpp"

class NSString;

/// A face at a size in points.
class UIFont : public NSObject {
public:
    static UIFont* alloc() { return send<"alloc", UIFont*>(classNamed<"UIFont">()); }
    static UIFont* fontWithName_size(NSString* name, CGFloat size)
    {
        return send<"fontWithName:size:", UIFont*>(classNamed<"UIFont">(), name, size);
    }
    static UIFont* systemFontOfSize(CGFloat size) { return send<"systemFontOfSize:", UIFont*>(classNamed<"UIFont">(), size); }
    static UIFont* boldSystemFontOfSize(CGFloat size)
    {
        return send<"boldSystemFontOfSize:", UIFont*>(classNamed<"UIFont">(), size);
    }

    NSString* fontName() const { return send<"fontName", NSString*>(this); }
    CGFloat pointSize() const { return send<"pointSize", CGFloat>(this); }
    /// The highest point of a line over its baseline, and the lowest, which is negative.
    CGFloat ascender() const { return send<"ascender", CGFloat>(this); }
    CGFloat descender() const { return send<"descender", CGFloat>(this); }
    /// What is left between one line and the next.
    CGFloat leading() const { return send<"leading", CGFloat>(this); }
    /// From one baseline to the next.
    CGFloat lineHeight() const { return send<"lineHeight", CGFloat>(this); }
};
