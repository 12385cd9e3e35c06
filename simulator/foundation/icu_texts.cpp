#include "simulator/foundation/icu_texts.hpp"

#include "platform/Foundation/NSString.hpp"

namespace simulator {

icu::UnicodeString toICU(NSString* text)
{
    const NSUInteger length = text->length();
    icu::UnicodeString copy;
    char16_t* const characters = copy.getBuffer(static_cast<std::int32_t>(length));
    send<"getCharacters:range:">(text, characters, NSRange{0, length});
    copy.releaseBuffer(static_cast<std::int32_t>(length));
    return copy;
}

NSString* fromICU(const icu::UnicodeString& text)
{
    return send<"stringWithCharacters:length:", NSString*>(classNamed<"NSString">(), text.getBuffer(),
                                                           static_cast<NSUInteger>(text.length()));
}

} // namespace simulator
