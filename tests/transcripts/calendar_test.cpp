#include <gtest/gtest.h>

#include "platform/EventKit/EventKit.hpp"
#include "platform/UIKit/UIGestureRecognizer.hpp"
#include "simulator/runtime/SimulatedClass.hpp"
#include "simulator/services/event_store.hpp"
#include "tests/calendar/MonthCalendar.hpp"
#include "tests/support/objects.hpp"
#include "tests/transcripts/month_tables.hpp"

/// The month calendar.

namespace {

using tables::Month;

const Month march;
const Month april{.month = 4, .name = "April", .length = 30, .lengthBefore = 31, .weekday = 3};
const Month february{.month = 2, .name = "February", .length = 28, .lengthBefore = 31, .weekday = 7};

class CalendarTranscript : public testing::Test {
protected:
    explicit CalendarTranscript(const Region& region = {}) : phone_(region), calendar_(newCalendarOn("2014-03-05"))
    {
        transcript_.name("calendar", calendar_);
    }

    template <FixedString Name, class Result = void, class... Arguments>
    void expect(const Rows& rows, Arguments... arguments)
    {
        transcript_.expect([&] { send<Name, Result>(calendar_.get(), arguments...); }, rows);
    }

    RegionalPhone phone_;
    Owned<UIView> calendar_;
    Transcript transcript_;
};

class GermanCalendarTranscript : public CalendarTranscript {
protected:
    GermanCalendarTranscript() : CalendarTranscript(german) {}
};

Rows locked(const Rows& rows)
{
    return Rows{"objc_sync_enter calendar"} + rows + Rows{"objc_sync_exit calendar"};
}

/// Removing so many subviews.
Rows clearing(const std::vector<std::string>& views)
{
    // The array hands all of them out at once.
    const std::string walking = "views countByEnumeratingWithState: room objects: room count: 16";
    Rows rows{"calendar subviews = views", walking};
    for (const std::string& view : views)
        rows.push_back(view + " removeFromSuperview");
    return views.empty() ? rows : rows + Rows{walking};
}

/// The subviews as they lie, each called by its place.
std::vector<std::string> nameSubviews(UIView* calendar, Transcript& transcript)
{
    std::vector<std::string> names;
    for (UIView* view : subviewsOf(calendar)) {
        names.push_back("view " + std::to_string(names.size()));
        transcript.name(names.back(), view);
    }
    return names;
}

} // namespace

// Making one

TEST_F(CalendarTranscript, OfMakingOne)
{
    const Owned<UIView> made = adopt(send<"alloc", UIView*>(objc_getClass("APLCalendar")));
    Transcript()
        .name("calendar", made)
        .expect([&] { made->init(); },
                Rows{"calendar initWithFrame: (0 0 320 320)"} + tables::calendarConstruction(march, "(0 0 320 320)"));
}

TEST_F(CalendarTranscript, OfMakingASmallerOne)
{
    const Owned<UIView> made = adopt(send<"alloc", UIView*>(objc_getClass("APLCalendar")));
    const Month month{.width = 280, .cell = 40, .border = 0, .font = 11, .title = 16};
    Transcript()
        .name("calendar", made)
        .expect([&] { made->initWithFrame(CGRect::make(20, 10, 280, 300)); },
                tables::calendarConstruction(month, "(20 10 280 300)"));
}

TEST_F(CalendarTranscript, OfMakingOneThatItsSuperclassRefuses)
{
    const Owned<UIView> made = adopt(send<"alloc", UIView*>(objc_getClass("APLCalendar")));
    simulator::replaceMethod<"initWithFrame:">(objc_getClass("UIView"), +[](UIView*, SEL, CGRect) -> UIView* { return nullptr; });
    Transcript()
        .name("calendar", made)
        .expect([&] { made->initWithFrame(CGRect::make(0, 0, 1, 1)); }, {"calendar super initWithFrame: (0 0 1 1)"});
}

// The month's arithmetic

TEST_F(CalendarTranscript, OfTheMonthsLength)
{
    expect<"getTotalDaysInCurrentMonth", NSInteger>(tables::monthLength(march));
}

TEST_F(CalendarTranscript, OfTheLengthOfAMonthWithoutTheDayOfCreation)
{
    const Owned<UIView> made = newCalendarOn("2014-01-31");
    setMonth(made, 2014, 2);
    Transcript().name("calendar", made).expect([&] { lengthOfShownMonth(made); }, tables::monthLength({.day = 28, .month = 2}));
}

TEST_F(CalendarTranscript, OfTheWeekdayOfTheFirst)
{
    expect<"getOffsetDays", NSInteger>(tables::weekdayOfTheFirst(march));
}

