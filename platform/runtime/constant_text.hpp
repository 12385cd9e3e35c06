#pragma once

#include "platform/runtime/send.hpp"

/// A constant text as compilers write it for the phone, where it is part of the library ("Core Foundation", Apple: `CFSTR`).
struct ConstantText {
    const void* isa;
    int flags;
    const void* characters;
    /// In characters.
    long length;

    static constexpr int ofASCII = 0x7c8;
    static constexpr int ofUTF16 = 0x7d0;
};

#if defined(__APPLE__)

extern "C" {
/// The class of the constant texts (Core Foundation).
extern void* __CFConstantStringClassReference[];
}

/// The UTF-16 form of a text in valid UTF-8, with a zero at its end.
template <std::size_t Size>
struct UTF16Text {
    unichar characters[Size]{};
    long length = 0;

    consteval explicit UTF16Text(const FixedString<Size>& text)
    {
        for (std::size_t i = 0; i + 1 < Size;) {
            const auto first = static_cast<unsigned char>(text.text[i++]);
            const int following = first < 0xc0 ? 0 : first < 0xe0 ? 1 : first < 0xf0 ? 2 : 3;
            std::uint32_t character = following == 0 ? first : first & (0x3fU >> following);
            for (int k = 0; k < following; ++k)
                character = character << 6 | (static_cast<unsigned char>(text.text[i++]) & 0x3fU);
            if (character >= 0x10000)
                add(0xd800 + ((character - 0x10000) >> 10));
            add(character >= 0x10000 ? 0xdc00 + (character & 0x3ff) : character);
        }
    }

private:
    consteval void add(std::uint32_t unit) { characters[length++] = static_cast<unichar>(unit); }
};

template <std::size_t Size>
consteval bool isASCII(const FixedString<Size>& text)
{
    for (const char character : text.text)
        if (static_cast<unsigned char>(character) >= 0x80)
            return false;
    return true;
}

template <FixedString Text>
[[gnu::section("__TEXT,__ustring")]] inline constexpr UTF16Text utf16Text{Text};

template <FixedString Text>
consteval ConstantText constantTextOf()
{
    if constexpr (isASCII(Text))
        return {__CFConstantStringClassReference, ConstantText::ofASCII, Text.text, sizeof Text.text - 1};
    else
        return {__CFConstantStringClassReference, ConstantText::ofUTF16, utf16Text<Text>.characters, utf16Text<Text>.length};
}

template <FixedString Text>
[[gnu::section("__DATA,__cfstring")]] inline constinit ConstantText constantTextObject = constantTextOf<Text>();

/// The constant text (UTF-8).
template <FixedString Text>
inline id constantText()
{
    return reinterpret_cast<id>(&constantTextObject<Text>);
}

#else

/// The constant text (UTF-8). It is made at its first use and never freed.
template <FixedString Text>
inline id constantText()
{
    static constinit id made = nullptr;
    if (made == nullptr) [[unlikely]]
        made = send<"initWithUTF8String:", id>(send<"alloc", id>(classNamed<"NSString">()), Text.text);
    return made;
}

#endif
