#pragma once

#include <string>
#include <string_view>

#include "platform/Foundation/NSString.hpp"

namespace simulator {

bool isUTF8(std::string_view text);

/// Autoreleased. Bytes that are not UTF-8 give an empty text. Plugins of the simulator call it too.
[[gnu::visibility("default")]] NSString* toNSString(std::string_view utf8);

/// The text in UTF-8; nil gives an empty one.
std::string toUTF8(NSString* text);

} // namespace simulator