TEST_F(GermanCalendarTranscript, OfTheWeekdayOfTheFirst)
{
    expect<"getOffsetDays", NSInteger>(tables::weekdayOfTheFirst({.weekday = 6}));
}

TEST_F(CalendarTranscript, OfSteps)
{
    expect<"goOneMonthForward">({});
    expect<"goOneMonthBack">({});
    expect<"goOneYearForward">({});
    expect<"goOneYearBack">({});
    setMonth(calendar_, 2014, 12);
    expect<"goOneMonthForward">({});
    expect<"goOneMonthBack">({});
}

// Drawing

TEST_F(CalendarTranscript, OfTheHeader)
{
    expect<"drawHeader">(tables::monthHeader(march));
}

TEST_F(CalendarTranscript, OfTheGrid)
{
    expect<"drawDays">(tables::monthGrid(march));
}

TEST_F(GermanCalendarTranscript, OfAGridThatBeginsWithTheFirst)
{
    setMonth(calendar_, 2015, 6);
    expect<"drawDays">(
        tables::monthGrid({.month = 6, .year = 2015, .name = "Juni", .length = 30, .lengthBefore = 31, .weekday = 1}));
}

TEST_F(GermanCalendarTranscript, OfAGridWithSixDaysOfTheMonthBefore)
{
    setMonth(calendar_, 2015, 2);
    expect<"drawDays">(
        tables::monthGrid({.month = 2, .year = 2015, .name = "Februar", .length = 28, .lengthBefore = 31, .weekday = 7}));
}

TEST_F(CalendarTranscript, OfTheGridOfAJanuary)
{
    setMonth(calendar_, 2015, 1);
    expect<"drawDays">(
        tables::monthGrid({.month = 1, .year = 2015, .name = "January", .length = 31, .lengthBefore = 31, .weekday = 5}));
}

TEST_F(CalendarTranscript, OfAGreyCell)
{
    expect<"plotCellAtX:Y:Day:isGreyDay:">(tables::dayCell(march, 88, 67, 5, true), NSInteger{88}, NSInteger{67}, NSInteger{5},
                                           YES);
}

TEST_F(CalendarTranscript, OfAnOrdinaryCell)
{
    expect<"plotCellAtX:Y:Day:isGreyDay:">(tables::dayCell(march, 44, 111, 6, false), NSInteger{44}, NSInteger{111}, NSInteger{6},
                                           NO);
}

TEST_F(CalendarTranscript, OfTodaysCell)
{
    expect<"plotCellAtX:Y:Day:isGreyDay:">(tables::dayCell(march, 0, 67, 5, false), NSInteger{0}, NSInteger{67}, NSInteger{5},
                                           NO);
}

TEST_F(CalendarTranscript, OfClearing)
{
    const auto views = nameSubviews(calendar_, transcript_);
    ASSERT_EQ(views.size(), 49U);
    expect<"clearViews">(clearing(views));
    expect<"clearViews">(clearing({}));
}

// Navigation and swipes

namespace {

template <FixedString Operation>
void expectNavigation(UIView* calendar, Transcript& transcript, const std::string& step, const Month& month)
{
    const auto views = nameSubviews(calendar, transcript);
    transcript.expect([&] { send<Operation>(calendar); },
                      locked(Rows{"calendar clearViews"} + clearing(views) + Rows{"calendar " + step, "calendar drawDays"} +
                             tables::monthGrid(month) + Rows{"calendar drawHeader"} + tables::monthHeader(month)));
}

} // namespace

TEST_F(CalendarTranscript, OfTheNextMonth)
{
    expectNavigation<"nextMonth">(calendar_, transcript_, "goOneMonthForward", april);
}

TEST_F(CalendarTranscript, OfThePreviousMonth)
{
    expectNavigation<"prevMonth">(calendar_, transcript_, "goOneMonthBack", february);
}

TEST_F(CalendarTranscript, OfTheNextYear)
{
    expectNavigation<"nextYear">(calendar_, transcript_, "goOneYearForward", {.year = 2015, .weekday = 1});
}

TEST_F(CalendarTranscript, OfThePreviousYear)
{
    expectNavigation<"prevYear">(calendar_, transcript_, "goOneYearBack", {.year = 2013, .weekday = 6});
}

TEST_F(CalendarTranscript, OfASwipe)
{
    UIGestureRecognizer* const swipe = variable<UIGestureRecognizer*>(calendar_, "_recognizer");
    transcript_.name("swipe", swipe);
    expect<"swipePerformed:">({"NSLog 'Swipe!'", "swipe direction"}, swipe);
}

