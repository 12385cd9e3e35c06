#include <ctime>
#include <fstream>
#include <gmock/gmock.h>

#include "simulator/foundation/system_log.hpp"
#include "tests/calendar/Diary.hpp"
#include "tests/support/Console.hpp"

/// Calendar files as RFC 5545 has them, and files that ask for more than a day needs.

/// There under the address sanitizer.
extern "C" [[gnu::weak]] std::size_t __sanitizer_get_current_allocated_bytes();

namespace {

using testing::AllOf;
using testing::Contains;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

const Region inBerlin{.language = "en_US.UTF-8", .timeZone = "Europe/Berlin"};

/// The rules of New York since 2007.
const std::string newYork = component(
    "VTIMEZONE", {"TZID:Home", "BEGIN:DAYLIGHT", "TZOFFSETFROM:-0500", "TZOFFSETTO:-0400", "DTSTART:20070311T020000",
                  "RRULE:FREQ=YEARLY;BYMONTH=3;BYDAY=2SU", "END:DAYLIGHT", "BEGIN:STANDARD", "TZOFFSETFROM:-0400",
                  "TZOFFSETTO:-0500", "DTSTART:20071104T020000", "RRULE:FREQ=YEARLY;BYMONTH=11;BYDAY=1SU", "END:STANDARD"});

std::string repeated(const std::string& text, int times)
{
    std::string all;
    all.reserve(text.size() * static_cast<std::size_t>(times));
    for (int i = 0; i < times; ++i)
        all += text;
    return all;
}

std::size_t countOf(const std::string& title, const std::string& events)
{
    std::size_t count = 0;
    for (std::size_t at = events.find(title); at != std::string::npos; at = events.find(title, at + 1))
        ++count;
    return count;
}

long megabytesInUse()
{
    constexpr long megabyte = 1024 * 1024;
    // The sanitizer keeps what has been freed, and so do its pages.
    if (__sanitizer_get_current_allocated_bytes != nullptr)
        return static_cast<long>(__sanitizer_get_current_allocated_bytes()) / megabyte;
    constexpr long bytesPerPage = 4096;
    std::ifstream statistics("/proc/self/statm");
    long total = 0;
    long resident = 0;
    statistics >> total >> resident;
    return resident * bytesPerPage / megabyte;
}

} // namespace

// Instances

TEST(CalendarInstance, ListedBySeveralRulesCountsOnce)
{
    const Diary diary(event({"UID:1", "SUMMARY:Choir", "DTSTART:20140303T190000", "DURATION:PT1H", "RRULE:FREQ=DAILY",
                             "RRULE:FREQ=WEEKLY;BYDAY=WE", "RDATE:20140305T190000,20140305T190000"}));
    EXPECT_EQ(diary.on("2014-03-05"), "Choir\n5 Mar 2014, 19:00 - 5 Mar 2014, 20:00\n\n");
}

TEST(CalendarInstance, IsTheBeginningWhetherARuleHasItOrNot)
{
    const Diary diary(event({"SUMMARY:Choir", "DTSTART:20140304T190000", "DURATION:PT1H", "RRULE:FREQ=WEEKLY;BYDAY=WE;COUNT=2"}));
    EXPECT_NE(diary.on("2014-03-04"), "");
    EXPECT_NE(diary.on("2014-03-05"), "");
    EXPECT_EQ(diary.on("2014-03-12"), "");
}

TEST(CalendarInstance, MayBeAddedInATimeZoneOfItsOwn)
{
    const Diary diary(newYork + event({"SUMMARY:Call", "DTSTART:20140303T090000Z", "DURATION:PT30M",
                                       "RDATE;TZID=Home:20140305T090000", "RDATE;TZID=Asia/Tokyo:20140706T090000"}));
    EXPECT_EQ(diary.on("2014-03-05"), "Call\n5 Mar 2014, 14:00 - 5 Mar 2014, 14:30\n\n");
    EXPECT_EQ(diary.on("2014-07-06"), "Call\n6 Jul 2014, 00:00 - 6 Jul 2014, 00:30\n\n");
}

TEST(CalendarInstance, MayBeAddedAsAPeriod)
{
    const Diary diary(event({"SUMMARY:Fair", "DTSTART:20140303T090000Z", "DTEND:20140303T100000Z",
                             "RDATE;VALUE=PERIOD:20140305T120000Z/20140305T150000Z,20140306T080000Z/PT45M"}));
    EXPECT_EQ(diary.on("2014-03-05"), "Fair\n5 Mar 2014, 12:00 - 5 Mar 2014, 15:00\n\n");
    EXPECT_EQ(diary.on("2014-03-06"), "Fair\n6 Mar 2014, 08:00 - 6 Mar 2014, 08:45\n\n");
}

