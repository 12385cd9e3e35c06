#include <gmock/gmock.h>

#include "tests/support/Console.hpp"

/// TZ in all its forms: the C library and the phone's Foundation count alike, or the phone does not start.

namespace {

/// What the C library shows at a moment, and what Foundation does.
class InTimeZone : public testing::TestWithParam<const char*> {};

constexpr const char* moments[] = {"2014-01-15T11:30:00", "2014-07-15T11:30:00", "2014-03-30T00:59:59",
                                   "2014-03-30T01:00:00", "1994-07-15T11:30:00", "2036-07-15T11:30:00"};

std::string shownByCLibrary(const std::string& timeZone, const std::string& universalTime)
{
    return runProgram({"/bin/date", "-d", universalTime + "Z", "+%Y-%m-%d %H:%M:%S %z"}, {{"TZ", timeZone}}).output;
}

} // namespace

TEST_P(InTimeZone, FoundationCountsAsTheCLibraryDoes)
{
    Console console;
    console.environment["TZ"] = GetParam();
    for (const char* moment : moments) {
        const std::string shown = shownByCLibrary(GetParam(), moment);
        const std::string clock = shown.substr(0, 10) + 'T' + shown.substr(11, 8);
        const auto lines = linesOf(console, "clock " + clock + "\n" +
                                                "show NSDate.date.description\n"
                                                "let f send NSDateFormatter alloc\nlet f send f init\n"
                                                "send f setDateFormat: 'yyyy-MM-dd HH:mm:ss Z'\n"
                                                "send f stringFromDate: @NSDate.date\n"
                                                "send NSCalendar.currentCalendar components:fromDate: 32 @NSDate.date\n"
                                                "let u send NSCalendar.currentCalendar components:fromDate: 32 @NSDate.date\n"
                                                "show u.hour\n");
        ASSERT_EQ(lines.size(), 5U);
        EXPECT_EQ(lines[0].get<std::string>() + '\n', shown) << moment;
        EXPECT_EQ(lines[2].get<std::string>() + '\n', shown) << moment;
        EXPECT_EQ(lines[4], std::stoi(shown.substr(11, 2))) << moment;
    }
}

INSTANTIATE_TEST_SUITE_P(, InTimeZone,
                         testing::Values("CET-1CEST,M3.5.0,M10.5.0/3", "JST-9", "<-03>3", "<+0330>-3:30", "EST5EDT", "GMT+5",
                                         "NZST-12NZDT,M9.5.0,M4.1.0/3", "UTC0", "", ":", ":Asia/Tokyo", "Asia/Kolkata",
                                         "posix/Europe/Berlin", "/usr/share/zoneinfo/America/New_York",
                                         ":/usr/share/zoneinfo/Australia/Lord_Howe", "IST-2IDT,M3.4.4/26,M10.5.0",
                                         "<-02>2<-01>,M3.5.0/-1,M10.5.0/0", "Etc/GMT+3"),
                         [](const auto& info) {
                             std::string name = "Number" + std::to_string(info.index);
                             for (const char letter : std::string(info.param)) {
                                 if (std::isalnum(static_cast<unsigned char>(letter)) != 0)
                                     name += letter;
                             }
                             return name;
                         });

TEST(TimeZone, ThatTheMachineHasIsTheOneWithoutTZ)
{
    Console console;
    console.environment.erase("TZ");
    const std::string script = "clock 2014-07-15T12:00:00\nshow NSDate.date\n";
    const Outcome machines =
        runProgram({"/usr/bin/env", "-u", "TZ", "/bin/date", "-u", "-d", "TZ=\"\" 2014-07-15 12:00", "+%H"}, {});
    EXPECT_EQ(lineOf(console, script).get<std::string>().substr(11, 2), machines.output.substr(0, 2));
}

TEST(TimeZone, KnownToFoundationAloneIsTaken)
{
    Console console;
    console.environment["TZ"] = "PST";
    EXPECT_EQ(lineOf(console, "clock 2014-07-05T12:30:00\nshow NSDate.date\n"), "2014-07-05T19:30:00Z");
}

TEST(TimeZone, ThatNobodyKnowsIsRefusedInOneLine)
{
    for (const char* unknown : {"Nowhere/At_All", "CET-1CEST,M13.5.0,M10.5.0", "/etc/passwd", "/usr/share/zoneinfo", "X-1",
                                "CET-99", "../../../etc/passwd"}) {
        Console console;
        console.environment["TZ"] = unknown;
        const ConsoleRun run = console.run("show dateStatus()\n");
        EXPECT_EQ(run.errors, "springboard: TZ: \"" + std::string(unknown) + "\" is no time zone that is known here\n");
        EXPECT_EQ(run.output, "");
        EXPECT_EQ(run.status, 2);
    }
}

TEST(LocalTimeOfTheConsole, ThatTheClocksSkipIsReadByTheOffsetBefore)
{
    Console console;
    console.environment["TZ"] = "Europe/Berlin";
    EXPECT_EQ(lineOf(console, "clock 2014-03-30T02:30:00\nshow NSDate.date\n"), "2014-03-30T01:30:00Z");
}

TEST(LocalTimeOfTheConsole, ThatTheClocksShowTwiceIsTheFirst)
{
    Console console;
    console.environment["TZ"] = "Europe/Berlin";
    EXPECT_EQ(lineOf(console, "clock 2014-10-26T02:30:00\nshow NSDate.date\n"), "2014-10-26T00:30:00Z");
}