namespace {

/// A recogniser of one direction, and what the handler calls for it.
struct Swipe {
    NSUInteger direction;
    std::string operation;
};

class SwipeTranscript : public CalendarTranscript, public testing::WithParamInterface<Swipe> {};

} // namespace

TEST_P(SwipeTranscript, CallsTheOperationOfItsDirection)
{
    const Owned<NSObject> swipe = adopt(newObject("UISwipeGestureRecognizer"));
    send<"setDirection:">(swipe.get(), GetParam().direction);
    transcript_.name("swipe", swipe);
    const auto calls = transcript_.of([&] { send<"swipePerformed:">(calendar_.get(), swipe.get()); });
    ASSERT_GE(calls.size(), 3U);
    EXPECT_EQ(Rows(calls.begin(), calls.begin() + 3),
              (Rows{"NSLog 'Swipe!'", "swipe direction", "calendar " + GetParam().operation}));
}

INSTANTIATE_TEST_SUITE_P(EachDirection, SwipeTranscript,
                         testing::Values(Swipe{1, "nextMonth"}, Swipe{2, "prevMonth"}, Swipe{4, "prevYear"},
                                         Swipe{8, "nextYear"}));

TEST_F(CalendarTranscript, OfATouchThatARecogniserAsksAbout)
{
    expect<"gestureRecognizer:shouldReceiveTouch:", BOOL>({}, id{nullptr}, id{nullptr});
}

// Selection

namespace {

/// A delegate of all three methods, which has no more than the named ones when it is asked.
Owned<NSObject> newDelegate()
{
    struct State {};
    simulator::SimulatedClass<State>("TranscriptDelegate", "NSObject")
        .method<"didSelectCalendarDay:">(+[](NSObject*, SEL, NSInteger) {})
        .method<"didSelectCalendarDate:">(+[](NSObject*, SEL, NSString*) {})
        .method<"didDeselectCalendarDay:">(+[](NSObject*, SEL, NSInteger) {})
        .registerClass();
    return adopt(newObject("TranscriptDelegate"));
}

Rows pressed()
{
    return {"UIColor greenColor = green", "button setBackgroundColor: green"};
}

Rows released()
{
    return {"UIColor clearColor = clear", "button setBackgroundColor: clear"};
}

/// A number of two digits in a text of its own.
Rows twoDigits(const std::string& number)
{
    Rows rows{"NSString stringWithFormat: '%li' -> '" + number + "'", "[NSMutableString alloc] initWithString: '" + number + "'",
              "'" + number + "' length"};
    if (number.size() == 1)
        rows.push_back("'" + number + "' insertString: '0' atIndex: 0");
    return rows;
}

class SelectionTranscript : public CalendarTranscript {
protected:
    UIButton* button(NSInteger day)
    {
        UIButton* const pressed = buttonOfDay(calendar_, day);
        transcript_.name("button", pressed);
        return pressed;
    }

    /// The calendar does not keep it.
    void setDelegate(Owned<NSObject> delegate)
    {
        send<"setDelegate:">(calendar_.get(), delegate.get());
        transcript_.name("delegate", delegate);
        delegate_ = std::move(delegate);
    }

private:
    Owned<NSObject> delegate_;
};

} // namespace

TEST_F(SelectionTranscript, WithoutADelegate)
{
    UIButton* const seven = button(7);
    expect<"selectDay:">(pressed() + Rows{"calendar delegate", "calendar delegate"}, seven);
    expect<"deselectDay:">(released() + Rows{"calendar delegate"}, seven);
}

TEST_F(SelectionTranscript, WithADelegateThatImplementsNothing)
{
    setDelegate(adopt(newObject("NSObject")));
    UIButton* const seven = button(7);
    expect<"selectDay:">(pressed() + Rows{"calendar delegate", "delegate respondsToSelector: didSelectCalendarDay:",
                                          "calendar delegate", "delegate respondsToSelector: didSelectCalendarDate:"},
                         seven);
    expect<"deselectDay:">(released() + Rows{"calendar delegate", "delegate respondsToSelector: didDeselectCalendarDay:"}, seven);
}

TEST_F(SelectionTranscript, OfADayOfOneDigit)
{
    setDelegate(newDelegate());
    UIButton* const seven = button(7);
    expect<"selectDay:">(pressed() +
                             Rows{"calendar delegate", "delegate respondsToSelector: didSelectCalendarDay:", "calendar delegate",
                                  "button tag", "delegate didSelectCalendarDay: 7", "calendar delegate",
                                  "delegate respondsToSelector: didSelectCalendarDate:", "button tag"} +
                             twoDigits("7") + twoDigits("3") +
                             Rows{"calendar delegate", "NSString stringWithFormat: '%li%@%@' -> '20140307'",
                                  "delegate didSelectCalendarDate: '20140307'"},
                         seven);
    expect<"deselectDay:">(released() + Rows{"calendar delegate", "delegate respondsToSelector: didDeselectCalendarDay:",
                                             "calendar delegate", "button tag", "delegate didDeselectCalendarDay: 7"},
                           seven);
}

