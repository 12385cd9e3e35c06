#include <gtest/gtest.h>

#include "tests/support/Console.hpp"

/// The greeting in other time zones and languages.

namespace {

struct Moment {
    const char* time;
    int bucket;
};

/// Every hour at which the greeting changes, with the minute before it.
constexpr Moment boundaries[] = {
    {"06:59:59", 3}, {"07:00:00", 0}, {"12:59:59", 0}, {"13:00:00", 1}, {"17:59:59", 1},
    {"18:00:00", 2}, {"21:59:59", 2}, {"22:00:00", 3}, {"23:59:59", 3}, {"00:00:00", 3},
};

void expectBoundaries(const Environment& environment, const std::string& day)
{
    static const char* const greetings[] = {"Good morning, Pal.", "Good afternoon, Pal.", "Good evening, Pal.",
                                            "Good night, Pal."};
    Console console;
    for (const auto& [name, value] : environment)
        console.environment[name] = value;
    std::string script;
    for (const Moment& moment : boundaries)
        script += "clock " + day + "T" + moment.time + "\nshow dateStatus()\nshow dateStatusString()\n";
    const auto lines = linesOf(console, script);
    ASSERT_EQ(lines.size(), 2 * std::size(boundaries));
    for (std::size_t i = 0; i < std::size(boundaries); ++i) {
        EXPECT_EQ(lines[2 * i], boundaries[i].bucket) << boundaries[i].time;
        EXPECT_EQ(lines[2 * i + 1], greetings[boundaries[i].bucket]) << boundaries[i].time;
    }
}

/// The bucket at a moment in universal time, in a time zone.
Json bucketAt(const std::string& timeZone, const std::string& universalTime)
{
    // `date` turns the moment into the zone's local time, which is what the console takes.
    const Outcome local = runProgram({"/bin/date", "-d", universalTime + "Z", "+%Y-%m-%dT%H:%M:%S"}, {{"TZ", timeZone}});
    Console console;
    console.environment["TZ"] = timeZone;
    return lineOf(console, "clock " + local.output + "show dateStatus()\n");
}

} // namespace

TEST(GreetingInTimeZones, ChangesAtTheHoursOfUniversalTime)
{
    expectBoundaries({{"TZ", "UTC"}}, "2014-03-05");
}

TEST(GreetingInTimeZones, ChangesAtTheLocalHoursWestOfGreenwich)
{
    expectBoundaries({{"TZ", "America/Los_Angeles"}}, "2014-03-05");
}

TEST(GreetingInTimeZones, ChangesAtTheLocalHoursEastOfGreenwich)
{
    expectBoundaries({{"TZ", "Asia/Tokyo"}}, "2014-12-31");
}

TEST(GreetingInTimeZones, ChangesAtTheLocalHoursHalfAnHourOff)
{
    expectBoundaries({{"TZ", "Asia/Kolkata"}}, "2016-02-29");
}

TEST(GreetingInTimeZones, ChangesAtTheLocalHoursFourteenHoursAhead)
{
    expectBoundaries({{"TZ", "Pacific/Kiritimati"}}, "2014-01-01");
}

TEST(GreetingInTimeZones, ChangesAtTheLocalHoursOfSummerTime)
{
    expectBoundaries({{"TZ", "Europe/Berlin"}}, "2014-07-01");
}

TEST(GreetingInTimeZones, ChangesAtTheLocalHoursOnTheDaySummerTimeBegins)
{
    expectBoundaries({{"TZ", "Europe/Berlin"}}, "2014-03-30");
}

TEST(GreetingInTimeZones, ChangesAtTheLocalHoursOnTheDaySummerTimeEnds)
{
    expectBoundaries({{"TZ", "Europe/Berlin"}}, "2014-10-26");
}

TEST(GreetingInTimeZones, ComesAnHourSoonerOnceSummerTimeHasBegun)
{
    EXPECT_EQ(bucketAt("Europe/Berlin", "2014-03-29T05:30:00"), 3);
    EXPECT_EQ(bucketAt("Europe/Berlin", "2014-03-30T05:30:00"), 0);
}

TEST(GreetingInTimeZones, ComesAnHourLaterOnceSummerTimeHasEnded)
{
    EXPECT_EQ(bucketAt("Europe/Berlin", "2014-10-25T05:30:00"), 0);
    EXPECT_EQ(bucketAt("Europe/Berlin", "2014-10-26T05:30:00"), 3);
}

TEST(GreetingInTimeZones, FollowsTheMachinesClockWhenItIsLive)
{
    Console console;
    console.environment["TZ"] = "Asia/Tokyo";
    const auto run = [&] { return lineOf(console, "clock 2014-03-05T08:00:00\nclock live\nshow dateStatus()\n"); };
    const auto hourNow = [] { return std::stoi(runProgram({"/bin/date", "+%H"}, {{"TZ", "Asia/Tokyo"}}).output); };
    const auto bucket = [](int hour) {
        if (hour < 7 || hour >= 22)
            return 3;
        if (hour < 13)
            return 0;
        return hour < 18 ? 1 : 2;
    };
    const int before = bucket(hourNow());
    const int shown = run();
    const int after = bucket(hourNow());
    EXPECT_TRUE(shown == before || shown == after) << shown;
}

// The hour is that of the Gregorian calendar whatever calendar the language has.

TEST(GreetingInLanguages, KeepsItsHoursInPersian)
{
    expectBoundaries({{"LANG", "fa_IR.UTF-8"}, {"LC_ALL", "fa_IR.UTF-8"}}, "2014-03-05");
}

TEST(GreetingInLanguages, KeepsItsHoursInThai)
{
    expectBoundaries({{"LANG", "th_TH.UTF-8"}, {"LC_ALL", "th_TH.UTF-8"}}, "2014-03-05");
}

TEST(GreetingInLanguages, KeepsItsHoursInArabic)
{
    expectBoundaries({{"LANG", "ar_SA.UTF-8"}, {"LC_ALL", "ar_SA.UTF-8"}}, "2014-03-05");
}
