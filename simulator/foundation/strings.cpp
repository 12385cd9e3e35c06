#include "simulator/foundation/strings.hpp"

#include <cstdint>

#include <unicode/utf8.h>

namespace simulator {

bool isUTF8(std::string_view text)
{
    const auto length = static_cast<std::int32_t>(text.size());
    for (std::int32_t at = 0; at < length;) {
        UChar32 character = 0;
        U8_NEXT(text.data(), at, length, character);
        if (character < 0)
            return false;
    }
    return true;
}

NSString* toNSString(std::string_view utf8)
{
    NSString* const text = NSString::stringWithUTF8String(std::string(utf8).c_str());
    return text == nullptr ? constantString<"">() : text;
}

std::string toUTF8(NSString* text)
{
    const char* const utf8 = text->UTF8String();
    return utf8 == nullptr ? std::string() : std::string(utf8);
}

} // namespace simulator
