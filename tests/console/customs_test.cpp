#include <gmock/gmock.h>

#include "tests/support/Console.hpp"

/// What the phone's user chose about dates and numbers, said by the console.

namespace {

using testing::ElementsAre;
using testing::StartsWith;

struct ConsoleIn : Console {
    explicit ConsoleIn(const std::string& language) { environment["LANG"] = environment["LC_ALL"] = language; }
};

const std::string morning = "clock 2014-03-15T08:30:00\n";
const std::string newCalendar = "let cal send APLCalendar alloc\nlet cal send cal init\n";
const std::string shownYear = newCalendar + "show cal._year\n";

} // namespace

TEST(CalendarCommand, ChoosesTheUsersCalendarAndTheRegionsAgain)
{
    EXPECT_THAT(linesOf(ConsoleIn("th_TH.UTF-8"), morning + shownYear + "calendar gregorian\n" + shownYear +
                                                      "calendar persian\n" + shownYear + "calendar region\n" + shownYear),
                ElementsAre(2557, 2014, 1392, 2557));
}

TEST(CalendarCommand, RefusesACalendarThatThereIsNot)
{
    const ConsoleRun run = Console().run("calendar mayan\n");
    EXPECT_THAT(run.errors, StartsWith("line 1: there is no calendar \"mayan\": write one of region, gregorian, "));
    EXPECT_EQ(run.status, 2);
}

TEST(HoursCommand, RewritesThePatternsOfDates)
{
    const std::string text = "send cal getStringFromDate: @NSDate.date\n";
    EXPECT_THAT(linesOf(ConsoleIn("en_US.UTF-8"),
                        morning + newCalendar + text + "hours 12\n" + text + "hours 24\n" + text + "hours region\n" + text),
                ElementsAre("15 Mar 2014, 08:30", "15 Mar 2014, 08:30 AM", "15 Mar 2014, 08:30", "15 Mar 2014, 08:30"));
}

TEST(HoursCommand, SetsTheStockClock)
{
    const std::string time = "lock\nshow lockScreenView.subviews[1].subviews[0].text\n";
    EXPECT_THAT(linesOf(Console(), "clock 2014-03-15T18:30:00\n" + time + "hours 12\n" + time), ElementsAre("18:30", "6:30"));
}

TEST(HoursCommand, RefusesOtherHours)
{
    EXPECT_EQ(Console().run("hours 10\n").errors, "line 1: expected 12 or 24 or region, not \"10\"\n");
}

TEST(DigitsCommand, DecidesWhetherOtherDigitsThanASCIIAreRead)
{
    const std::string offset = "send cal getOffsetDays\n";
    EXPECT_THAT(
        linesOf(ConsoleIn("ar_EG.UTF-8"), morning + newCalendar + offset + "digits ascii\n" + offset + "digits any\n" + offset),
        ElementsAre(7, -1, 7));
}

TEST(Customs, OutliveARelaunch)
{
    const std::string script = newCalendar + "show cal._year\nsend cal getStringFromDate: @NSDate.date\nsend cal getOffsetDays\n";
    EXPECT_THAT(
        linesOf(ConsoleIn("ar_EG.UTF-8"), morning + "calendar coptic\nhours 12\ndigits ascii\npost RespringSV\n" + script),
        ElementsAre(1730, testing::HasSubstr("٠٨:٣٠ ص"), -1));
}
