#include "simulator/foundation/strings.hpp"

#include <cstdint>

#include <unicode/ustring.h>

namespace simulator {

bool isUTF8(std::string_view text)
{
    UErrorCode status = U_ZERO_ERROR;
    u_strFromUTF8(nullptr, 0, nullptr, text.data(), static_cast<std::int32_t>(text.size()), &status);
    return status != U_INVALID_CHAR_FOUND;
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
