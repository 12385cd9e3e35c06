#include <gmock/gmock.h>

#include "simulator/runtime/SimulatedClass.hpp"
#include "tests/calendar/Diary.hpp"
#include "tests/support/Console.hpp"
#include "tests/support/MessageLog.hpp"

/// The events of a day as text, from calendars of the phone.

namespace {

constexpr const char* berlin = "BEGIN:VTIMEZONE\r\nTZID:Berlin\r\n"
                               "BEGIN:DAYLIGHT\r\nTZOFFSETFROM:+0100\r\nTZOFFSETTO:+0200\r\nTZNAME:CEST\r\n"
                               "DTSTART:19700329T020000\r\nRRULE:FREQ=YEARLY;BYMONTH=3;BYDAY=-1SU\r\nEND:DAYLIGHT\r\n"
                               "BEGIN:STANDARD\r\nTZOFFSETFROM:+0200\r\nTZOFFSETTO:+0100\r\nTZNAME:CET\r\n"
                               "DTSTART:19701025T030000\r\nRRULE:FREQ=YEARLY;BYMONTH=10;BYDAY=-1SU\r\nEND:STANDARD\r\n"
                               "END:VTIMEZONE\r\n";

const std::string standup = event({"UID:1", "SUMMARY:Standup", "DTSTART:20140305T090000Z", "DTEND:20140305T091500Z"});
const std::string lunch = event({"UID:2", "SUMMARY:Lunch", "DTSTART:20140305T120000Z", "DTEND:20140305T130000Z"});

} // namespace

// The text

TEST(DayEvents, AreEachATitleATimeAndAnEmptyLine)
{
    const Diary diary(standup + lunch);
    EXPECT_EQ(diary.on("2014-03-05"), "Standup\n5 Mar 2014, 09:00 - 5 Mar 2014, 09:15\n\n"
                                      "Lunch\n5 Mar 2014, 12:00 - 5 Mar 2014, 13:00\n\n");
}

TEST(DayEvents, ComeByTheirBeginning)
{
    const Diary diary(lunch + standup);
    EXPECT_EQ(diary.on("2014-03-05"), "Standup\n5 Mar 2014, 09:00 - 5 Mar 2014, 09:15\n\n"
                                      "Lunch\n5 Mar 2014, 12:00 - 5 Mar 2014, 13:00\n\n");
}

TEST(DayEvents, AreAnEmptyTextWhenThereAreNone)
{
    const Diary diary(standup + lunch);
    EXPECT_EQ(diary.on("2014-03-04"), "");
    EXPECT_EQ(diary.on("2014-03-06"), "");
}

TEST(DayEvents, AreDatedInTheUsersLanguage)
{
    const Diary diary(standup, german);
    EXPECT_EQ(diary.on("2014-03-05"), "Standup\n5 März 2014, 09:00 - 5 März 2014, 09:15\n\n");
}

TEST(DayEvents, AreDatedInTheUsersTimeZone)
{
    const Diary diary(standup, {.language = "en_US.UTF-8", .timeZone = "Asia/Tokyo"});
    EXPECT_EQ(diary.on("2014-03-05"), "Standup\n5 Mar 2014, 18:00 - 5 Mar 2014, 18:15\n\n");
}

TEST(DayEvents, WithoutATitlePrintAsNull)
{
    const Diary diary(event({"UID:1", "DTSTART:20140305T090000Z", "DTEND:20140305T091500Z"}));
    EXPECT_EQ(diary.on("2014-03-05"), "(null)\n5 Mar 2014, 09:00 - 5 Mar 2014, 09:15\n\n");
}

TEST(DayEvents, KeepTitlesThatLookLikeFormats)
{
    const Diary diary(event({"UID:1", "SUMMARY:100%@ %li", "DTSTART:20140305T090000Z", "DTEND:20140305T091500Z"}) + lunch);
    EXPECT_EQ(diary.on("2014-03-05"), "100%@ %li\n5 Mar 2014, 09:00 - 5 Mar 2014, 09:15\n\n"
                                      "Lunch\n5 Mar 2014, 12:00 - 5 Mar 2014, 13:00\n\n");
}

