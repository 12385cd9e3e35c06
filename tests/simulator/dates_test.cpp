#include <gmock/gmock.h>

#include "platform/Foundation/NSCalendar.hpp"
#include "platform/Foundation/NSDateFormatter.hpp"
#include "platform/Foundation/NSLocale.hpp"
#include "simulator/foundation/surroundings.hpp"
#include "simulator/foundation/system_log.hpp"
#include "tests/calendar/MonthCalendar.hpp"

/// Dates as the phone's Foundation reads and writes them.

namespace {

using testing::ElementsAre;

Owned<NSDateFormatter> formatter(const std::string& pattern)
{
    Owned<NSDateFormatter> made = adopt(NSDateFormatter::alloc()->init());
    made->setDateFormat(text(pattern));
    return made;
}

NSDate* read(const std::string& pattern, const std::string& date)
{
    return formatter(pattern)->dateFromString(text(date));
}

std::string written(const std::string& pattern, NSDate* date)
{
    return textOf(formatter(pattern)->stringFromDate(date));
}

/// "nil" for nil.
std::string reread(const std::string& pattern, const std::string& date)
{
    NSDate* const moment = read(pattern, date);
    return moment == nullptr ? "nil" : written("yyyy-MM-dd HH:mm:ss", moment);
}

template <FixedString Name>
NSInteger unit(NSDateComponents* units)
{
    return send<Name, NSInteger>(units);
}

std::string localeOf(const Region& region)
{
    const RegionalPhone phone(region);
    return textOf(send<"localeIdentifier", NSString*>(NSLocale::currentLocale()));
}

} // namespace

// Reading

TEST(DateReading, TakesNumbersWithoutLeadingZeros)
{
    const RegionalPhone phone;
    EXPECT_EQ(reread("dd-MM-yyyy", "5-3-2014"), "2014-03-05 00:00:00");
    EXPECT_EQ(reread("dd-MM-yyyy", "05-03-2014"), "2014-03-05 00:00:00");
    EXPECT_EQ(reread("MM yyyy", "3 2014"), "2014-03-01 00:00:00");
    EXPECT_EQ(reread("dd-MM-yyyy", "5-3-999"), "0999-03-05 00:00:00");
}

TEST(DateReading, IsNilForADayThatTheMonthLacks)
{
    const RegionalPhone phone;
    EXPECT_EQ(reread("dd-MM-yyyy", "31-4-2014"), "nil");
    EXPECT_EQ(reread("dd-MM-yyyy", "29-2-2015"), "nil");
    EXPECT_EQ(reread("dd-MM-yyyy", "29-2-2016"), "2016-02-29 00:00:00");
    EXPECT_EQ(reread("dd-MM-yyyy", "32-1-2014"), "nil");
    EXPECT_EQ(reread("dd-MM-yyyy", "1-13-2014"), "nil");
    EXPECT_EQ(reread("dd-MM-yyyy", "0-1-2014"), "nil");
}

TEST(DateReading, IsNilForAMidnightThatAClockChangeLeavesOut)
{
    const RegionalPhone phone({.language = "en_US.UTF-8", .timeZone = "America/Sao_Paulo"});
    EXPECT_EQ(reread("dd-MM-yyyy", "4-11-2018"), "nil");
    EXPECT_EQ(reread("dd-MM-yyyy", "3-11-2018"), "2018-11-03 00:00:00");
    EXPECT_EQ(reread("dd-MM-yyyy", "5-11-2018"), "2018-11-05 00:00:00");
    EXPECT_EQ(reread("dd-MM-yyyy HH:mm", "4-11-2018 01:00"), "2018-11-04 01:00:00");
}

TEST(DateReading, IsNilForADayThatAClockChangeLeavesOut)
{
    const RegionalPhone phone({.language = "en_US.UTF-8", .timeZone = "Pacific/Apia"});
    EXPECT_EQ(reread("dd-MM-yyyy", "30-12-2011"), "nil");
    EXPECT_EQ(reread("dd-MM-yyyy", "31-12-2011"), "2011-12-31 00:00:00");
}