TEST(CalendarInstance, OnTheLastDayOfARuleIsInIt)
{
    const Diary diary(event({"SUMMARY:Choir", "DTSTART:20140305T190000", "RRULE:FREQ=DAILY;UNTIL=20140307"}) +
                      event({"SUMMARY:Bins", "DTSTART;VALUE=DATE:20140305", "RRULE:FREQ=DAILY;UNTIL=20140307"}));
    EXPECT_THAT(diary.on("2014-03-07"), AllOf(HasSubstr("Choir"), HasSubstr("Bins")));
    EXPECT_EQ(diary.on("2014-03-08"), "");
}

TEST(CalendarInstance, AtTheLastTimeOfARuleIsInIt)
{
    const Diary diary(newYork +
                      event({"SUMMARY:Choir", "DTSTART;TZID=Home:20140305T190000", "RRULE:FREQ=DAILY;UNTIL=20140307T000000Z"}));
    // Seven in the evening there is midnight here.
    EXPECT_NE(diary.on("2014-03-07"), "");
    EXPECT_EQ(diary.on("2014-03-08"), "");
}

TEST(CalendarInstances, MayAllBeMovedFromOneOn)
{
    const Diary diary(
        event({"UID:1", "SUMMARY:Standup", "DTSTART:20140303T090000", "DTEND:20140303T091500", "RRULE:FREQ=DAILY"}) +
            event({"UID:1", "RECURRENCE-ID;RANGE=THISANDFUTURE:20140305T090000", "SUMMARY:Late standup",
                   "DTSTART:20140305T103000", "DTEND:20140305T110000"}) +
            event({"UID:1", "RECURRENCE-ID:20140408T090000", "SUMMARY:Special", "DTSTART:20140408T120000"}),
        inBerlin);
    EXPECT_EQ(diary.on("2014-03-04"), "Standup\n4 Mar 2014, 09:00 - 4 Mar 2014, 09:15\n\n");
    EXPECT_EQ(diary.on("2014-03-05"), "Late standup\n5 Mar 2014, 10:30 - 5 Mar 2014, 11:00\n\n");
    EXPECT_EQ(diary.on("2014-03-06"), "Late standup\n6 Mar 2014, 10:30 - 6 Mar 2014, 11:00\n\n");
    // In summer time, too.
    EXPECT_EQ(diary.on("2014-04-07"), "Late standup\n7 Apr 2014, 10:30 - 7 Apr 2014, 11:00\n\n");
    EXPECT_EQ(diary.on("2014-04-08"), "Special\n8 Apr 2014, 12:00 - 8 Apr 2014, 12:00\n\n");
}

TEST(CalendarInstances, MayAllBeMovedToAnotherDay)
{
    const Diary diary(
        event({"UID:1", "SUMMARY:Choir", "DTSTART:20140303T190000", "RRULE:FREQ=WEEKLY"}) +
        event({"UID:1", "RECURRENCE-ID;RANGE=THISANDFUTURE:20140317T190000", "SUMMARY:Choir", "DTSTART:20140319T200000"}));
    EXPECT_NE(diary.on("2014-03-10"), "");
    EXPECT_EQ(diary.on("2014-03-17"), "");
    EXPECT_EQ(diary.on("2014-03-26"), "Choir\n26 Mar 2014, 20:00 - 26 Mar 2014, 20:00\n\n");
}

// Times

TEST(CalendarTime, ThatThereIsNotMakesTheEventSenseless)
{
    const Diary diary(event({"SUMMARY:No such beginning", "DTSTART:20140231T090000", "DTEND:20140306T100000"}) +
                      event({"SUMMARY:No such end", "DTSTART:20140303T090000", "DTEND:20140332T100000"}) +
                      event({"SUMMARY:No such day", "DTSTART;VALUE=DATE:20140231"}) +
                      event({"SUMMARY:No such hour", "DTSTART:20140303T250000"}));
    for (const char* day : {"2014-02-28", "2014-03-01", "2014-03-02", "2014-03-03", "2014-03-04"})
        EXPECT_EQ(diary.on(day), "") << day;
}