TEST(DayEvents, KeepTitlesInAnyScript)
{
    const Diary diary(event({"UID:1", "SUMMARY:Frühstück in 東京 \\, ☕", "DTSTART:20140305T090000Z", "DTEND:20140305T091500Z"}));
    EXPECT_EQ(diary.on("2014-03-05"), "Frühstück in 東京 , ☕\n5 Mar 2014, 09:00 - 5 Mar 2014, 09:15\n\n");
}

// The period

TEST(DayEvents, AreThoseOfTheDayAfterTheMomentGiven)
{
    const Diary diary(standup + lunch);
    EXPECT_EQ(diary.after("2014-03-05T10:00:00"), "Lunch\n5 Mar 2014, 12:00 - 5 Mar 2014, 13:00\n\n");
    EXPECT_EQ(diary.after("2014-03-04T12:00:00"), "Standup\n5 Mar 2014, 09:00 - 5 Mar 2014, 09:15\n\n");
    EXPECT_EQ(diary.after("2014-03-05T13:00:00"), "");
}

TEST(DayEvents, ThatEndAsThePeriodBeginsAreNotInIt)
{
    const Diary diary(standup);
    EXPECT_EQ(diary.after("2014-03-05T09:15:00"), "");
    EXPECT_EQ(diary.after("2014-03-05T09:14:59"), "Standup\n5 Mar 2014, 09:00 - 5 Mar 2014, 09:15\n\n");
}

TEST(DayEvents, ThatBeginAsThePeriodEndsAreNotInIt)
{
    const Diary diary(standup);
    EXPECT_EQ(diary.after("2014-03-04T09:00:00"), "");
    EXPECT_EQ(diary.after("2014-03-04T09:00:01"), "Standup\n5 Mar 2014, 09:00 - 5 Mar 2014, 09:15\n\n");
}

TEST(DayEvents, OfNoLengthBelongToThePeriodTheyStandIn)
{
    const Diary diary(event({"UID:1", "SUMMARY:Alarm", "DTSTART:20140305T000000Z", "DTEND:20140305T000000Z"}));
    EXPECT_EQ(diary.on("2014-03-05"), "Alarm\n5 Mar 2014, 00:00 - 5 Mar 2014, 00:00\n\n");
    EXPECT_EQ(diary.on("2014-03-04"), "");
}

TEST(DayEvents, OfADayThatLosesAnHourEndWithTheDay)
{
    // Summer time begins on 30 March 2014 in Berlin; the day has 23 hours.
    const Diary diary(event({"UID:1", "SUMMARY:Late", "DTSTART:20140330T233000", "DTEND:20140330T234500"}) +
                          event({"UID:2", "SUMMARY:Next day", "DTSTART:20140331T001500", "DTEND:20140331T003000"}),
                      {.language = "en_US.UTF-8", .timeZone = "Europe/Berlin"});
    EXPECT_EQ(diary.on("2014-03-30"), "Late\n30 Mar 2014, 23:30 - 30 Mar 2014, 23:45\n\n");
}

TEST(DayEvents, OfADayThatGainsAnHourEndWithTheDay)
{
    const Diary diary(event({"UID:1", "SUMMARY:Late", "DTSTART:20141026T233000", "DTEND:20141026T234500"}) +
                          event({"UID:2", "SUMMARY:Next day", "DTSTART:20141027T001500", "DTEND:20141027T003000"}),
                      {.language = "en_US.UTF-8", .timeZone = "Europe/Berlin"});
    EXPECT_EQ(diary.on("2014-10-26"), "Late\n26 Oct 2014, 23:30 - 26 Oct 2014, 23:45\n\n");
}

TEST(DayEvents, AcrossAClockChangeKeepTheirWallClockTimes)
{
    const Diary diary(event({"UID:1", "SUMMARY:Night watch", "DTSTART:20140330T010000", "DTEND:20140330T040000"}),
                      {.language = "en_US.UTF-8", .timeZone = "Europe/Berlin"});
    EXPECT_EQ(diary.on("2014-03-30"), "Night watch\n30 Mar 2014, 01:00 - 30 Mar 2014, 04:00\n\n");
}

// Kinds of events

TEST(DayEvents, MayLastAllDay)
{
    const Diary diary(event({"UID:1", "SUMMARY:Holiday", "DTSTART;VALUE=DATE:20140305", "DTEND;VALUE=DATE:20140306"}));
    EXPECT_EQ(diary.on("2014-03-05"), "Holiday\n5 Mar 2014, 00:00 - 5 Mar 2014, 23:59\n\n");
    EXPECT_EQ(diary.on("2014-03-04"), "");
    EXPECT_EQ(diary.on("2014-03-06"), "");
}

