#include <gtest/gtest.h>

#include "tests/support/Console.hpp"

/// The weather sentence as a script sees it.

namespace {

Json sentence(const Console& console, const std::string& weather, const std::string& units = "celsius")
{
    return lineOf(console, "weather " + weather + "\nunits " + units + "\nshow getTempString()\n");
}

} // namespace

TEST(WeatherSentenceInTheConsole, IsTwentyOneAndCloudyOnAFreshPhone)
{
    EXPECT_EQ(lineOf(Console(), "show getTempString()"), "It's 21° C and Cloudy.");
}

TEST(WeatherSentenceInTheConsole, ShowsCelsiusVerbatim)
{
    const Console console;
    EXPECT_EQ(sentence(console, "21.4 26"), "It's 21.4° C and Cloudy.");
    EXPECT_EQ(sentence(console, "21.40 26"), "It's 21.40° C and Cloudy.");
    EXPECT_EQ(sentence(console, "' +007 ' 26"), "It's  +007 ° C and Cloudy.");
}

TEST(WeatherSentenceInTheConsole, ConvertsToFahrenheit)
{
    const Console console;
    EXPECT_EQ(sentence(console, "20 32", "fahrenheit"), "It's 68° F and Sunny.");
    EXPECT_EQ(sentence(console, "21 32", "fahrenheit"), "It's 70° F and Sunny.");
    EXPECT_EQ(sentence(console, "-40 32", "fahrenheit"), "It's -40° F and Sunny.");
}

TEST(WeatherSentenceInTheConsole, RoundsFahrenheitToTheNearestDegree)
{
    const Console console;
    EXPECT_EQ(sentence(console, "21.4 26", "fahrenheit"), "It's 71° F and Cloudy.");
    EXPECT_EQ(sentence(console, "-17.4 26", "fahrenheit"), "It's 1° F and Cloudy.");
    EXPECT_EQ(sentence(console, "-17.6 26", "fahrenheit"), "It's 0° F and Cloudy.");
}

TEST(WeatherSentenceInTheConsole, RoundsHalfADegreeUpAboveZero)
{
    EXPECT_EQ(sentence(Console(), "-17.5 26", "fahrenheit"), "It's 1° F and Cloudy.");
}

TEST(WeatherSentenceInTheConsole, RoundsHalfADegreeDownBelowZero)
{
    EXPECT_EQ(sentence(Console(), "-22.5 26", "fahrenheit"), "It's -9° F and Cloudy."); // -8.5
}

TEST(WeatherSentenceInTheConsole, TakesATextThatIsNoNumberForZero)
{
    const Console console;
    EXPECT_EQ(sentence(console, "mild 26", "fahrenheit"), "It's 32° F and Cloudy.");
    EXPECT_EQ(sentence(console, "mild 26"), "It's mild° C and Cloudy.");
    EXPECT_EQ(sentence(console, "'' 26", "fahrenheit"), "It's 32° F and Cloudy.");
    EXPECT_EQ(sentence(console, "'' 26"), "It's ° C and Cloudy.");
}

TEST(WeatherSentenceInTheConsole, TakesTheNumberAtTheStartOfAText)
{
    EXPECT_EQ(sentence(Console(), "'20 or so' 26", "fahrenheit"), "It's 68° F and Cloudy.");
}

TEST(WeatherSentenceInTheConsole, TakesAPercentSignForItself)
{
    EXPECT_EQ(sentence(Console(), "'%@ %s' 26"), "It's %@ %s° C and Cloudy.");
}

TEST(WeatherSentenceInTheConsole, IsEmptyWithoutACity)
{
    const Console console;
    EXPECT_EQ(sentence(console, "none"), "It's (null)° C and Not Available.");
    EXPECT_EQ(sentence(console, "none", "fahrenheit"), "It's 32° F and Not Available.");
}

TEST(WeatherSentenceInTheConsole, HasAWordForEveryCode)
{
    constexpr const char* words[] = {
        "Not Available", "Storm",   "Hurricane", "Thunderstorm", "Thunderstorm", "Snow",          "Sleet",        "Sleet",
        "Rain",          "Drizzle", "Rain",      "Showers",      "Showers",      "Snow Flurries", "Snow Showers", "Snow",
        "Snow",          "Hail",    "Sleet",     "Dust",         "Fog",          "Haze",          "Smoke",        "Blustery",
        "Wind",          "Cold",    "Cloudy",    "Cloudy",       "Cloudy",       "Cloudy",        "Cloudy",       "Clear",
        "Sunny",         "Fair",    "Fair",      "Hail",         "Hot",          "Thunderstorm",  "Thunderstorm", "Thunderstorm",
        "Showers",       "Snowy",   "Snowy",     "Snowy",        "Cloudy",       "Thunderstorm",  "Snowy",        "Thunderstorm",
    };
    std::string script;
    for (std::size_t code = 0; code < std::size(words); ++code)
        script += "weather 20 " + std::to_string(code) + "\nshow getTempString()\n";
    const auto lines = linesOf(Console(), script);
    ASSERT_EQ(lines.size(), std::size(words));
    for (std::size_t code = 0; code < lines.size(); ++code)
        EXPECT_EQ(lines[code], "It's 20° C and " + std::string(words[code]) + ".") << code;
}

TEST(WeatherSentenceInTheConsole, HasNoWordForOtherCodes)
{
    const Console console;
    for (const char* code : {"48", "49", "3200", "-1", "-26", "2147483647", "-2147483648", "4294967295", "9223372036854775807",
                             "-9223372036854775808"})
        EXPECT_EQ(sentence(console, std::string("20 ") + code), "It's 20° C and Not Available.") << code;
}

TEST(WeatherSentenceInTheConsole, LooksAtTheLow32BitsOfACodeAlone)
{
    EXPECT_EQ(sentence(Console(), "20 4294967322"), "It's 20° C and Cloudy.");
}