TEST(CalendarTime, ThatTheClocksSkipIsReadByTheOffsetBefore)
{
    // At two o'clock on 30 March 2014 clocks in Berlin were put forward, on 9 March those in New York.
    const Diary diary(newYork + event({"SUMMARY:Floating", "DTSTART:20140330T023000"}) +
                          event({"SUMMARY:By name", "DTSTART;TZID=Europe/Berlin:20140330T023000"}) +
                          event({"SUMMARY:By rules", "DTSTART;TZID=Home:20140309T023000"}) +
                          event({"SUMMARY:Daily", "DTSTART:20140329T024500", "RRULE:FREQ=DAILY;COUNT=3"}),
                      inBerlin);
    EXPECT_EQ(diary.on("2014-03-30"), "Floating\n30 Mar 2014, 03:30 - 30 Mar 2014, 03:30\n\n"
                                      "By name\n30 Mar 2014, 03:30 - 30 Mar 2014, 03:30\n\n"
                                      "Daily\n30 Mar 2014, 03:45 - 30 Mar 2014, 03:45\n\n");
    EXPECT_EQ(diary.on("2014-03-09"), "By rules\n9 Mar 2014, 08:30 - 9 Mar 2014, 08:30\n\n");
}

TEST(CalendarTime, ThatTheClocksShowTwiceIsTheFirst)
{
    const Diary diary(event({"SUMMARY:Floating", "DTSTART:20141026T023000", "DTEND:20141026T013000Z"}) +
                          event({"SUMMARY:By name", "DTSTART;TZID=Europe/Berlin:20141026T023000", "DTEND:20141026T013000Z"}),
                      inBerlin);
    // An hour later it is half past two again.
    EXPECT_EQ(diary.on("2014-10-26"), "Floating\n26 Oct 2014, 02:30 - 26 Oct 2014, 02:30\n\n"
                                      "By name\n26 Oct 2014, 02:30 - 26 Oct 2014, 02:30\n\n");
    EXPECT_NE(diary.after("2014-10-25T02:31:00"), "");
}

TEST(CalendarTime, InATimeZoneOfAnotherSystemsNameFollowsItsRules)
{
    const Diary diary(event({"SUMMARY:Call", "DTSTART;TZID=W. Europe Standard Time:20140705T090000"}) +
                      event({"SUMMARY:Floating", "DTSTART;TZID=Nowhere:20140705T100000"}));
    EXPECT_EQ(diary.on("2014-07-05"), "Call\n5 Jul 2014, 07:00 - 5 Jul 2014, 07:00\n\n"
                                      "Floating\n5 Jul 2014, 10:00 - 5 Jul 2014, 10:00\n\n");
}

TEST(CalendarLength, InDaysIsOfTheCalendarAndInHoursIsExact)
{
    const Diary diary(event({"SUMMARY:A day", "DTSTART:20140329T120000", "DURATION:P1D"}) +
                          event({"SUMMARY:Hours", "DTSTART:20140329T120000", "DURATION:PT24H"}),
                      inBerlin);
    EXPECT_EQ(diary.on("2014-03-29"), "A day\n29 Mar 2014, 12:00 - 30 Mar 2014, 12:00\n\n"
                                      "Hours\n29 Mar 2014, 12:00 - 30 Mar 2014, 13:00\n\n");
}

// Texts and files

TEST(CalendarTitle, ThatIsEmptyIsNone)
{
    const Diary diary(event({"SUMMARY:", "DTSTART:20140305T090000"}));
    EXPECT_EQ(diary.on("2014-03-05"), "(null)\n5 Mar 2014, 09:00 - 5 Mar 2014, 09:00\n\n");
}

TEST(CalendarTitle, InAnotherEncodingHasReplacementCharacters)
{
    const Diary diary(event({"SUMMARY:Fr\xfchst\xfc"
                             "ck",
                             "DTSTART:20140305T090000"}));
    EXPECT_EQ(diary.on("2014-03-05"), "Fr\uFFFDhst\uFFFDck\n5 Mar 2014, 09:00 - 5 Mar 2014, 09:00\n\n");
}

TEST(CalendarTitle, GoesOnInTheNextLine)
{
    const Diary diary(event({"SUMMARY:A long \xc3", " \xa9", "\tpop", "ée:no property", "DTSTART:20140305T090000"}));
    EXPECT_EQ(diary.on("2014-03-05"), "A long \xc3\xa9pop\n5 Mar 2014, 09:00 - 5 Mar 2014, 09:00\n\n");
}

TEST(CalendarFile, MayHoldSeveralCalendars)
{
    const Diary diary("");
    diary.add("Calendar.ics", calendarOf(event({"UID:1", "SUMMARY:One", "DTSTART:20140305T090000"})) +
                                  calendarOf(newYork + event({"UID:2", "SUMMARY:Two", "DTSTART;TZID=Home:20140305T090000"})));
    EXPECT_EQ(diary.on("2014-03-05"), "One\n5 Mar 2014, 09:00 - 5 Mar 2014, 09:00\n\n"
                                      "Two\n5 Mar 2014, 14:00 - 5 Mar 2014, 14:00\n\n");
}