TEST(DayEvents, OfAllDayAreThoseOfTheUsersDay)
{
    const Diary diary(event({"UID:1", "SUMMARY:Holiday", "DTSTART;VALUE=DATE:20140305"}),
                      {.language = "en_US.UTF-8", .timeZone = "Pacific/Kiritimati"});
    EXPECT_EQ(diary.on("2014-03-05"), "Holiday\n5 Mar 2014, 00:00 - 5 Mar 2014, 23:59\n\n");
    EXPECT_EQ(diary.on("2014-03-04"), "");
    EXPECT_EQ(diary.on("2014-03-06"), "");
}

TEST(DayEvents, OfAllDayLastTheWholeDayThatLosesAnHour)
{
    const Diary diary(event({"UID:1", "SUMMARY:Holiday", "DTSTART;VALUE=DATE:20140330", "DTEND;VALUE=DATE:20140331"}),
                      {.language = "en_US.UTF-8", .timeZone = "Europe/Berlin"});
    EXPECT_EQ(diary.on("2014-03-30"), "Holiday\n30 Mar 2014, 00:00 - 30 Mar 2014, 23:59\n\n");
    EXPECT_EQ(diary.on("2014-03-31"), "");
}

TEST(DayEvents, OfSeveralDaysAreInEachOfThem)
{
    const Diary diary(event({"UID:1", "SUMMARY:Fair", "DTSTART:20140304T180000", "DTEND:20140306T100000"}) +
                      event({"UID:2", "SUMMARY:Trip", "DTSTART;VALUE=DATE:20140304", "DTEND;VALUE=DATE:20140307"}));
    const std::string both = "Trip\n4 Mar 2014, 00:00 - 6 Mar 2014, 23:59\n\nFair\n4 Mar 2014, 18:00 - 6 Mar 2014, 10:00\n\n";
    EXPECT_EQ(diary.on("2014-03-03"), "");
    for (const char* day : {"2014-03-04", "2014-03-05", "2014-03-06"})
        EXPECT_EQ(diary.on(day), both) << day;
    EXPECT_EQ(diary.on("2014-03-07"), "");
}

TEST(DayEvents, MayHaveADurationInsteadOfAnEnd)
{
    const Diary diary(event({"UID:1", "SUMMARY:Standup", "DTSTART:20140305T090000Z", "DURATION:PT15M"}));
    EXPECT_EQ(diary.on("2014-03-05"), "Standup\n5 Mar 2014, 09:00 - 5 Mar 2014, 09:15\n\n");
}

TEST(DayEvents, InUniversalTimeFollowIt)
{
    const Diary diary(standup, {.language = "en_US.UTF-8", .timeZone = "America/New_York"});
    EXPECT_EQ(diary.on("2014-03-05"), "Standup\n5 Mar 2014, 04:00 - 5 Mar 2014, 04:15\n\n");
}

TEST(DayEvents, WithoutATimeZoneAreOfTheUsers)
{
    const Diary diary(event({"UID:1", "SUMMARY:Standup", "DTSTART:20140305T090000", "DTEND:20140305T091500"}),
                      {.language = "en_US.UTF-8", .timeZone = "America/New_York"});
    EXPECT_EQ(diary.on("2014-03-05"), "Standup\n5 Mar 2014, 09:00 - 5 Mar 2014, 09:15\n\n");
}

TEST(DayEvents, InATimeZoneOfTheFileFollowItsRules)
{
    const Diary diary(
        std::string(berlin) +
        event({"UID:1", "SUMMARY:Winter", "DTSTART;TZID=Berlin:20140305T090000", "DTEND;TZID=Berlin:20140305T100000"}) +
        event({"UID:2", "SUMMARY:Summer", "DTSTART;TZID=Berlin:20140705T090000", "DTEND;TZID=Berlin:20140705T100000"}));
    EXPECT_EQ(diary.on("2014-03-05"), "Winter\n5 Mar 2014, 08:00 - 5 Mar 2014, 09:00\n\n");
    EXPECT_EQ(diary.on("2014-07-05"), "Summer\n5 Jul 2014, 07:00 - 5 Jul 2014, 08:00\n\n");
}

