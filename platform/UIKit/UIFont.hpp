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
    CGFloat lineHeight() const { return send<"lineHeight", CGFloat>(this); }
};