TEST(CalendarFile, KeepsWhatElseItHoldsWhenAnEventIsAdded)
{
    const Console console;
    const auto file = console.root() / "User/Library/Calendar/Calendar.ics";
    const std::string other = component("VTODO", {"UID:1", "SUMMARY:Milk", "X-COLOUR:blue"}) +
                              component("VEVENT", {"UID:2", "DTSTART:20140305T090000Z", "DESCRIPTION:Bring \xff", "X-SEAT:12"});
    std::filesystem::create_directories(file.parent_path());
    writeFile(file, calendarOf(other));
    linesOf(console, "event Lunch 2014-03-05T12:00:00 2014-03-05T13:00:00\n");
    const std::string written = readFile(file);
    EXPECT_THAT(written, AllOf(HasSubstr(other), HasSubstr("SUMMARY:Lunch\r\n")));
    EXPECT_EQ(countOf("END:VCALENDAR", written), 1U);
}

// Files that ask for too much. Each takes seconds at the most; unbounded, they take hours or all memory.

namespace {

/// The events of 5 March 2014 from a file that asks for too much, which the system log says.
struct Bounded {
    explicit Bounded(const std::string& contents)
    {
        const Diary diary("");
        diary.add("Calendar.ics", contents);
        simulator::takeSystemLog();
        const std::clock_t before = std::clock();
        events = diary.on("2014-03-05");
        seconds = static_cast<double>(std::clock() - before) / CLOCKS_PER_SEC;
        for (const std::string& line : simulator::takeSystemLog()) {
            if (line.starts_with("Calendar.ics: "))
                log.push_back(line);
        }
        // Of the processor, where a sanitizer or an emulated processor may take ten times as long.
        EXPECT_LT(seconds, 30);
    }

    std::string events;
    std::vector<std::string> log;
    double seconds;
};

const std::string meeting = event({"UID:m", "SUMMARY:Meeting", "DTSTART:20140305T090000Z"});
constexpr const char* tooManyInstances = "Calendar.ics: its rules ask for too many instances: the rest of them is left out";
constexpr const char* tooManyEvents = "Calendar.ics: there are more events than can be listed: the rest of them is left out";
constexpr const char* tooLong = "Calendar.ics: the file is too long: the rest of it is left out";

} // namespace

TEST(BoundedCalendar, GivesTheMinutesOfADay)
{
    const Bounded found(calendarOf(event({"SUMMARY:Tick", "DTSTART:19700101T000000Z", "RRULE:FREQ=MINUTELY"})));
    EXPECT_EQ(countOf("Tick", found.events), 1440U);
    EXPECT_THAT(found.events, StartsWith("Tick\n5 Mar 2014, 00:00"));
    EXPECT_THAT(found.log, IsEmpty());
}

TEST(BoundedCalendar, GivesTheFirstSecondsOfADay)
{
    const Bounded found(calendarOf(event({"SUMMARY:Tick", "DTSTART:19700101T000000Z", "RRULE:FREQ=SECONDLY"})));
    EXPECT_EQ(countOf("Tick", found.events), 2000U);
    EXPECT_THAT(found.log, Contains(tooManyEvents));
}

TEST(BoundedCalendar, GivesAsManyLongTitlesAsADayCanList)
{
    const Bounded found(
        calendarOf(repeated(event({"SUMMARY:" + std::string(2047, 'x') + "!", "DTSTART:20140305T090000Z"}), 500)));
    EXPECT_EQ(countOf("!", found.events), 128U);
    EXPECT_THAT(found.log, Contains(tooManyEvents));
}

TEST(BoundedCalendar, GivesUpCountingEverySecond)
{
    const Bounded found(
        calendarOf(meeting + event({"SUMMARY:Tick", "DTSTART:19700101T000000Z", "RRULE:FREQ=SECONDLY;COUNT=2000000000"})));
    EXPECT_EQ(countOf("Meeting", found.events), 1U);
    EXPECT_THAT(found.log, Contains(tooManyInstances));
}

TEST(BoundedCalendar, PassesOverADayThatNeverComes)
{
    std::string never;
    for (const char* frequency : {"YEARLY", "MONTHLY", "DAILY", "HOURLY", "MINUTELY", "SECONDLY"}) {
        const std::string rule = std::string("RRULE:FREQ=") + frequency + ";BYMONTH=2;BYMONTHDAY=30";
        never += event({"SUMMARY:Never", "DTSTART:19700101T000000Z", rule});
        never += event({"SUMMARY:Never", "DTSTART:19700101T000000Z", rule + ";COUNT=5"});
    }
    const Bounded found(calendarOf(never + meeting));
    EXPECT_EQ(found.events, "Meeting\n5 Mar 2014, 09:00 - 5 Mar 2014, 09:00\n\n");
}