TEST(DayEvents, InATimeZoneKnownByNameFollowItsRules)
{
    const Diary diary(event(
        {"UID:1", "SUMMARY:Standup", "DTSTART;TZID=Europe/Berlin:20140705T090000", "DTEND;TZID=Europe/Berlin:20140705T091500"}));
    EXPECT_EQ(diary.on("2014-07-05"), "Standup\n5 Jul 2014, 07:00 - 5 Jul 2014, 07:15\n\n");
}

// Recurring events

TEST(RecurringDayEvents, ComeEveryDay)
{
    const Diary diary(
        event({"UID:1", "SUMMARY:Standup", "DTSTART:20140301T090000", "DTEND:20140301T091500", "RRULE:FREQ=DAILY"}));
    EXPECT_EQ(diary.on("2014-02-28"), "");
    EXPECT_EQ(diary.on("2014-03-05"), "Standup\n5 Mar 2014, 09:00 - 5 Mar 2014, 09:15\n\n");
    EXPECT_EQ(diary.on("2024-02-29"), "Standup\n29 Feb 2024, 09:00 - 29 Feb 2024, 09:15\n\n");
}

TEST(RecurringDayEvents, ComeAsOftenAsTheyAreCounted)
{
    const Diary diary(
        event({"UID:1", "SUMMARY:Choir", "DTSTART:20140305T190000", "DTEND:20140305T203000", "RRULE:FREQ=WEEKLY;COUNT=3"}));
    for (const char* day : {"2014-03-05", "2014-03-12", "2014-03-19"})
        EXPECT_NE(diary.on(day), "") << day;
    for (const char* day : {"2014-02-26", "2014-03-06", "2014-03-26"})
        EXPECT_EQ(diary.on(day), "") << day;
}

TEST(RecurringDayEvents, ComeUntilTheirLastDay)
{
    const Diary diary(event({"UID:1", "SUMMARY:Choir", "DTSTART:20140305T190000Z", "DTEND:20140305T203000Z",
                             "RRULE:FREQ=WEEKLY;UNTIL=20140319T190000Z;BYDAY=WE,FR"}));
    for (const char* day : {"2014-03-05", "2014-03-07", "2014-03-12", "2014-03-14", "2014-03-19"})
        EXPECT_NE(diary.on(day), "") << day;
    for (const char* day : {"2014-03-06", "2014-03-21", "2014-03-26"})
        EXPECT_EQ(diary.on(day), "") << day;
}

TEST(RecurringDayEvents, KeepTheirWallClockTimeOverAClockChange)
{
    const Diary diary(event({"UID:1", "SUMMARY:Standup", "DTSTART:20140301T090000", "DTEND:20140301T091500", "RRULE:FREQ=DAILY"}),
                      {.language = "en_US.UTF-8", .timeZone = "Europe/Berlin"});
    EXPECT_EQ(diary.on("2014-03-29"), "Standup\n29 Mar 2014, 09:00 - 29 Mar 2014, 09:15\n\n");
    EXPECT_EQ(diary.on("2014-03-30"), "Standup\n30 Mar 2014, 09:00 - 30 Mar 2014, 09:15\n\n");
}

TEST(RecurringDayEvents, KeepTheWallClockTimeOfTheirOwnTimeZone)
{
    const Diary diary(std::string(berlin) + event({"UID:1", "SUMMARY:Standup", "DTSTART;TZID=Berlin:20140301T090000",
                                                   "DTEND;TZID=Berlin:20140301T091500", "RRULE:FREQ=DAILY"}));
    EXPECT_EQ(diary.on("2014-03-29"), "Standup\n29 Mar 2014, 08:00 - 29 Mar 2014, 08:15\n\n");
    EXPECT_EQ(diary.on("2014-03-30"), "Standup\n30 Mar 2014, 07:00 - 30 Mar 2014, 07:15\n\n");
}

TEST(RecurringDayEvents, LeaveOutTheirExceptions)
{
    const Diary diary(std::string(berlin) + event({"UID:1", "SUMMARY:Standup", "DTSTART;TZID=Berlin:20140303T090000",
                                                   "DTEND;TZID=Berlin:20140303T091500", "RRULE:FREQ=DAILY",
                                                   "EXDATE;TZID=Berlin:20140305T090000,20140307T090000"}));
    EXPECT_EQ(diary.on("2014-03-04"), "Standup\n4 Mar 2014, 08:00 - 4 Mar 2014, 08:15\n\n");
    EXPECT_EQ(diary.on("2014-03-05"), "");
    EXPECT_EQ(diary.on("2014-03-06"), "Standup\n6 Mar 2014, 08:00 - 6 Mar 2014, 08:15\n\n");
    EXPECT_EQ(diary.on("2014-03-07"), "");
}

