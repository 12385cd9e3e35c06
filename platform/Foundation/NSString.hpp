#pragma once

#include "platform/Foundation/NSObject.hpp"
#include "platform/runtime/Owned.hpp"
#include "platform/runtime/constant_text.hpp"

/// An immutable text.
class NSString : public NSObject {
public:
    static NSString* alloc() { return send<"alloc", NSString*>(classNamed<"NSString">()); }
    /// UTF-8 that is not valid gives nil.
    NSString* initWithUTF8String(const char* text) { return send<"initWithUTF8String:", NSString*>(this, text); }
    static NSString* stringWithUTF8String(const char* text)
    {
        return send<"stringWithUTF8String:", NSString*>(classNamed<"NSString">(), text);
    }
    /// The arguments must have the types that the format names ("String Format Specifiers", Foundation); %@ of nil prints
    /// "(null)".
    template <class... Arguments>
    static NSString* stringWithFormat(NSString* format, Arguments... arguments)
    {
        return sendVariadic<"stringWithFormat:", NSString*>(classNamed<"NSString">(), format, arguments...);
    }

    const char* UTF8String() const { return send<"UTF8String", const char*>(this); }
    NSUInteger length() const { return send<"length", NSUInteger>(this); }
    unichar characterAtIndex(NSUInteger index) const { return send<"characterAtIndex:", unichar>(this, index); }
    bool isEqualToString(NSString* other) const { return send<"isEqualToString:", BOOL>(this, other) != NO; }
    /// The number that the text begins with; 0 when it begins with none.
    int intValue() const { return send<"intValue", int>(this); }
    float floatValue() const { return send<"floatValue", float>(this); }
};

/// A text that can change.
class NSMutableString : public NSString {
public:
    static NSMutableString* alloc() { return send<"alloc", NSMutableString*>(classNamed<"NSMutableString">()); }
    NSMutableString* initWithString(NSString* text) { return send<"initWithString:", NSMutableString*>(this, text); }
    void insertString_atIndex(NSString* text, NSUInteger index) { send<"insertString:atIndex:">(this, text, index); }
};

/// The constant string of that text (UTF-8).
template <FixedString Text>
inline NSString* constantString()
{
    return static_cast<NSString*>(constantText<Text>());
}
