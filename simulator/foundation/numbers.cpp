#include <algorithm>
#include <cstdint>
#include <limits>
#include <string>

#include <unicode/uchar.h>

#include "platform/Foundation/NSString.hpp"
#include "simulator/foundation/foundation.hpp"
#include "simulator/foundation/surroundings.hpp"
#include "simulator/runtime/SimulatedClass.hpp"

/// Texts are read as numbers in the decimal digits of any script, unless the phone is to know ASCII's alone.

namespace simulator {

namespace {

/// The value of a decimal digit that the phone reads, or -1.
int digitValue(unichar character)
{
    constexpr unichar lastOfASCII = 0x7f;
    return character <= lastOfASCII || surroundings().customs.readsDigitsOfAnyScript ? u_charDigitValue(character) : -1;
}

/// White space, a sign, digits; what follows is passed over. Without digits 0; beyond the range the nearest limit.
int intValue(NSString* self, SEL)
{
    const NSUInteger length = self->length();
    NSUInteger index = 0;
    while (index < length && u_isUWhiteSpace(self->characterAtIndex(index)) != 0)
        ++index;
    bool isNegative = false;
    if (index < length && (self->characterAtIndex(index) == '-' || self->characterAtIndex(index) == '+'))
        isNegative = self->characterAtIndex(index++) == '-';

    std::int64_t value = 0;
    constexpr std::int64_t beyond = std::int64_t{1} << 32;
    for (; index < length; ++index) {
        const int digit = digitValue(self->characterAtIndex(index));
        if (digit < 0)
            break;
        if (value < beyond)
            value = value * 10 + digit;
    }
    value = isNegative ? -value : value;
    constexpr std::int64_t least = std::numeric_limits<int>::min();
    constexpr std::int64_t most = std::numeric_limits<int>::max();
    return static_cast<int>(std::clamp(value, least, most));
}

} // namespace

void replaceNumberReading()
{
    // Each of GNUstep's string classes has a method of its own.
    for (const char* name : {"NSString", "GSString", "GSCString", "GSUnicodeString", "NSConstantString", "GSMutableString"}) {
        const Class cls = objc_getClass(name);
        if (class_getInstanceMethod(cls, selector<"intValue">()) != nullptr)
            replaceMethod<"intValue">(cls, &intValue);
    }
}

} // namespace simulator