TEST(RecurringDayEvents, LeaveOutExceptionsGivenInAnotherTimeZone)
{
    const Diary diary(std::string(berlin) +
                      event({"UID:1", "SUMMARY:Standup", "DTSTART;TZID=Berlin:20140303T090000",
                             "DTEND;TZID=Berlin:20140303T091500", "RRULE:FREQ=DAILY", "EXDATE:20140305T080000Z"}));
    EXPECT_EQ(diary.on("2014-03-05"), "");
}

TEST(RecurringDayEvents, OfAllDayLeaveOutTheirExceptions)
{
    const Diary diary(
        event({"UID:1", "SUMMARY:Bins", "DTSTART;VALUE=DATE:20140303", "RRULE:FREQ=DAILY", "EXDATE;VALUE=DATE:20140305"}));
    EXPECT_EQ(diary.on("2014-03-04"), "Bins\n4 Mar 2014, 00:00 - 4 Mar 2014, 23:59\n\n");
    EXPECT_EQ(diary.on("2014-03-05"), "");
}

TEST(RecurringDayEvents, ComeOnExtraDays)
{
    const Diary diary(event({"UID:1", "SUMMARY:Choir", "DTSTART:20140305T190000Z", "DTEND:20140305T203000Z",
                             "RRULE:FREQ=WEEKLY;COUNT=2", "RDATE:20140308T100000Z"}));
    EXPECT_EQ(diary.on("2014-03-08"), "Choir\n8 Mar 2014, 10:00 - 8 Mar 2014, 11:30\n\n");
}

TEST(RecurringDayEvents, MayHaveAnOccurrenceMovedAndRenamed)
{
    const Diary diary(
        event({"UID:1", "SUMMARY:Standup", "DTSTART:20140303T090000Z", "DTEND:20140303T091500Z", "RRULE:FREQ=DAILY"}) +
        event({"UID:1", "RECURRENCE-ID:20140305T090000Z", "SUMMARY:Long standup", "DTSTART:20140306T100000Z",
               "DTEND:20140306T110000Z"}));
    EXPECT_EQ(diary.on("2014-03-04"), "Standup\n4 Mar 2014, 09:00 - 4 Mar 2014, 09:15\n\n");
    EXPECT_EQ(diary.on("2014-03-05"), "");
    EXPECT_EQ(diary.on("2014-03-06"), "Standup\n6 Mar 2014, 09:00 - 6 Mar 2014, 09:15\n\n"
                                      "Long standup\n6 Mar 2014, 10:00 - 6 Mar 2014, 11:00\n\n");
}

TEST(RecurringDayEvents, OfATimeZoneMayHaveAnOccurrenceMoved)
{
    const Diary diary(std::string(berlin) +
                      event({"UID:1", "SUMMARY:Standup", "DTSTART;TZID=Berlin:20140303T090000",
                             "DTEND;TZID=Berlin:20140303T091500", "RRULE:FREQ=DAILY"}) +
                      event({"UID:1", "RECURRENCE-ID;TZID=Berlin:20140405T090000", "SUMMARY:Standup",
                             "DTSTART;TZID=Berlin:20140405T113000", "DTEND;TZID=Berlin:20140405T114500"}));
    EXPECT_EQ(diary.on("2014-04-05"), "Standup\n5 Apr 2014, 09:30 - 5 Apr 2014, 09:45\n\n");
}

TEST(RecurringDayEvents, BeginThePreviousEveningAndReachIntoTheDay)
{
    const Diary diary(
        event({"UID:1", "SUMMARY:Night shift", "DTSTART:20140301T220000", "DTEND:20140302T060000", "RRULE:FREQ=DAILY"}));
    EXPECT_EQ(diary.on("2014-03-05"), "Night shift\n4 Mar 2014, 22:00 - 5 Mar 2014, 06:00\n\n"
                                      "Night shift\n5 Mar 2014, 22:00 - 6 Mar 2014, 06:00\n\n");
}

// Calendars

