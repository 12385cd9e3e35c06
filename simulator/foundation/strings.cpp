#include "simulator/foundation/strings.hpp"

namespace simulator {

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
