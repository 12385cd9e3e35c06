#pragma once

#include <cstddef>

/// A text that can be a template argument: a selector, a class name, a constant string, a type encoding.
template <std::size_t Size>
struct FixedString {
    char text[Size]{};

    consteval FixedString() = default;
    // Implicit on purpose, so that a literal can stand as a template argument.
    consteval FixedString(const char (&literal)[Size])
    {
        for (std::size_t i = 0; i < Size; ++i)
            text[i] = literal[i];
    }
};

/// With its first letter, one of the English alphabet, in upper case.
template <std::size_t Size>
consteval FixedString<Size> capitalised(FixedString<Size> name)
{
    name.text[0] = static_cast<char>(name.text[0] - 'a' + 'A');
    return name;
}

template <std::size_t Left, std::size_t Right>
consteval FixedString<Left + Right - 1> operator+(const FixedString<Left>& left, const FixedString<Right>& right)
{
    FixedString<Left + Right - 1> joined;
    for (std::size_t i = 0; i + 1 < Left; ++i)
        joined.text[i] = left.text[i];
    for (std::size_t i = 0; i < Right; ++i)
        joined.text[Left - 1 + i] = right.text[i];
    return joined;
}
