#include "text/condition_words.hpp"

constinit Strong<NSString> stormString;
constinit Strong<NSString> hurricaneString;
constinit Strong<NSString> thunderstromString;
constinit Strong<NSString> snowString;
constinit Strong<NSString> sleetString;
constinit Strong<NSString> rainString;
constinit Strong<NSString> drizzleString;
constinit Strong<NSString> showersString;
constinit Strong<NSString> flurriesString;
constinit Strong<NSString> snowshowersString;
constinit Strong<NSString> hailString;
constinit Strong<NSString> dustString;
constinit Strong<NSString> fogString;
constinit Strong<NSString> hazeString;
constinit Strong<NSString> smokeString;
constinit Strong<NSString> blusterString;
constinit Strong<NSString> windString;
constinit Strong<NSString> coldString;
constinit Strong<NSString> cloudyString;
constinit Strong<NSString> clearString;
constinit Strong<NSString> sunnyString;
constinit Strong<NSString> fairString;
constinit Strong<NSString> hotString;
constinit Strong<NSString> snowyString;
constinit Strong<NSString> notAvString;

namespace {

struct Word {
    Strong<NSString>& variable;
    NSString* (*text)();
};

constexpr Word words[] = {
    {stormString, constantString<"Storm">},
    {hurricaneString, constantString<"Hurricane">},
    {thunderstromString, constantString<"Thunderstorm">},
    {snowString, constantString<"Snow">},
    {sleetString, constantString<"Sleet">},
    {rainString, constantString<"Rain">},
    {drizzleString, constantString<"Drizzle">},
    {showersString, constantString<"Showers">},
    {flurriesString, constantString<"Snow Flurries">},
    {snowshowersString, constantString<"Snow Showers">},
    {hailString, constantString<"Hail">},
    {dustString, constantString<"Dust">},
    {fogString, constantString<"Fog">},
    {hazeString, constantString<"Haze">},
    {smokeString, constantString<"Smoke">},
    {blusterString, constantString<"Blustery">},
    {windString, constantString<"Wind">},
    {coldString, constantString<"Cold">},
    {cloudyString, constantString<"Cloudy">},
    {clearString, constantString<"Clear">},
    {sunnyString, constantString<"Sunny">},
    {fairString, constantString<"Fair">},
    {hotString, constantString<"Hot">},
    {snowyString, constantString<"Snowy">},
    {notAvString, constantString<"Not Available">},
};

/// Indexed by the condition code. Code 0 is "Not Available" on purpose.
constexpr const Strong<NSString>* wordOfCode[] = {
    // clang-format off
    &notAvString, &stormString, &hurricaneString, &thunderstromString, // 0
    &thunderstromString, &snowString, &sleetString, &sleetString, // 4
    &rainString, &drizzleString, &rainString, &showersString, // 8
    &showersString, &flurriesString, &snowshowersString, &snowString, // 12
    &snowString, &hailString, &sleetString, &dustString, // 16
    &fogString, &hazeString, &smokeString, &blusterString, // 20
    &windString, &coldString, &cloudyString, &cloudyString, // 24
    &cloudyString, &cloudyString, &cloudyString, &clearString, // 28
    &sunnyString, &fairString, &fairString, &hailString, // 32
    &hotString, &thunderstromString, &thunderstromString, &thunderstromString, // 36
    &showersString, &snowyString, &snowyString, &snowyString, // 40
    &cloudyString, &thunderstromString, &snowyString, &thunderstromString, // 44
    // clang-format on
};

constexpr std::uint32_t codeCount = sizeof wordOfCode / sizeof *wordOfCode;
static_assert(codeCount == 48);

} // namespace

void setConditionWords()
{
    for (const Word& word : words)
        word.variable = word.text();
}

NSString* conditionWord(std::uint32_t code)
{
    return code < codeCount ? *wordOfCode[code] : notAvString;
}
