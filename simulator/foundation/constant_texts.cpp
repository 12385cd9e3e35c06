#include "platform/Foundation/NSString.hpp"
#include "simulator/foundation/foundation.hpp"
#include "simulator/runtime/SimulatedClass.hpp"

/// The constant texts of libraries that were compiled for the phone.

namespace simulator {

namespace {

/// The objects lie in the library as its compiler wrote them.
struct ConstantTextState {};

const ConstantText& constantOf(const NSString* self)
{
    return *reinterpret_cast<const ConstantText*>(self);
}

unichar characterOf(const ConstantText& text, NSUInteger index)
{
    return text.flags == ConstantText::ofUTF16 ? static_cast<const unichar*>(text.characters)[index]
                                               : static_cast<const unsigned char*>(text.characters)[index];
}

NSUInteger length(NSString* self, SEL)
{
    return static_cast<NSUInteger>(constantOf(self).length);
}

void failOutside(const NSString* self, NSRange range)
{
    const auto length = static_cast<NSUInteger>(constantOf(self).length);
    if (range.location > length || range.length > length - range.location)
        send<"raise:format:">(classNamed<"NSException">(), constantString<"NSRangeException">(),
                              constantString<"out of the bounds of a constant text">());
}

unichar characterAtIndex(NSString* self, SEL, NSUInteger index)
{
    failOutside(self, {index, 1});
    return characterOf(constantOf(self), index);
}

void getCharactersRange(NSString* self, SEL, unichar* characters, NSRange range)
{
    failOutside(self, range);
    for (NSUInteger i = 0; i < range.length; ++i)
        characters[i] = characterOf(constantOf(self), range.location + i);
}

id itself(NSString* self, SEL)
{
    return self;
}

id copyWithZone(NSString* self, SEL, void*)
{
    return self;
}

void stay(NSString*, SEL)
{
}

NSUInteger retainCount(NSString*, SEL)
{
    return ~NSUInteger{0};
}

} // namespace

void addConstantTexts()
{
    SimulatedClass<ConstantTextState>("__NSCFConstantString", "NSString")
        .method<"length">(length)
        .method<"characterAtIndex:">(characterAtIndex)
        .method<"getCharacters:range:">(getCharactersRange)
        .method<"copyWithZone:">(copyWithZone)
        .method<"retain">(itself)
        .method<"autorelease">(itself)
        .method<"release">(stay)
        .method<"retainCount">(retainCount)
        .registerClass();
}

} // namespace simulator
