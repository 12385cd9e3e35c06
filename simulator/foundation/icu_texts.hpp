#pragma once

#include <unicode/unistr.h>

class NSString;

/// Texts between Foundation and ICU, which both count in UTF-16.
namespace simulator {

/// Nil gives an empty text.
icu::UnicodeString toICU(NSString* text);
/// Autoreleased.
NSString* fromICU(const icu::UnicodeString& text);

} // namespace simulator
