#pragma once

#include <algorithm>
#include <string>

#include "platform/runtime/types.hpp"

/// An encoding of types, written for a platform with words of 64 bits, as it is on this one: integers and lengths are as wide as
/// a word, and BOOL is a byte where they are narrow.
inline std::string encodedHere(std::string types)
{
    if constexpr (sizeof(NSInteger) == 4) {
        std::ranges::replace(types, 'q', 'i');
        std::ranges::replace(types, 'Q', 'I');
        std::ranges::replace(types, 'd', 'f');
        std::ranges::replace(types, 'B', 'c');
    }
    return types;
}