TEST(DayCalendars, AreEmptyWithoutADefaultCalendar)
{
    const Diary diary("");
    diary.remove("Calendar.ics");
    EXPECT_EQ(diary.on("2014-03-05"), "");
}

TEST(DayCalendars, AreEmptyWithACalendarWithoutEvents)
{
    const Diary diary("");
    EXPECT_EQ(diary.on("2014-03-05"), "");
}

TEST(DayCalendars, AreReadInTheDefaultOneAlone)
{
    const Diary diary(standup);
    diary.add("Work.ics", calendarOf(lunch));
    EXPECT_EQ(diary.on("2014-03-05"), "Standup\n5 Mar 2014, 09:00 - 5 Mar 2014, 09:15\n\n");
}

TEST(DayCalendars, ThatAreBrokenArePassedOver)
{
    const Diary diary(standup);
    diary.add("A broken one.ics", "BEGIN:VCALENDAR\r\nBEGIN:VEV");
    diary.add("Another.ics", "\x01\x02\xff not a calendar\n");
    diary.add("Before.ics", "");
    EXPECT_EQ(diary.on("2014-03-05"), "Standup\n5 Mar 2014, 09:00 - 5 Mar 2014, 09:15\n\n");
}

TEST(DayCalendars, KeepTheirGoodEventsBesideABrokenOne)
{
    const Diary diary(event({"UID:9", "SUMMARY:Broken", "DTSTART:not a time", "DTEND:20140305T091500Z"}) +
                      event({"UID:8", "SUMMARY:Timeless"}) + lunch);
    EXPECT_EQ(diary.on("2014-03-05"), "Lunch\n5 Mar 2014, 12:00 - 5 Mar 2014, 13:00\n\n");
}

TEST(DayCalendars, AreReadAnewForEachDay)
{
    const Diary diary(standup);
    diary.on("2014-03-05");
    diary.add("Calendar.ics", calendarOf(lunch));
    EXPECT_EQ(diary.on("2014-03-05"), "Lunch\n5 Mar 2014, 12:00 - 5 Mar 2014, 13:00\n\n");
}

// What the store is asked

TEST(DayEventStore, IsMadeForEachQuestionAndGoesWithIt)
{
    const Diary diary(standup);
    static int made;
    static int gone;
    simulator::addMethod<"dealloc">(
        objc_getClass("EKEventStore"), +[](NSObject* self, SEL) {
            ++gone;
            sendSuper<"dealloc">(objc_getClass("NSObject"), self);
        });
    static NSObject* (*initialise)(NSObject*, SEL);
    initialise = simulator::replaceMethod<"init">(
        objc_getClass("EKEventStore"), +[](NSObject* self, SEL selector) {
            ++made;
            return initialise(self, selector);
        });
    diary.on("2014-03-05");
    diary.on("2014-03-05");
    EXPECT_EQ(made, 2);
    EXPECT_EQ(gone, 2);
}

TEST(DayEventStore, IsAskedForOneCalendarDayOfTheDefaultCalendar)
{
    const RegionalPhone phone({.language = "en_US.UTF-8", .timeZone = "Europe/Berlin"});
    static NSObject* const defaultCalendar = send<"new", NSObject*>(objc_getClass("NSObject"));
    static std::vector<std::string> questions;
    const Class store = objc_getClass("EKEventStore");
    simulator::replaceMethod<"defaultCalendarForNewEvents">(store, +[](NSObject*, SEL) { return defaultCalendar; });
    simulator::replaceMethod<"predicateForEventsWithStartDate:endDate:calendars:">(
        store, +[](NSObject*, SEL, NSDate* start, NSDate* end, NSArray* calendars) -> NSObject* {
            questions.push_back(textOf(start));
            questions.push_back(textOf(end));
            EXPECT_EQ(calendars->count(), 1U);
            EXPECT_EQ(calendars->objectAtIndex(0), defaultCalendar);
            return defaultCalendar;
        });
    simulator::replaceMethod<"eventsMatchingPredicate:">(
        store, +[](NSObject*, SEL, NSObject* predicate) -> NSArray* {
            EXPECT_EQ(predicate, defaultCalendar);
            return nullptr;
        });
    const auto calendar = newCalendar();
    NSString* const events = send<"getCalenderEventsForDay:", NSString*>(calendar.get(), localTime("2014-03-30T01:30:00"));
    EXPECT_EQ(textOf(events), "");
    EXPECT_THAT(questions, testing::ElementsAre("2014-03-30 01:30:00 +0100", "2014-03-31 01:30:00 +0200"));
}

