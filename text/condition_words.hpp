#pragma once

#include <cstdint>

#include "platform/Foundation/NSString.hpp"
#include "platform/runtime/Strong.hpp"

/// The words for the weather's condition codes. The variables are exported and writable; a word that is changed shows
/// in the next sentence. `thunderstromString` is spelled so in the exported name.

#pragma GCC visibility push(default)
extern "C" {
extern Strong<NSString> stormString;
extern Strong<NSString> hurricaneString;
extern Strong<NSString> thunderstromString;
extern Strong<NSString> snowString;
extern Strong<NSString> sleetString;
extern Strong<NSString> rainString;
extern Strong<NSString> drizzleString;
extern Strong<NSString> showersString;
extern Strong<NSString> flurriesString;
extern Strong<NSString> snowshowersString;
extern Strong<NSString> hailString;
extern Strong<NSString> dustString;
extern Strong<NSString> fogString;
extern Strong<NSString> hazeString;
extern Strong<NSString> smokeString;
extern Strong<NSString> blusterString;
extern Strong<NSString> windString;
extern Strong<NSString> coldString;
extern Strong<NSString> cloudyString;
extern Strong<NSString> clearString;
extern Strong<NSString> sunnyString;
extern Strong<NSString> fairString;
extern Strong<NSString> hotString;
extern Strong<NSString> snowyString;
extern Strong<NSString> notAvString;
}
#pragma GCC visibility pop

/// Gives each variable its English word. To be called once, when the library is loaded.
void setConditionWords();

/// The word for a condition code; codes without a word, those above 47 included, give `notAvString`.
NSString* conditionWord(std::uint32_t code);
