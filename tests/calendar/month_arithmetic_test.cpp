#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <gmock/gmock.h>
#include <ranges>
#include <sstream>

#include "platform/Foundation/NSDate.hpp"
#include "simulator/runtime/SimulatedClass.hpp"
#include "tests/calendar/MonthCalendar.hpp"

/// How long a month is, on which column it begins, and how one month follows another.

namespace {

using std::chrono::sys_days;
using std::chrono::weekday;
using testing::ElementsAre;

constexpr int firstYear = 1900;
constexpr int lastYear = 2100;

NSInteger lengthOf(int year, int month)
{
    const bool isLeapYear = year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
    constexpr NSInteger lengths[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    return month == 2 && isLeapYear ? 29 : lengths[month - 1];
}

/// The place of the month's 1st in a week that begins on `firstDay`, from 1 to 7, as an offset: 7 stands for none.
NSInteger offsetOf(int year, int month, weekday firstDay)
{
    const weekday first(sys_days(std::chrono::year(year) / month / 1));
    const auto daysIntoTheWeek = (first - firstDay).count();
    return daysIntoTheWeek == 0 ? 7 : daysIntoTheWeek;
}

template <class Visit>
void forEachMonth(int from, int to, Visit visit)
{
    for (int year = from; year <= to; ++year) {
        const AutoreleasePool pool;
        for (int month = 1; month <= 12; ++month)
            visit(year, month);
    }
}

void step(UIView* calendar, const char* selectorName)
{
    send<"performSelector:", id>(calendar, sel_registerName(selectorName));
}

std::string monthAfter(UIView* calendar, const char* selectorName, NSInteger year, NSInteger month)
{
    setMonth(calendar, year, month);
    step(calendar, selectorName);
    return shownMonth(calendar);
}

} // namespace

// Steps

using MonthStep = TestOn<RegionalPhone>;

TEST_F(MonthStep, ForwardGoesToTheNextMonth)
{
    const auto calendar = newCalendar();
    for (NSInteger month = 1; month < 12; ++month)
        EXPECT_EQ(monthAfter(calendar, "goOneMonthForward", 2014, month), "2014-" + std::to_string(month + 1));
}

TEST_F(MonthStep, ForwardGoesFromDecemberToJanuaryOfTheNextYear)
{
    EXPECT_EQ(monthAfter(newCalendar(), "goOneMonthForward", 2014, 12), "2015-1");
}

TEST_F(MonthStep, ForwardTakesAMonthAfterDecemberForDecember)
{
    EXPECT_EQ(monthAfter(newCalendar(), "goOneMonthForward", 2014, 13), "2015-1");
}

TEST_F(MonthStep, BackGoesToThePreviousMonth)
{
    const auto calendar = newCalendar();
    for (NSInteger month = 2; month <= 12; ++month)
        EXPECT_EQ(monthAfter(calendar, "goOneMonthBack", 2014, month), "2014-" + std::to_string(month - 1));
}

TEST_F(MonthStep, BackGoesFromJanuaryToDecemberOfThePreviousYear)
{
    EXPECT_EQ(monthAfter(newCalendar(), "goOneMonthBack", 2014, 1), "2013-12");
}

TEST_F(MonthStep, BackTakesAMonthBeforeJanuaryForJanuary)
{
    EXPECT_EQ(monthAfter(newCalendar(), "goOneMonthBack", 2014, 0), "2013-12");
}

TEST_F(MonthStep, ByAYearLeavesTheMonthAsItIs)
{
    const auto calendar = newCalendar();
    EXPECT_EQ(monthAfter(calendar, "goOneYearForward", 2015, 2), "2016-2");
    EXPECT_EQ(monthAfter(calendar, "goOneYearBack", 2015, 2), "2014-2");
}

TEST_F(MonthStep, KnowsNoFirstAndNoLastYear)
{
    const auto calendar = newCalendar();
    EXPECT_EQ(monthAfter(calendar, "goOneYearBack", 1, 6), "0-6");
    EXPECT_EQ(monthAfter(calendar, "goOneYearBack", 0, 6), "-1-6");
    EXPECT_EQ(monthAfter(calendar, "goOneMonthBack", 1, 1), "0-12");
    EXPECT_EQ(monthAfter(calendar, "goOneYearForward", 9999, 6), "10000-6");
    EXPECT_EQ(monthAfter(calendar, "goOneMonthForward", 99999, 12), "100000-1");
}

TEST_F(MonthStep, DrawsNothing)
{
    const auto calendar = newCalendarOn("2014-03-15");
    const auto drawn = subviewsOf(calendar);
    for (const char* name : {"goOneMonthForward", "goOneMonthBack", "goOneYearForward", "goOneYearBack"})
        step(calendar, name);
    EXPECT_EQ(subviewsOf(calendar), drawn);
}

TEST(MonthNavigation, StepsByAMonthOrAYear)
{
    const RegionalPhone phone;
    const auto calendar = newCalendarOn("2014-03-15");
    EXPECT_EQ(monthAfter(calendar, "nextMonth", 2014, 12), "2015-1");
    EXPECT_EQ(monthAfter(calendar, "prevMonth", 2014, 1), "2013-12");
    EXPECT_EQ(monthAfter(calendar, "nextYear", 2014, 5), "2015-5");
    EXPECT_EQ(monthAfter(calendar, "prevYear", 2014, 5), "2013-5");
}

TEST(MonthNavigation, ForwardAndBackEndsWhereItBegan)
{
    const RegionalPhone phone(german);
    const auto calendar = newCalendarOn("2014-03-15");
    const auto drawn = subviewsOf(calendar);
    const auto grid = gridOf(calendar);
    for (const auto& [there, back] : {std::pair("nextMonth", "prevMonth"), std::pair("prevYear", "nextYear")}) {
        step(calendar, there);
        EXPECT_NE(gridOf(calendar), grid);
        step(calendar, back);
        EXPECT_EQ(shownMonth(calendar), "2014-3");
        EXPECT_EQ(gridOf(calendar), grid);
    }
    for (UIView* old : drawn)
        EXPECT_THAT(subviewsOf(calendar), testing::Not(testing::Contains(old))) << "the view is drawn anew";
}

TEST(MonthNavigation, DrawsAWholeMonthInYearsOutOfTheOrdinary)
{
    const RegionalPhone phone;
    const auto calendar = newCalendarOn("2014-03-15");
    // Where words have 32 bits, the desk's dates end with the year 4000.
    constexpr bool hasWideWords = sizeof(NSInteger) > 4;
    for (const NSInteger year : {1, 999, 1582, hasWideWords ? 9999 : 3999, hasWideWords ? 20000 : 4000}) {
        setMonth(calendar, year, 5);
        step(calendar, "nextMonth");
        EXPECT_EQ(subviewsOf(calendar).size(), 49U) << year;
        EXPECT_EQ(lengthOfShownMonth(calendar), 30) << year;
    }
}

// Lengths

TEST(MonthLength, OfFebruaryFollowsTheLeapYears)
{
    const RegionalPhone phone;
    const auto calendar = newCalendar();
    for (const auto& [year, days] : {std::pair(2016, 29), std::pair(2015, 28), std::pair(2000, 29), std::pair(1900, 28),
                                     std::pair(2100, 28), std::pair(2096, 29)}) {
        setMonth(calendar, year, 2);
        EXPECT_EQ(lengthOfShownMonth(calendar), days) << year;
    }
}

TEST(MonthLength, LeavesWhatIsShownAsItIs)
{
    const RegionalPhone phone;
    const auto calendar = newCalendarOn("2014-03-15");
    lengthOfShownMonth(calendar);
    offsetOfShownMonth(calendar);
    EXPECT_EQ(shownMonth(calendar), "2014-3");
    EXPECT_EQ(variable(calendar, "_day"), 15);
}

class MonthLengthOnDay : public testing::TestWithParam<const char*> {};

TEST_P(MonthLengthOnDay, IsRightInEveryMonth)
{
    const RegionalPhone phone;
    const auto calendar = newCalendarOn(GetParam());
    forEachMonth(firstYear, lastYear, [&](int year, int month) {
        setMonth(calendar, year, month);
        ASSERT_EQ(lengthOfShownMonth(calendar), lengthOf(year, month)) << year << '-' << month;
    });
}

INSTANTIATE_TEST_SUITE_P(OfCreation, MonthLengthOnDay,
                         testing::Values("2014-01-01", "2014-01-15", "2014-01-28", "2014-01-29", "2014-01-30", "2014-01-31",
                                         "2016-02-29"),
                         [](const auto& info) {
                             std::string name = info.param;
                             std::erase(name, '-');
                             return "On" + name;
                         });

TEST(MonthLength, CountsThePreviousMonthFromTheLastDayOfALongerOne)
{
    const RegionalPhone phone(german);
    // A day that February lacks; its last days lead March's grid.
    const auto calendar = newCalendarOn("2014-03-31");
    EXPECT_EQ(gridOf(calendar).front(), "(24) (25) (26) (27) (28) 1 2");
}

// Offsets

namespace {

struct Week {
    const char* name;
    const char* language;
    weekday firstDay;
};

std::ostream& operator<<(std::ostream& stream, const Week& week)
{
    return stream << week.language;
}

} // namespace

class MonthOffsetInLocale : public testing::TestWithParam<Week> {};

TEST_P(MonthOffsetInLocale, IsThatOfTheLocalesOwnWeekInEveryMonth)
{
    const RegionalPhone phone({.language = GetParam().language, .timeZone = "UTC"});
    const auto calendar = newCalendar();
    forEachMonth(firstYear, lastYear, [&](int year, int month) {
        setMonth(calendar, year, month);
        ASSERT_EQ(offsetOfShownMonth(calendar), offsetOf(year, month, GetParam().firstDay)) << year << '-' << month;
        ASSERT_EQ(lengthOfShownMonth(calendar), lengthOf(year, month)) << year << '-' << month;
    });
}

INSTANTIATE_TEST_SUITE_P(
    In, MonthOffsetInLocale,
    testing::Values(Week{"American", "en_US.UTF-8", std::chrono::Sunday}, Week{"German", "de_DE.UTF-8", std::chrono::Monday},
                    Week{"Egyptian", "ar_EG.UTF-8", std::chrono::Saturday},
                    Week{"Persian", "fa_IR.UTF-8@calendar=gregorian", std::chrono::Saturday},
                    Week{"Australian", "en_AU.UTF-8", std::chrono::Sunday}, Week{"Algerian", "fr_DZ.UTF-8", std::chrono::Monday},
                    Week{"Bengali", "bn_BD.UTF-8", std::chrono::Friday}, Week{"Plain", "C", std::chrono::Sunday}),
    [](const auto& info) { return info.param.name; });

TEST(MonthOffset, OfMarch2014IsFiveInAWeekFromMonday)
{
    const RegionalPhone phone(german);
    EXPECT_EQ(offsetOfShownMonth(newCalendarOn("2014-03-15")), 5);
}

TEST(MonthOffset, OfAMonthThatBeginsWithTheWeekIsSeven)
{
    const RegionalPhone phone(german);
    EXPECT_EQ(offsetOfShownMonth(newCalendarOn("2015-06-15")), 7);
}

TEST(MonthOffset, IsMinusOneWhenTheWeekdayCannotBeRead)
{
    const RegionalPhone phone;
    const auto calendar = newCalendarOn("2014-03-15");
    simulator::replaceMethod<"stringFromDate:">(
        objc_getClass("NSDateFormatter"), +[](NSObject*, SEL, NSDate*) { return constantString<"x">(); });
    EXPECT_EQ(offsetOfShownMonth(calendar), -1);
}

TEST(MonthOffset, ThatCannotBeReadLeadsTheGridWithNoDays)
{
    const RegionalPhone phone(german);
    const auto calendar = newCalendarOn("2014-03-15");
    simulator::replaceMethod<"stringFromDate:">(
        objc_getClass("NSDateFormatter"), +[](NSObject*, SEL, NSDate*) { return constantString<"x">(); });
    showMonth(calendar, 2014, 3);
    EXPECT_THAT(gridOf(calendar),
                ElementsAre("1 2 3 4 5 6 7", "8 9 10 11 12 13 14", "[15] 16 17 18 19 20 21", "22 23 24 25 26 27 28",
                            "29 30 31 (1) (2) (3) (4)", "(5) (6) (7) (8) (9) (10) (11)"));
}

TEST(MonthOffset, AsksForTheWeekdayInTheLocalesOwnCount)
{
    const RegionalPhone phone;
    static std::vector<std::string> questions;
    static void (*setFormat)(NSObject*, SEL, NSString*);
    static void (*setBehavior)(NSObject*, SEL, NSUInteger);
    const auto calendar = newCalendar();
    const Class formatter = objc_getClass("NSDateFormatter");
    setFormat = simulator::replaceMethod<"setDateFormat:">(
        formatter, +[](NSObject* self, SEL name, NSString* format) {
            questions.push_back(textOf(format));
            setFormat(self, name, format);
        });
    setBehavior = simulator::replaceMethod<"setFormatterBehavior:">(
        formatter, +[](NSObject* self, SEL name, NSUInteger behavior) {
            questions.push_back("behaviour " + std::to_string(behavior));
            setBehavior(self, name, behavior);
        });
    offsetOfShownMonth(calendar);
    EXPECT_THAT(questions, ElementsAre("dd-MM-yyyy", "behaviour 1040", "e"));
}

// Midnights that a clock change leaves out

namespace {

/// Has the phone's clocks go by other rules, written as in TZ.
void moveTo(const std::string& timeZone)
{
    ::setenv("TZ", timeZone.c_str(), 1);
    ::tzset();
}

/// Whether the clocks show the midnight with which the day begins, as the C library knows it.
bool hasMidnight(int year, int month, int day)
{
    std::tm midnight{};
    midnight.tm_year = year - 1900;
    midnight.tm_mon = month - 1;
    midnight.tm_mday = day;
    midnight.tm_isdst = -1;
    ::mktime(&midnight);
    return midnight.tm_hour == 0 && midnight.tm_min == 0 && midnight.tm_mday == day;
}

/// A 1st without midnight is no date, so its weekday cannot be read.
NSInteger expectedOffset(int year, int month)
{
    return hasMidnight(year, month, 1) ? offsetOf(year, month, std::chrono::Monday) : -1;
}

/// The time zones that have differed since 1970.
std::vector<std::string> timeZones()
{
    std::vector<std::string> names;
    std::ifstream table("/usr/share/zoneinfo/zone1970.tab");
    for (std::string line; std::getline(table, line);) {
        if (line.starts_with('#'))
            continue;
        std::istringstream columns(line);
        std::string countries;
        std::string place;
        std::string name;
        columns >> countries >> place >> name;
        names.push_back(name);
    }
    return names;
}

/// Whether the clocks are changed in the month, or near it.
bool hasClockChange(int year, int month)
{
    const auto offsetOn = [](std::chrono::sys_days day) {
        const std::time_t moment = std::chrono::system_clock::to_time_t(day);
        std::tm shown{};
        ::localtime_r(&moment, &shown);
        return shown.tm_gmtoff;
    };
    const sys_days first(std::chrono::year(year) / month / 1);
    const auto offset = offsetOn(first - std::chrono::days(1));
    return std::ranges::any_of(std::views::iota(0, 6),
                               [&](int week) { return offsetOn(first + std::chrono::weeks(week)) != offset; });
}

std::vector<int> daysWithoutMidnight(int year, int month)
{
    std::vector<int> days;
    for (int day = 1; hasClockChange(year, month) && day <= lengthOf(year, month); ++day) {
        if (!hasMidnight(year, month, day))
            days.push_back(day);
    }
    return days;
}

/// Every month from 2000 to 2037 where the phone is: on every day of creation if the month lacks a midnight, and on one if
/// it is like any other. Gives how many lack one.
int expectEveryMonthRight(UIView* calendar, const std::string& place)
{
    int months = 0;
    forEachMonth(2000, 2037, [&](int year, int month) {
        setMonth(calendar, year, month);
        const bool isOrdinary = daysWithoutMidnight(year, month).empty();
        // What is ordinary is the same everywhere: a year of it will do.
        if (isOrdinary && year != 2014)
            return;
        months += isOrdinary ? 0 : 1;
        for (const int day : isOrdinary ? std::views::iota(15, 16) : std::views::iota(1, 32)) {
            variable(calendar, "_day") = day;
            ASSERT_EQ(lengthOfShownMonth(calendar), lengthOf(year, month)) << place << ' ' << year << '-' << month << ", " << day;
        }
        ASSERT_EQ(offsetOfShownMonth(calendar), expectedOffset(year, month)) << place << ' ' << year << '-' << month;
    });
    return months;
}

} // namespace

TEST(MonthWithoutSomeMidnights, IsAsLongInEveryTimeZoneAsElsewhere)
{
    const RegionalPhone phone(german);
    const auto calendar = newCalendarOn("2014-01-15");
    const auto names = timeZones();
    ASSERT_GT(names.size(), 250U);
    int months = 0;
    for (const std::string& name : names) {
        moveTo(name);
        months += expectEveryMonthRight(calendar, name);
    }
    EXPECT_GT(months, 100);
}

TEST(MonthWithoutSomeMidnights, IsAsLongByRulesThatNeverChangeAgain)
{
    const RegionalPhone phone(german);
    const auto calendar = newCalendarOn("2014-01-15");
    // The rules of Brazil, Paraguay, Cuba, Lebanon, Syria and Iran in 2014.
    for (const char* rules : {"<-03>3<-02>,M10.3.0/0,M2.3.0/0", "<-04>4<-03>,M10.1.0/0,M3.4.0/0", "CST5CDT,M3.2.0/0,M11.1.0/1",
                              "EET-2EEST,M3.5.0/0,M10.5.0/0", "EET-2EEST,M3.5.5/0,M10.5.5/0", "<+0330>-3:30<+0430>,80/0,264/0"}) {
        moveTo(rules);
        EXPECT_EQ(expectEveryMonthRight(calendar, rules), 38) << rules;
    }
}

class MonthWithoutItsFirstMidnight : public testing::TestWithParam<const char*> {};

TEST_P(MonthWithoutItsFirstMidnight, IsAsLongAsElsewhereAndHasNoFirstWeekday)
{
    const RegionalPhone phone({.language = "de_DE.UTF-8", .timeZone = GetParam()});
    const auto calendar = newCalendarOn("2014-01-15");
    forEachMonth(firstYear, lastYear, [&](int year, int month) {
        setMonth(calendar, year, month);
        ASSERT_EQ(offsetOfShownMonth(calendar), expectedOffset(year, month)) << year << '-' << month;
        ASSERT_EQ(lengthOfShownMonth(calendar), lengthOf(year, month)) << year << '-' << month;
    });
}

INSTANTIATE_TEST_SUITE_P(In, MonthWithoutItsFirstMidnight,
                         testing::Values("America/Asuncion", "America/Havana", "America/Sao_Paulo", "Africa/Cairo", "Asia/Amman",
                                         "Asia/Beirut", "Asia/Damascus", "Asia/Taipei", "Antarctica/Casey", "Pacific/Kwajalein"),
                         [](const auto& info) {
                             std::string name = info.param;
                             std::erase_if(name, [](char letter) { return letter == '/' || letter == '_'; });
                             return name;
                         });

TEST(MonthDrawnWithoutItsFirstMidnight, BeginsWithItsFirstDayAndHasNoTitle)
{
    // On 1 October 2017, a Sunday, clocks in Asunción went from 23:59:59 to 01:00:00.
    const RegionalPhone phone({.language = "de_DE.UTF-8", .timeZone = "America/Asuncion"});
    const auto calendar = newCalendarOn("2017-10-15");
    EXPECT_EQ(gridOf(calendar).front(), "1 2 3 4 5 6 7");
    EXPECT_EQ(textOf(variable<UILabel*>(calendar, "lblMonth")->text()), "nil");
}

TEST(MonthOfADayWithoutMidnight, IsDrawnAsAnyOther)
{
    // On 4 November 2018 clocks in São Paulo went from 23:59:59 to 01:00:00.
    const RegionalPhone phone({.language = "de_DE.UTF-8", .timeZone = "America/Sao_Paulo"});
    const auto calendar = newCalendarOn("2018-11-04");
    EXPECT_EQ(gridOf(calendar).front(), "(29) (30) (31) 1 2 3 [4]");
    EXPECT_EQ(textOf(variable<UILabel*>(calendar, "lblMonth")->text()), "November 2018");
}