TEST(BoundedCalendar, FollowsATimeZoneThatChangesEverySecondNoFurtherThanNeeded)
{
    const std::string zone = component("VTIMEZONE", {"TZID:X", "BEGIN:STANDARD", "TZOFFSETFROM:+0100", "TZOFFSETTO:+0200",
                                                     "DTSTART:19700101T000000", "RRULE:FREQ=SECONDLY", "END:STANDARD"});
    const Bounded found(calendarOf(zone + event({"SUMMARY:Call", "DTSTART;TZID=X:20140305T090000"})));
    EXPECT_EQ(found.events, "Call\n5 Mar 2014, 07:00 - 5 Mar 2014, 07:00\n\n");
}

TEST(BoundedCalendar, LeavesOutALineOfFiftyMegabytes)
{
    const Bounded found(calendarOf("BEGIN:VEVENT\r\nSUMMARY:" + repeated(std::string(1000, 'x'), 50'000) +
                                   "\r\nDTSTART:20140305T080000Z\r\nEND:VEVENT\r\n" + meeting));
    EXPECT_EQ(found.events, "(null)\n5 Mar 2014, 08:00 - 5 Mar 2014, 08:00\n\n"
                            "Meeting\n5 Mar 2014, 09:00 - 5 Mar 2014, 09:00\n\n");
    EXPECT_THAT(found.log, Contains("Calendar.ics: lines of more than 64 KiB are left out"));
}

TEST(BoundedCalendar, PassesOverComponentsHoweverDeep)
{
    const Bounded found(calendarOf(repeated("BEGIN:VEVENT\r\n", 400'000) + repeated("END:VEVENT\r\n", 400'000) + meeting));
    EXPECT_EQ(found.events, "Meeting\n5 Mar 2014, 09:00 - 5 Mar 2014, 09:00\n\n");
}

TEST(BoundedCalendar, IsNoneWhenItsComponentsNeverEnd)
{
    EXPECT_EQ(Bounded("BEGIN:VCALENDAR\r\n" + repeated("BEGIN:VEVENT\r\n", 400'000)).events, "");
}

TEST(BoundedCalendar, LeavesOutWhatComesAfterTheFirstMegabytes)
{
    const Bounded found(calendarOf(meeting + repeated(event({"SUMMARY:Old", "DTSTART:20010305T090000Z"}), 200'000)));
    EXPECT_EQ(found.events, "Meeting\n5 Mar 2014, 09:00 - 5 Mar 2014, 09:00\n\n");
    EXPECT_THAT(found.log, Contains(tooLong));
}

TEST(BoundedCalendar, LeavesOutAnEventOfMegabytes)
{
    const Bounded found(calendarOf("BEGIN:VEVENT\r\n" + repeated("UID:1\r\n", 100'000) + "END:VEVENT\r\n" + meeting));
    EXPECT_EQ(found.events, "Meeting\n5 Mar 2014, 09:00 - 5 Mar 2014, 09:00\n\n");
    EXPECT_THAT(found.log, Contains("Calendar.ics: an event or time zone of more than 128 KiB is left out"));
}

TEST(BoundedCalendar, TellsOfRulesThatTogetherAskForTooMuch)
{
    const Bounded found(
        calendarOf(meeting + repeated(event({"DTSTART:19700101T000000Z", "RRULE:FREQ=YEARLY;COUNT=10000"}), 5000)));
    EXPECT_EQ(countOf("Meeting", found.events), 1U);
    EXPECT_THAT(found.log, Contains(tooManyInstances));
}

TEST(DayText, KeepsNoMoreOfItselfThanItIs)
{
    // Text after text, each as long as the last and a line more, would be 300 megabytes.
    const Diary diary(repeated(event({"SUMMARY:" + std::string(100, 'x'), "DTSTART:20140305T090000Z"}), 2000));
    const AutoreleasePool pool;
    const auto calendar = newCalendar();
    const long before = megabytesInUse();
    NSString* const text = send<"getCalenderEventsForDay:", NSString*>(calendar.get(), localTime("2014-03-05T00:00:00"));
    EXPECT_LT(megabytesInUse() - before, 100);
    EXPECT_EQ(countOf("x\n", textOf(text)), 2000U);
}
