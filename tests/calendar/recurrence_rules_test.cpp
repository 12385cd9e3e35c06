#include <gmock/gmock.h>
#include <sstream>

#include "platform/EventKit/EventKit.hpp"
#include "platform/Foundation/NSDateFormatter.hpp"
#include "platform/runtime/each.hpp"
#include "tests/calendar/Diary.hpp"

/// The examples of recurrence rules in RFC 5545, 3.8.5.3, each with the dates that it lists there.

namespace {

struct Example {
    const char* name;
    /// In New York.
    const char* start;
    std::vector<std::string> lines;
    /// Months and their days: "1997-09: 2-11, 13; 1997-10: 2". All at the time of the start, unless `times` says which.
    const char* days;
    /// Whether the days listed are but the first of them.
    bool goesOn = false;
    const char* times = nullptr;
};

std::ostream& operator<<(std::ostream& stream, const Example& example)
{
    return stream << example.lines.front();
}

std::vector<std::string> split(const std::string& text, char separator)
{
    std::vector<std::string> parts;
    std::istringstream stream(text);
    for (std::string part; std::getline(stream, part, separator);)
        parts.push_back(part.substr(part.find_first_not_of(' ')));
    return parts;
}

/// "1997-09-02 09:00" and so on.
std::vector<std::string> listedTimes(const Example& example)
{
    const std::string start = example.start;
    const auto times = split(example.times != nullptr ? example.times : start.substr(9, 2) + ':' + start.substr(11, 2), ',');
    std::vector<std::string> all;
    for (const std::string& month : split(example.days, ';')) {
        for (const std::string& days : split(month.substr(month.find(':') + 1), ',')) {
            const int first = std::stoi(days);
            const std::size_t dash = days.find('-');
            const int last = dash == std::string::npos ? first : std::stoi(days.substr(dash + 1));
            for (int day = first; day <= last; ++day) {
                for (const std::string& time : times)
                    all.push_back(month.substr(0, 7) + (day < 10 ? "-0" : "-") + std::to_string(day) + ' ' + time);
            }
        }
    }
    return all;
}

/// When the store's events begin, in local time: in all years, or as many as are wanted.
std::vector<std::string> storedTimes(std::size_t most)
{
    const auto formatter = adopt(NSDateFormatter::alloc()->init());
    formatter->setDateFormat(text("yyyy-MM-dd HH:mm"));
    const auto store = adopt(EKEventStore::newStore());
    std::vector<std::string> times;
    for (int year = 1995; year < 2012; ++year) {
        const AutoreleasePool pool;
        NSDate* const start = localTime(std::to_string(year) + "-01-01T00:00:00");
        NSDate* const end = localTime(std::to_string(year + 1) + "-01-01T00:00:00");
        NSPredicate* const predicate = store->predicateForEventsWithStartDate_endDate_calendars(start, end, nullptr);
        for (EKEvent* event : each<EKEvent>(store->eventsMatchingPredicate(predicate))) {
            if (times.size() < most)
                times.push_back(textOf(formatter->stringFromDate(event->startDate())));
        }
    }
    return times;
}

constexpr bool goesOn = true;

const Example examples[] = {
    {"DailyForTenOccurrences", "19970902T090000", {"RRULE:FREQ=DAILY;COUNT=10"}, "1997-09: 2-11"},
    {"DailyUntilChristmasEve",
     "19970902T090000",
     {"RRULE:FREQ=DAILY;UNTIL=19971224T000000Z"},
     "1997-09: 2-30; 1997-10: 1-31; 1997-11: 1-30; 1997-12: 1-23"},
    {"EveryOtherDay",
     "19970902T090000",
     {"RRULE:FREQ=DAILY;INTERVAL=2"},
     "1997-09: 2, 4, 6, 8, 10, 12, 14, 16, 18, 20, 22, 24, 26, 28, 30; 1997-10: 2, 4, 6, 8, 10, 12, 14, 16, 18, 20, 22, 24, 26, "
     "28, 30; 1997-11: 1, 3, 5, 7, 9, 11, 13, 15, 17, 19, 21, 23, 25, 27, 29; 1997-12: 1, 3",
     goesOn},
    {"EveryTenDays", "19970902T090000", {"RRULE:FREQ=DAILY;INTERVAL=10;COUNT=5"}, "1997-09: 2, 12, 22; 1997-10: 2, 12"},
    {"EveryDayInJanuaryByYears",
     "19980101T090000",
     {"RRULE:FREQ=YEARLY;UNTIL=20000131T140000Z;BYMONTH=1;BYDAY=SU,MO,TU,WE,TH,FR,SA"},
     "1998-01: 1-31; 1999-01: 1-31; 2000-01: 1-31"},
    {"EveryDayInJanuaryByDays",
     "19980101T090000",
     {"RRULE:FREQ=DAILY;UNTIL=20000131T140000Z;BYMONTH=1"},
     "1998-01: 1-31; 1999-01: 1-31; 2000-01: 1-31"},
    {"WeeklyForTenOccurrences",
     "19970902T090000",
     {"RRULE:FREQ=WEEKLY;COUNT=10"},
     "1997-09: 2, 9, 16, 23, 30; 1997-10: 7, 14, 21, 28; 1997-11: 4"},
    {"WeeklyUntilChristmasEve",
     "19970902T090000",
     {"RRULE:FREQ=WEEKLY;UNTIL=19971224T000000Z"},
     "1997-09: 2, 9, 16, 23, 30; 1997-10: 7, 14, 21, 28; 1997-11: 4, 11, 18, 25; 1997-12: 2, 9, 16, 23"},
    {"EveryOtherWeek",
     "19970902T090000",
     {"RRULE:FREQ=WEEKLY;INTERVAL=2;WKST=SU"},
     "1997-09: 2, 16, 30; 1997-10: 14, 28; 1997-11: 11, 25; 1997-12: 9, 23; 1998-01: 6, 20; 1998-02: 3, 17",
     goesOn},
    {"TuesdayAndThursdayUntil",
     "19970902T090000",
     {"RRULE:FREQ=WEEKLY;UNTIL=19971007T000000Z;WKST=SU;BYDAY=TU,TH"},
     "1997-09: 2, 4, 9, 11, 16, 18, 23, 25, 30; 1997-10: 2"},
    {"TuesdayAndThursdayCounted",
     "19970902T090000",
     {"RRULE:FREQ=WEEKLY;COUNT=10;WKST=SU;BYDAY=TU,TH"},
     "1997-09: 2, 4, 9, 11, 16, 18, 23, 25, 30; 1997-10: 2"},
    {"EveryOtherWeekOnThreeDays",
     "19970901T090000",
     {"RRULE:FREQ=WEEKLY;INTERVAL=2;UNTIL=19971224T000000Z;WKST=SU;BYDAY=MO,WE,FR"},
     "1997-09: 1, 3, 5, 15, 17, 19, 29; 1997-10: 1, 3, 13, 15, 17, 27, 29, 31; 1997-11: 10, 12, 14, 24, 26, 28; 1997-12: 8, 10, "
     "12, 22"},
    {"EveryOtherWeekOnTwoDays",
     "19970902T090000",
     {"RRULE:FREQ=WEEKLY;INTERVAL=2;COUNT=8;WKST=SU;BYDAY=TU,TH"},
     "1997-09: 2, 4, 16, 18, 30; 1997-10: 2, 14, 16"},
    {"FirstFridayCounted",
     "19970905T090000",
     {"RRULE:FREQ=MONTHLY;COUNT=10;BYDAY=1FR"},
     "1997-09: 5; 1997-10: 3; 1997-11: 7; 1997-12: 5; 1998-01: 2; 1998-02: 6; 1998-03: 6; 1998-04: 3; 1998-05: 1; 1998-06: 5"},
    {"FirstFridayUntil",
     "19970905T090000",
     {"RRULE:FREQ=MONTHLY;UNTIL=19971224T000000Z;BYDAY=1FR"},
     "1997-09: 5; 1997-10: 3; 1997-11: 7; 1997-12: 5"},
    {"FirstAndLastSundayOfEveryOtherMonth",
     "19970907T090000",
     {"RRULE:FREQ=MONTHLY;INTERVAL=2;COUNT=10;BYDAY=1SU,-1SU"},
     "1997-09: 7, 28; 1997-11: 2, 30; 1998-01: 4, 25; 1998-03: 1, 29; 1998-05: 3, 31"},
    {"LastMondayButOne",
     "19970922T090000",
     {"RRULE:FREQ=MONTHLY;COUNT=6;BYDAY=-2MO"},
     "1997-09: 22; 1997-10: 20; 1997-11: 17; 1997-12: 22; 1998-01: 19; 1998-02: 16"},
    {"LastDayButTwo",
     "19970928T090000",
     {"RRULE:FREQ=MONTHLY;BYMONTHDAY=-3"},
     "1997-09: 28; 1997-10: 29; 1997-11: 28; 1997-12: 29; 1998-01: 29; 1998-02: 26",
     goesOn},
    {"SecondAndFifteenth",
     "19970902T090000",
     {"RRULE:FREQ=MONTHLY;COUNT=10;BYMONTHDAY=2,15"},
     "1997-09: 2, 15; 1997-10: 2, 15; 1997-11: 2, 15; 1997-12: 2, 15; 1998-01: 2, 15"},
    {"FirstAndLastDay",
     "19970930T090000",
     {"RRULE:FREQ=MONTHLY;COUNT=10;BYMONTHDAY=1,-1"},
     "1997-09: 30; 1997-10: 1, 31; 1997-11: 1, 30; 1997-12: 1, 31; 1998-01: 1, 31; 1998-02: 1"},
    {"TenthToFifteenthEveryEighteenMonths",
     "19970910T090000",
     {"RRULE:FREQ=MONTHLY;INTERVAL=18;COUNT=10;BYMONTHDAY=10,11,12,13,14,15"},
     "1997-09: 10-15; 1999-03: 10-13"},
    {"EveryTuesdayOfEveryOtherMonth",
     "19970902T090000",
     {"RRULE:FREQ=MONTHLY;INTERVAL=2;BYDAY=TU"},
     "1997-09: 2, 9, 16, 23, 30; 1997-11: 4, 11, 18, 25; 1998-01: 6, 13, 20, 27; 1998-03: 3, 10, 17, 24, 31",
     goesOn},
    {"YearlyInJuneAndJuly",
     "19970610T090000",
     {"RRULE:FREQ=YEARLY;COUNT=10;BYMONTH=6,7"},
     "1997-06: 10; 1997-07: 10; 1998-06: 10; 1998-07: 10; 1999-06: 10; 1999-07: 10; 2000-06: 10; 2000-07: 10; 2001-06: 10; "
     "2001-07: 10"},
    {"EveryOtherYearInThreeMonths",
     "19970310T090000",
     {"RRULE:FREQ=YEARLY;INTERVAL=2;COUNT=10;BYMONTH=1,2,3"},
     "1997-03: 10; 1999-01: 10; 1999-02: 10; 1999-03: 10; 2001-01: 10; 2001-02: 10; 2001-03: 10; 2003-01: 10; 2003-02: 10; "
     "2003-03: 10"},
    {"ThreeDaysOfEveryThirdYear",
     "19970101T090000",
     {"RRULE:FREQ=YEARLY;INTERVAL=3;COUNT=10;BYYEARDAY=1,100,200"},
     "1997-01: 1; 1997-04: 10; 1997-07: 19; 2000-01: 1; 2000-04: 9; 2000-07: 18; 2003-01: 1; 2003-04: 10; 2003-07: 19; 2006-01: "
     "1"},
    {"TwentiethMonday", "19970519T090000", {"RRULE:FREQ=YEARLY;BYDAY=20MO"}, "1997-05: 19; 1998-05: 18; 1999-05: 17", goesOn},
    {"MondayOfWeekTwenty",
     "19970512T090000",
     {"RRULE:FREQ=YEARLY;BYWEEKNO=20;BYDAY=MO"},
     "1997-05: 12; 1998-05: 11; 1999-05: 17",
     goesOn},
    {"EveryThursdayInMarch",
     "19970313T090000",
     {"RRULE:FREQ=YEARLY;BYMONTH=3;BYDAY=TH"},
     "1997-03: 13, 20, 27; 1998-03: 5, 12, 19, 26; 1999-03: 4, 11, 18, 25",
     goesOn},
    {"EveryThursdayInSummer",
     "19970605T090000",
     {"RRULE:FREQ=YEARLY;BYDAY=TH;BYMONTH=6,7,8"},
     "1997-06: 5, 12, 19, 26; 1997-07: 3, 10, 17, 24, 31; 1997-08: 7, 14, 21, 28; 1998-06: 4, 11, 18, 25; 1998-07: 2, 9, 16, 23, "
     "30; 1998-08: 6, 13, 20, 27; 1999-06: 3, 10, 17, 24; 1999-07: 1, 8, 15, 22, 29; 1999-08: 5, 12, 19, 26",
     goesOn},
    {"FridayTheThirteenth",
     "19970902T090000",
     {"RRULE:FREQ=MONTHLY;BYDAY=FR;BYMONTHDAY=13", "EXDATE;TZID=America/New_York:19970902T090000"},
     "1998-02: 13; 1998-03: 13; 1998-11: 13; 1999-08: 13; 2000-10: 13",
     goesOn},
    {"SaturdayAfterTheFirstSunday",
     "19970913T090000",
     {"RRULE:FREQ=MONTHLY;BYDAY=SA;BYMONTHDAY=7,8,9,10,11,12,13"},
     "1997-09: 13; 1997-10: 11; 1997-11: 8; 1997-12: 13; 1998-01: 10; 1998-02: 7; 1998-03: 7; 1998-04: 11; 1998-05: 9; 1998-06: "
     "13",
     goesOn},
    {"ElectionDay",
     "19961105T090000",
     {"RRULE:FREQ=YEARLY;INTERVAL=4;BYMONTH=11;BYDAY=TU;BYMONTHDAY=2,3,4,5,6,7,8"},
     "1996-11: 5; 2000-11: 7; 2004-11: 2",
     goesOn},
    {"ThirdOfThreeWeekdays",
     "19970904T090000",
     {"RRULE:FREQ=MONTHLY;COUNT=3;BYDAY=TU,WE,TH;BYSETPOS=3"},
     "1997-09: 4; 1997-10: 7; 1997-11: 6"},
    {"LastWorkdayButOne",
     "19970929T090000",
     {"RRULE:FREQ=MONTHLY;BYDAY=MO,TU,WE,TH,FR;BYSETPOS=-2"},
     "1997-09: 29; 1997-10: 30; 1997-11: 27; 1997-12: 30; 1998-01: 29; 1998-02: 26; 1998-03: 30",
     goesOn},
    // With the end at five o'clock in New York, as its list and the RFC's errata have it.
    {"EveryThreeHours",
     "19970902T090000",
     {"RRULE:FREQ=HOURLY;INTERVAL=3;UNTIL=19970902T210000Z"},
     "1997-09: 2",
     false,
     "09:00, 12:00, 15:00"},
    {"EveryQuarterOfAnHour",
     "19970902T090000",
     {"RRULE:FREQ=MINUTELY;INTERVAL=15;COUNT=6"},
     "1997-09: 2",
     false,
     "09:00, 09:15, 09:30, 09:45, 10:00, 10:15"},
    {"EveryHourAndAHalf",
     "19970902T090000",
     {"RRULE:FREQ=MINUTELY;INTERVAL=90;COUNT=4"},
     "1997-09: 2",
     false,
     "09:00, 10:30, 12:00, 13:30"},
    {"EveryTwentyMinutesByDays",
     "19970902T090000",
     {"RRULE:FREQ=DAILY;BYHOUR=9,10,11,12,13,14,15,16;BYMINUTE=0,20,40"},
     "1997-09: 2, 3",
     goesOn,
     "09:00, 09:20, 09:40, 10:00, 10:20, 10:40, 11:00, 11:20, 11:40, 12:00, 12:20, 12:40, 13:00, 13:20, 13:40, 14:00, 14:20, "
     "14:40, 15:00, 15:20, 15:40, 16:00, 16:20, 16:40"},
    {"EveryTwentyMinutesByMinutes",
     "19970902T090000",
     {"RRULE:FREQ=MINUTELY;INTERVAL=20;BYHOUR=9,10,11,12,13,14,15,16"},
     "1997-09: 2, 3",
     goesOn,
     "09:00, 09:20, 09:40, 10:00, 10:20, 10:40, 11:00, 11:20, 11:40, 12:00, 12:20, 12:40, 13:00, 13:20, 13:40, 14:00, 14:20, "
     "14:40, 15:00, 15:20, 15:40, 16:00, 16:20, 16:40"},
    {"WeeksFromMonday",
     "19970805T090000",
     {"RRULE:FREQ=WEEKLY;INTERVAL=2;COUNT=4;BYDAY=TU,SU;WKST=MO"},
     "1997-08: 5, 10, 19, 24"},
    {"WeeksFromSunday",
     "19970805T090000",
     {"RRULE:FREQ=WEEKLY;INTERVAL=2;COUNT=4;BYDAY=TU,SU;WKST=SU"},
     "1997-08: 5, 17, 19, 31"},
    {"DaysThatFebruaryLacks",
     "20070115T090000",
     {"RRULE:FREQ=MONTHLY;BYMONTHDAY=15,30;COUNT=5"},
     "2007-01: 15, 30; 2007-02: 15; 2007-03: 15, 30"},
};

} // namespace

class RecurrenceRule : public testing::TestWithParam<Example> {};

TEST_P(RecurrenceRule, HasTheDatesThatItsExampleLists)
{
    std::string lines;
    for (const std::string& line : GetParam().lines)
        lines += line + "\r\n";
    const Diary diary("BEGIN:VEVENT\r\nDTSTART;TZID=America/New_York:" + std::string(GetParam().start) + "\r\n" + lines +
                          "END:VEVENT\r\n",
                      {.language = "en_US.UTF-8", .timeZone = "America/New_York"});
    const auto expected = listedTimes(GetParam());
    EXPECT_EQ(storedTimes(GetParam().goesOn ? expected.size() : expected.size() + 1), expected);
}

INSTANTIATE_TEST_SUITE_P(, RecurrenceRule, testing::ValuesIn(examples), [](const auto& info) { return info.param.name; });
