#include <cstdlib>
#include <gmock/gmock.h>
#include <optional>

#include "simulator/foundation/surroundings.hpp"
#include "tests/calendar/MonthCalendar.hpp"
#include "tests/support/drawn_texts.hpp"

/// The month and the panel's day in the calendars of the world: the region's own, until the user chooses another.

namespace {

using testing::ElementsAre;

struct CalendarSystem {
    const char* name;
    const char* language;
    /// What the user chose; empty for nothing.
    std::string chosen;
    /// Of 15 March 2014.
    std::string day;
    std::string month;
    std::vector<std::string> grid;
    /// The phone's system where it matters; null for the one of the other tests.
    const char* phoneSystem = nullptr;
};

std::ostream& operator<<(std::ostream& stream, const CalendarSystem& system)
{
    return stream << system.language << ' ' << system.chosen;
}

const CalendarSystem systems[] = {
    {"Buddhist",
     "th_TH.UTF-8",
     "",
     "15",
     "2557-3",
     {"(23) (24) (25) (26) (27) (28) 1", "2 3 4 5 6 7 8", "9 10 11 12 13 14 [15]", "16 17 18 19 20 21 22", "23 24 25 26 27 28 29",
      "30 31 (1) (2) (3) (4) (5)"}},
    {"Persian",
     "fa_IR.UTF-8",
     "",
     "24",
     "1392-12",
     {"(26) (27) (28) (29) (30) 1 2", "3 4 5 6 7 8 9", "10 11 12 13 14 15 16", "17 18 19 20 21 22 23", "[24] 25 26 27 28 29 (1)",
      "(2) (3) (4) (5) (6) (7) (8)"}},
    {"UmmAlQura",
     "ar_SA.UTF-8",
     "",
     "14",
     "1435-5",
     {"1 2 3 4 5 6 7", "8 9 10 11 12 13 [14]", "15 16 17 18 19 20 21", "22 23 24 25 26 27 28", "29 30 (1) (2) (3) (4) (5)",
      "(6) (7) (8) (9) (10) (11) (12)"},
     "8.1"},
    {"InSaudiArabiaBeforeUmmAlQura",
     "ar_SA.UTF-8",
     "",
     "15",
     "2014-3",
     {"(23) (24) (25) (26) (27) (28) 1", "2 3 4 5 6 7 8", "9 10 11 12 13 14 [15]", "16 17 18 19 20 21 22", "23 24 25 26 27 28 29",
      "30 31 (1) (2) (3) (4) (5)"},
     "7.1"},
    {"ByKeyword",
     "th_TH.UTF-8@calendar=gregorian",
     "",
     "15",
     "2014-3",
     {"(23) (24) (25) (26) (27) (28) 1", "2 3 4 5 6 7 8", "9 10 11 12 13 14 [15]", "16 17 18 19 20 21 22", "23 24 25 26 27 28 29",
      "30 31 (1) (2) (3) (4) (5)"}},
    {"ChosenOverTheKeyword",
     "de_DE.UTF-8@calendar=buddhist",
     "japanese",
     "15",
     "26-3",
     {"(24) (25) (26) (27) (28) 1 2", "3 4 5 6 7 8 9", "10 11 12 13 14 [15] 16", "17 18 19 20 21 22 23", "24 25 26 27 28 29 30",
      "31 (1) (2) (3) (4) (5) (6)"}},
    {"ChosenOverTheRegion",
     "fa_IR.UTF-8",
     "gregorian",
     "15",
     "2014-3",
     {"1 2 3 4 5 6 7", "8 9 10 11 12 13 14", "[15] 16 17 18 19 20 21", "22 23 24 25 26 27 28", "29 30 31 (1) (2) (3) (4)",
      "(5) (6) (7) (8) (9) (10) (11)"}},
    {"OfTheRepublicOfChina",
     "zh_TW.UTF-8",
     "roc",
     "15",
     "103-3",
     {"(23) (24) (25) (26) (27) (28) 1", "2 3 4 5 6 7 8", "9 10 11 12 13 14 [15]", "16 17 18 19 20 21 22", "23 24 25 26 27 28 29",
      "30 31 (1) (2) (3) (4) (5)"}},
};

} // namespace

class MonthInCalendar : public testing::TestWithParam<CalendarSystem> {
protected:
    MonthInCalendar()
    {
        if (GetParam().phoneSystem != nullptr)
            ::setenv("SOLVANE_SYSTEM", GetParam().phoneSystem, 1);
    }

    void SetUp() override
    {
        phone_.emplace(Region{.language = GetParam().language, .timeZone = "UTC"});
        if (!GetParam().chosen.empty())
            simulator::surroundings().customs.calendar = GetParam().chosen;
    }

private:
    std::optional<RegionalPhone> phone_;
};

TEST_P(MonthInCalendar, IsTheUsersWithItsOwnDays)
{
    const auto calendar = newCalendarOn("2014-03-15");
    EXPECT_EQ(shownMonth(calendar), GetParam().month);
    EXPECT_EQ(gridOf(calendar), GetParam().grid);
}

TEST_P(MonthInCalendar, GivesThePanelItsDay)
{
    noteDrawnTexts();
    setClock("2014-03-15T12:00:00");
    simulator::lockScreen();
    EXPECT_THAT(drawnTexts(), ElementsAre(GetParam().day, ""));
}

INSTANTIATE_TEST_SUITE_P(, MonthInCalendar, testing::ValuesIn(systems), [](const auto& info) { return info.param.name; });

TEST(MonthInEveryCalendar, IsDrawnAndFollowedByAnother)
{
    const RegionalPhone phone;
    for (const std::string& system : simulator::calendarSystems()) {
        simulator::surroundings().customs.calendar = system;
        const auto calendar = newCalendarOn("2014-03-15");
        send<"nextMonth">(calendar.get());
        EXPECT_EQ(subviewsOf(calendar).size(), 49U) << system;
        const auto days = lengthOfShownMonth(calendar);
        EXPECT_TRUE(days >= 28 && days <= 32) << system << ": " << days;
    }
}

TEST(MonthOfAnEra, LiesInThePresentOne)
{
    // In 2014 it is the 26th year of Heisei; Reiwa has no such year yet.
    const RegionalPhone phone;
    simulator::surroundings().customs.calendar = "japanese";
    const auto calendar = newCalendarOn("2016-02-15");
    EXPECT_EQ(shownMonth(calendar), "28-2");
    EXPECT_EQ(lengthOfShownMonth(calendar), 29);
}

// Digits

TEST(WeekdayInOtherDigits, IsReadWhereThePhoneReadsThem)
{
    const RegionalPhone phone({.language = "fa_IR.UTF-8", .timeZone = "UTC"});
    EXPECT_EQ(offsetOfShownMonth(newCalendarOn("2014-03-15")), 5);
}

TEST(WeekdayInOtherDigits, LeadsTheGridWithNoDaysWhereThePhoneReadsASCIIAlone)
{
    const RegionalPhone phone({.language = "fa_IR.UTF-8", .timeZone = "UTC"});
    simulator::surroundings().customs.readsDigitsOfAnyScript = false;
    const auto calendar = newCalendarOn("2014-03-15");
    EXPECT_EQ(offsetOfShownMonth(calendar), -1);
    EXPECT_EQ(gridOf(calendar).front(), "1 2 3 4 5 6 7");
}