TEST_F(SelectionTranscript, OfADayOfTwoDigits)
{
    setDelegate(newDelegate());
    UIButton* const day = button(23);
    setMonth(calendar_, 2014, 11);
    expect<"selectDay:">(pressed() +
                             Rows{"calendar delegate", "delegate respondsToSelector: didSelectCalendarDay:", "calendar delegate",
                                  "button tag", "delegate didSelectCalendarDay: 23", "calendar delegate",
                                  "delegate respondsToSelector: didSelectCalendarDate:", "button tag"} +
                             twoDigits("23") + twoDigits("11") +
                             Rows{"calendar delegate", "NSString stringWithFormat: '%li%@%@' -> '20141123'",
                                  "delegate didSelectCalendarDate: '20141123'"},
                         day);
}

// Events

namespace {

class EventsTranscript : public CalendarTranscript {
protected:
    NSDate* start() const { return start_; }

    /// The end of the period, and the events that the store has in it.
    static Rows asking(bool hasCalendar)
    {
        Rows rows{"EKEventStore new = store",
                  "[NSDateComponents alloc] init = components",
                  "components setDay: 1",
                  "NSCalendar currentCalendar = gregorian",
                  "gregorian dateByAddingComponents: components toDate: start options: 0 = end",
                  "store defaultCalendarForNewEvents" + std::string(hasCalendar ? " = default" : "")};
        if (hasCalendar)
            rows = rows + Rows{"NSArray arrayWithObjects: {default} count: 1 = searched",
                               "store predicateForEventsWithStartDate: start endDate: end calendars: searched = predicate",
                               "store eventsMatchingPredicate: predicate = found",
                               "[NSMutableArray alloc] initWithArray: found = events", "events count"};
        return rows;
    }

    static Rows dateText(const std::string& date)
    {
        return {"calendar getStringFromDate: " + date,
                "[NSDateFormatter alloc] init = formatter",
                "NSLocale currentLocale = locale",
                "formatter setLocale: locale",
                "formatter setDateFormat: 'd MMM yyyy, HH:mm'",
                "formatter stringFromDate: " + date};
    }

    static Rows event(const std::string& index, const std::string& range, const std::string& before, const std::string& title)
    {
        return Rows{"objc_autoreleasePoolPush", "events objectAtIndex: " + index + " = event", "event startDate = from"} +
               dateText("from") + Rows{"event endDate = to"} + dateText("to") +
               Rows{"NSString stringWithFormat: '%@ - %@' -> '" + range + "'", "event title",
                    "NSString stringWithFormat: '%@%@\n%@\n\n' -> '" + before + title + "\n" + range + "\n\n'",
                    "objc_autoreleasePoolPop", "events count"};
    }

    void addEvent(const std::string& title, int fromHour, int toHour)
    {
        constexpr double midnight = 1393977600; // 5 March 2014
        simulator::addEvent(title, midnight + fromHour * 3600, midnight + toHour * 3600);
    }

    void SetUp() override { transcript_.name("start", start_); }

    Owned<NSDate> start_ = NSDate::dateWithTimeIntervalSince1970(1393977600);
};

} // namespace

TEST_F(EventsTranscript, OfADayWithoutEvents)
{
    addEvent("Party", 40, 41);
    expect<"getCalenderEventsForDay:", NSString*>(asking(true), start());
}

TEST_F(EventsTranscript, OfADayWithTwoEvents)
{
    addEvent("Standup", 9, 10);
    addEvent("Lunch", 12, 13);
    const std::string first = "5 Mar 2014, 09:00 - 5 Mar 2014, 10:00";
    expect<"getCalenderEventsForDay:", NSString*>(
        asking(true) + event("0", first, "", "Standup") +
            event("1", "5 Mar 2014, 12:00 - 5 Mar 2014, 13:00", "Standup\n" + first + "\n\n", "Lunch"),
        start());
}

TEST_F(EventsTranscript, OfAStoreWithoutACalendar)
{
    expect<"getCalenderEventsForDay:", NSString*>(asking(false), start());
}

TEST_F(EventsTranscript, OfADatesText)
{
    Rows rows = dateText("start");
    rows.erase(rows.begin());
    expect<"getStringFromDate:", NSString*>(rows, start());
}