TEST(DayEventStore, IsReadInItsOwnOrder)
{
    // The store's answer is not sorted again.
    const Diary diary(standup + lunch);
    static NSArray* (*matching)(NSObject*, SEL, NSObject*);
    matching = simulator::replaceMethod<"eventsMatchingPredicate:">(
        objc_getClass("EKEventStore"), +[](NSObject* self, SEL selector, NSObject* predicate) {
            NSArray* const events = matching(self, selector, predicate);
            const id turned[] = {events->objectAtIndex(1), events->objectAtIndex(0)};
            return NSArray::arrayWithObjects_count(turned, 2);
        });
    EXPECT_EQ(diary.on("2014-03-05"), "Lunch\n5 Mar 2014, 12:00 - 5 Mar 2014, 13:00\n\n"
                                      "Standup\n5 Mar 2014, 09:00 - 5 Mar 2014, 09:15\n\n");
}

// Dates

TEST(DateText, HasAPlainDayAShortMonthAndTwentyFourHours)
{
    const RegionalPhone phone;
    const auto calendar = newCalendar();
    const auto written = [&](const char* time) {
        return textOf(send<"getStringFromDate:", NSString*>(calendar.get(), localTime(time)));
    };
    EXPECT_EQ(written("2014-03-05T09:00:00"), "5 Mar 2014, 09:00");
    EXPECT_EQ(written("2014-12-31T23:59:59"), "31 Dec 2014, 23:59");
    EXPECT_EQ(written("2014-01-01T00:00:00"), "1 Jan 2014, 00:00");
    EXPECT_EQ(written("2014-06-15T13:05:00"), "15 Jun 2014, 13:05");
}

namespace {

struct DateLanguage {
    const char* name;
    const char* language;
    const char* text;
};

std::ostream& operator<<(std::ostream& stream, const DateLanguage& language)
{
    return stream << language.text;
}

} // namespace

class DateTextIn : public testing::TestWithParam<DateLanguage> {};

TEST_P(DateTextIn, IsTheUsersLanguage)
{
    const RegionalPhone phone({.language = GetParam().language, .timeZone = "UTC"});
    const auto calendar = newCalendar();
    EXPECT_EQ(textOf(send<"getStringFromDate:", NSString*>(calendar.get(), localTime("2014-03-05T09:00:00"))), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(, DateTextIn,
                         testing::Values(DateLanguage{"English", "en_US.UTF-8", "5 Mar 2014, 09:00"},
                                         DateLanguage{"German", "de_DE.UTF-8", "5 März 2014, 09:00"},
                                         DateLanguage{"French", "fr_FR.UTF-8", "5 mars 2014, 09:00"},
                                         DateLanguage{"Arabic", "ar_EG.UTF-8", "٥ مارس ٢٠١٤, ٠٩:٠٠"},
                                         DateLanguage{"Persian", "fa_IR.UTF-8@calendar=gregorian", "۵ مارس ۲۰۱۴, ۰۹:۰۰"}),
                         [](const auto& info) { return info.param.name; });

// Through the console

TEST(DayEventsOverTheConsole, AreThoseThatTheConsoleAdded)
{
    Console console;
    console.environment["LANG"] = console.environment["LC_ALL"] = "en_US.UTF-8";
    console.environment["TZ"] = "Europe/Berlin";
    const auto lines = linesOf(console, "clock 2014-03-05T00:00:00\n"
                                        "let cal send APLCalendar alloc\n"
                                        "let cal send cal init\n"
                                        "send cal getCalenderEventsForDay: @NSDate.date\n"
                                        "event Lunch 2014-03-05T12:00:00 2014-03-05T13:00:00\n"
                                        "event \"Stand up\" 2014-03-05T09:00:00 2014-03-05T09:15:00\n"
                                        "event Tomorrow 2014-03-06T00:00:00 2014-03-06T00:15:00\n"
                                        "send cal getCalenderEventsForDay: @NSDate.date\n");
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_EQ(lines[0], "");
    EXPECT_EQ(lines[1], "Stand up\n5 Mar 2014, 09:00 - 5 Mar 2014, 09:15\n\n"
                        "Lunch\n5 Mar 2014, 12:00 - 5 Mar 2014, 13:00\n\n");
}