TEST(DateReading, TakesTheLastOfTwoTimesThatTheClockShows)
{
    const RegionalPhone phone({.language = "en_US.UTF-8", .timeZone = "Europe/Berlin"});
    EXPECT_EQ(textOf(read("dd-MM-yyyy HH:mm", "26-10-2014 02:30")), "2014-10-26 02:30:00 +0100");
}

TEST(DateReading, IsNilForWhatDoesNotFollowThePattern)
{
    const RegionalPhone phone;
    for (const char* wrong : {"", "x", "5", "5-3", "5/3/2014", "5-3-2014 and more", "5-3--2014", "five-3-2014"})
        EXPECT_EQ(reread("dd-MM-yyyy", wrong), "nil") << wrong;
    EXPECT_EQ(formatter("dd-MM-yyyy")->dateFromString(nullptr), nullptr);
}

// Writing

TEST(DateWriting, IsNilForNil)
{
    const RegionalPhone phone;
    EXPECT_EQ(formatter("d MMM yyyy")->stringFromDate(nullptr), nullptr);
}

TEST(DateWriting, OfNoDateGivesTheCalendarNoText)
{
    const RegionalPhone phone;
    NSString* const text = send<"getStringFromDate:", NSString*>(newCalendar().get(), static_cast<NSDate*>(nullptr));
    EXPECT_EQ(text, nullptr);
}

TEST(DateWriting, FollowsStylesWhereThereIsNoPattern)
{
    const RegionalPhone phone(german);
    setClock("2014-03-05T08:30:00");
    const auto styled = adopt(NSDateFormatter::alloc()->init());
    send<"setDateStyle:">(styled.get(), NSUInteger{3});
    EXPECT_EQ(textOf(styled->stringFromDate(NSDate::date())), "5. März 2014");
    send<"setTimeStyle:">(styled.get(), NSUInteger{1});
    EXPECT_THAT(textOf(styled->stringFromDate(NSDate::date())), testing::HasSubstr("08:30"));
}

// The user's hours

namespace {

std::string atHalfPastTwo(const std::string& pattern, simulator::Hours hours)
{
    simulator::surroundings().customs.hours = hours;
    setClock("2014-03-05T14:30:15");
    return written(pattern, NSDate::date());
}

} // namespace

TEST(HoursOfPatterns, AreThoseWrittenUntilTheUserChooses)
{
    const RegionalPhone phone;
    EXPECT_EQ(atHalfPastTwo("HH:mm", simulator::Hours::asTheRegion), "14:30");
    EXPECT_EQ(atHalfPastTwo("h:mm a", simulator::Hours::asTheRegion), "2:30 PM");
}

TEST(HoursOfPatterns, BecomeTwelveWithTheHalfOfTheDay)
{
    const RegionalPhone phone;
    const auto twelve = simulator::Hours::twelve;
    EXPECT_EQ(atHalfPastTwo("HH:mm", twelve), "02:30 PM");
    EXPECT_EQ(atHalfPastTwo("d MMM yyyy, HH:mm", twelve), "5 Mar 2014, 02:30 PM");
    EXPECT_EQ(atHalfPastTwo("H:mm:ss 'Hours' EEE", twelve), "2:30:15 PM Hours Wed");
    EXPECT_EQ(atHalfPastTwo("h:mm a", twelve), "2:30 PM");
    EXPECT_EQ(atHalfPastTwo("h:mm", twelve), "2:30");
    EXPECT_EQ(atHalfPastTwo("d MMMM", twelve), "5 March");
}

TEST(HoursOfPatterns, BecomeTwentyFourWithoutTheHalfOfTheDay)
{
    const RegionalPhone phone;
    const auto twentyFour = simulator::Hours::twentyFour;
    EXPECT_EQ(atHalfPastTwo("h:mm a", twentyFour), "14:30");
    EXPECT_EQ(atHalfPastTwo("a h:mm", twentyFour), "14:30");
    EXPECT_EQ(atHalfPastTwo("EEE h:mm a, d MMM", twentyFour), "Wed 14:30, 5 Mar");
    EXPECT_EQ(atHalfPastTwo("h 'a clock'", twentyFour), "14 a clock");
    EXPECT_EQ(atHalfPastTwo("HH:mm", twentyFour), "14:30");
}

TEST(HoursOfPatterns, AreReadAsTheyAreWritten)
{
    const RegionalPhone phone;
    simulator::surroundings().customs.hours = simulator::Hours::twelve;
    EXPECT_EQ(textOf(read("dd-MM-yyyy HH:mm", "5-3-2014 02:30 PM")), "2014-03-05 14:30:00 +0000");
    EXPECT_EQ(read("dd-MM-yyyy HH:mm", "5-3-2014 14:30"), nullptr);
}

// Calendars

TEST(CalendarAskedAboutNoDate, AnswersNothingAndComplains)
{
    const RegionalPhone phone;
    NSCalendar* const calendar = NSCalendar::currentCalendar();
    simulator::takeSystemLog();
    const NSRange days = calendar->rangeOfUnit_inUnit_forDate(NSCalendarUnitDay, NSCalendarUnitMonth, nullptr);
    EXPECT_EQ(days.location, 0U);
    EXPECT_EQ(days.length, 0U);
    EXPECT_EQ(calendar->components_fromDate(NSCalendarUnitDay, nullptr), nullptr);
    const auto oneDay = adopt(NSDateComponents::alloc()->init());
    oneDay->setDay(1);
    EXPECT_EQ(calendar->dateByAddingComponents_toDate_options(oneDay, nullptr, 0), nullptr);
    EXPECT_THAT(simulator::takeSystemLog(),
                ElementsAre("*** -[NSCalendar rangeOfUnit:inUnit:forDate:]: date cannot be nil",
                            "*** -[NSCalendar components:fromDate:]: date cannot be nil",
                            "*** -[NSCalendar dateByAddingComponents:toDate:options:]: date cannot be nil"));
}

TEST(CalendarOfAMonth, ThatCannotBeReadHasNoDaysAndNoWeekday)
{
    const RegionalPhone phone;
    const auto calendar = newCalendar();
    setMonth(calendar, 2014, 13);
    EXPECT_EQ(lengthOfShownMonth(calendar), 0);
    EXPECT_EQ(offsetOfShownMonth(calendar), -1);
}

TEST(CalendarUnits, ComeTogether)
{
    const RegionalPhone phone({.language = "en_US.UTF-8", .timeZone = "Europe/Berlin"});
    setClock("2014-03-05T14:30:15");
    // Era, year, month, day, hour, minute, second, weekday.
    NSDateComponents* const units =
        NSCalendar::currentCalendar()->components_fromDate(static_cast<NSCalendarUnit>(0x2fe), NSDate::date());
    EXPECT_EQ(unit<"era">(units), 1);
    EXPECT_EQ(units->year(), 2014);
    EXPECT_EQ(units->month(), 3);
    EXPECT_EQ(units->day(), 5);
    EXPECT_EQ(units->hour(), 14);
    EXPECT_EQ(unit<"minute">(units), 30);
    EXPECT_EQ(unit<"second">(units), 15);
    EXPECT_EQ(unit<"weekday">(units), 4);
}

// The environment

TEST(LocaleOfTheUser, IsThatOfNoLanguageWhereNoneIsGiven)
{
    EXPECT_EQ(localeOf({.language = "", .timeZone = "UTC"}), "en_US_POSIX");
}

TEST(LocaleOfTheUser, IsTheEnvironmentsWithoutItsEncoding)
{
    EXPECT_EQ(localeOf({.language = "de_DE.UTF-8@euro", .timeZone = "UTC"}), "de_DE");
}

TEST(LocaleOfTheUser, KeepsItsKeywords)
{
    EXPECT_EQ(localeOf({.language = "th_TH.UTF-8@calendar=gregorian", .timeZone = "UTC"}), "th_TH@calendar=gregorian");
}

TEST(LocaleOfTheUser, IsThatOfNoLanguageForC)
{
    EXPECT_EQ(localeOf({.language = "C.UTF-8", .timeZone = "UTC"}), "en_US_POSIX");
}
