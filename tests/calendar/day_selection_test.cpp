#include <gmock/gmock.h>

#include "platform/UIKit/UIWindow.hpp"
#include "simulator/runtime/SimulatedClass.hpp"
#include "simulator/uikit/touch_input.hpp"
#include "tests/calendar/MonthCalendar.hpp"
#include "tests/support/Console.hpp"
#include "tests/support/MessageLog.hpp"

/// What becomes of a finger on a day.

namespace {

using simulator::Colour;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr Colour green{0, 1, 0, 1};
constexpr Colour clear{};

struct Nothing {};

void note(const std::string& message)
{
    MessageLog::messages().push_back(message);
}

void didSelectDay(NSObject*, SEL, NSInteger day)
{
    note("selected day " + std::to_string(day));
}

void didSelectDate(NSObject*, SEL, NSString* date)
{
    note("selected date " + textOf(date));
}

void didDeselectDay(NSObject*, SEL, NSInteger day)
{
    note("deselected day " + std::to_string(day));
}

enum Methods : unsigned { none = 0, selectDay = 1, selectDate = 2, deselectDay = 4, all = 7 };

/// A delegate that implements these methods.
Owned<NSObject> delegateWith(unsigned methods)
{
    simulator::SimulatedClass<Nothing> builder("DayObserver", "NSObject");
    builder.adopts("APLCalendarDelegate");
    if ((methods & selectDay) != 0)
        builder.method<"didSelectCalendarDay:">(didSelectDay);
    if ((methods & selectDate) != 0)
        builder.method<"didSelectCalendarDate:">(didSelectDate);
    if ((methods & deselectDay) != 0)
        builder.method<"didDeselectCalendarDay:">(didDeselectDay);
    return adopt(send<"new", NSObject*>(builder.registerClass()));
}

constexpr CGPoint elsewhere{160, 500};

/// Moves the finger away more slowly than a swipe goes.
void drag(CGPoint point)
{
    constexpr double pause = 2;
    simulator::touchMove(point, pause);
}

class DayTouch : public testing::Test {
protected:
    void show(const std::string& day, unsigned methods = all)
    {
        calendar_ = newCalendarOn(day);
        delegate_ = delegateWith(methods);
        send<"setDelegate:">(calendar_.get(), delegate_.get());
        phone_.window()->addSubview(calendar_);
    }

    void press(NSInteger day) const { simulator::touchDown(phone_.window(), middleOf(buttonOfDay(calendar_, day))); }
    /// Presses a day and drags the finger away.
    void pressAndLeave(NSInteger day, CGPoint point) const
    {
        press(day);
        drag(point);
    }
    void pressCell(std::size_t index) const { simulator::touchDown(phone_.window(), middleOf(dayButtons(calendar_)[index])); }

    static CGPoint middleOf(UIView* view)
    {
        const CGRect bounds = view->bounds();
        return view->convertPoint_toView({CGRectGetMidX(bounds), CGRectGetMidY(bounds)}, nullptr);
    }

    static Colour backgroundOf(UIButton* button) { return colourOf(send<"backgroundColor", UIColor*>(button)); }
    Colour backgroundOfDay(NSInteger day) const { return backgroundOf(buttonOfDay(calendar_, day)); }

    RegionalPhone phone_{german};
    Owned<UIView> calendar_;
    Owned<NSObject> delegate_;
};

} // namespace

TEST_F(DayTouch, TellsOfTheDayThenOfTheDateAndOfTheEnd)
{
    show("2014-03-15");
    press(7);
    EXPECT_THAT(MessageLog::messages(), ElementsAre("selected day 7", "selected date 20140307"));
    simulator::touchUp();
    EXPECT_THAT(MessageLog::messages(), ElementsAre("selected day 7", "selected date 20140307", "deselected day 7"));
}

TEST_F(DayTouch, EndsOutsideTheDayAsItEndsInside)
{
    show("2014-03-15");
    pressAndLeave(7, elsewhere);
    simulator::touchUp(elsewhere);
    EXPECT_THAT(MessageLog::messages(), ElementsAre("selected day 7", "selected date 20140307", "deselected day 7"));
    EXPECT_EQ(backgroundOfDay(7), clear);
}

TEST_F(DayTouch, EndsOnAnotherDayWithTheDayThatWasPressed)
{
    show("2014-03-15");
    const CGPoint other = middleOf(buttonOfDay(calendar_, 19));
    pressAndLeave(7, other);
    simulator::touchUp(other);
    EXPECT_THAT(MessageLog::messages(), ElementsAre("selected day 7", "selected date 20140307", "deselected day 7"));
    EXPECT_EQ(backgroundOfDay(7), clear);
}

TEST_F(DayTouch, MakesTheDayGreenWhileTheFingerIsDown)
{
    show("2014-03-15");
    press(7);
    EXPECT_EQ(backgroundOfDay(7), green);
    drag(elsewhere);
    EXPECT_EQ(backgroundOfDay(7), green);
    simulator::touchUp(elsewhere);
    EXPECT_EQ(backgroundOfDay(7), clear);
    press(8);
    EXPECT_EQ(backgroundOfDay(8), green);
    simulator::touchUp();
    EXPECT_EQ(backgroundOfDay(8), clear);
}

TEST_F(DayTouch, ChangesNothingElseOfTheDay)
{
    show("2014-03-15");
    UIButton* const button = buttonOfDay(calendar_, 7);
    id const gradient = button->layer()->sublayers()->objectAtIndex(0);
    press(7);
    EXPECT_EQ(button->layer()->sublayers()->objectAtIndex(0), gradient);
    EXPECT_EQ(titleOf(button), "7");
    EXPECT_EQ(button->tag(), 7);
    EXPECT_EQ(shownMonth(calendar_), "2014-3");
    EXPECT_EQ(variable(calendar_, "_today"), 15);
    simulator::touchUp();
}

TEST_F(DayTouch, ColoursTheDayBeforeAnybodyIsTold)
{
    static std::vector<Colour> colours;
    static UIButton* watched;
    show("2014-03-15");
    watched = buttonOfDay(calendar_, 7);
    const auto look = +[](NSObject*, SEL, NSInteger) { colours.push_back(backgroundOf(watched)); };
    simulator::replaceMethod<"didSelectCalendarDay:">(objc_getClass("DayObserver"), look);
    simulator::replaceMethod<"didDeselectCalendarDay:">(objc_getClass("DayObserver"), look);
    press(7);
    simulator::touchUp();
    EXPECT_THAT(colours, ElementsAre(green, clear));
}

TEST_F(DayTouch, OnTodayIsLikeThatOnAnyDay)
{
    show("2014-03-15");
    press(15);
    EXPECT_EQ(backgroundOfDay(15), green);
    simulator::touchUp();
    EXPECT_THAT(MessageLog::messages(), ElementsAre("selected day 15", "selected date 20140315", "deselected day 15"));
}

TEST_F(DayTouch, OnAGreyDayDoesNothing)
{
    show("2014-03-15");
    for (const std::size_t index : {0U, 4U, 36U, 41U}) {
        pressCell(index);
        EXPECT_EQ(backgroundOf(dayButtons(calendar_)[index]), clear) << index;
        simulator::touchUp();
    }
    EXPECT_THAT(MessageLog::messages(), IsEmpty());
}

TEST_F(DayTouch, WritesTheDayOfTheMonthThatIsShown)
{
    show("2014-03-15");
    send<"nextMonth">(calendar_.get());
    send<"nextYear">(calendar_.get());
    press(7);
    simulator::touchUp();
    EXPECT_THAT(MessageLog::messages(), ElementsAre("selected day 7", "selected date 20150407", "deselected day 7"));
}

TEST_F(DayTouch, WritesTwoDigitsAsTheyAre)
{
    show("2014-11-02");
    press(23);
    simulator::touchUp();
    EXPECT_THAT(MessageLog::messages(), ElementsAre("selected day 23", "selected date 20141123", "deselected day 23"));
}

TEST_F(DayTouch, WritesAYearAsItIs)
{
    show("2014-03-15", selectDate);
    for (const auto& [year, month, day, text] :
         {std::tuple(999, 1, 2, "9990102"), std::tuple(7, 12, 31, "71231"), std::tuple(12345, 10, 1, "123451001")}) {
        MessageLog::messages().clear();
        showMonth(calendar_, year, month);
        press(day);
        simulator::touchUp();
        EXPECT_THAT(MessageLog::messages(), ElementsAre(std::string("selected date ") + text));
    }
}

TEST_F(DayTouch, TellsADelegateThatImplementsNothingNothing)
{
    show("2014-03-15", none);
    press(7);
    simulator::touchUp();
    EXPECT_THAT(MessageLog::messages(), IsEmpty());
    EXPECT_EQ(backgroundOfDay(7), clear);
}

TEST_F(DayTouch, TellsADelegateOfTheDateAlone)
{
    show("2014-03-15", selectDate);
    press(7);
    simulator::touchUp();
    EXPECT_THAT(MessageLog::messages(), ElementsAre("selected date 20140307"));
}

TEST_F(DayTouch, TellsADelegateOfTheSelectedDayAlone)
{
    show("2014-03-15", selectDay);
    press(7);
    simulator::touchUp();
    EXPECT_THAT(MessageLog::messages(), ElementsAre("selected day 7"));
}

TEST_F(DayTouch, TellsADelegateOfTheEndAlone)
{
    show("2014-03-15", deselectDay);
    press(7);
    EXPECT_THAT(MessageLog::messages(), IsEmpty());
    simulator::touchUp();
    EXPECT_THAT(MessageLog::messages(), ElementsAre("deselected day 7"));
}

TEST_F(DayTouch, TellsNobodyWithoutADelegate)
{
    show("2014-03-15");
    send<"setDelegate:">(calendar_.get(), id{nullptr});
    press(7);
    EXPECT_EQ(backgroundOfDay(7), green);
    simulator::touchUp();
    EXPECT_EQ(backgroundOfDay(7), clear);
    EXPECT_THAT(MessageLog::messages(), IsEmpty());
}

TEST_F(DayTouch, TellsNobodyOnceTheDelegateIsGone)
{
    show("2014-03-15");
    delegate_ = nullptr;
    press(7);
    EXPECT_EQ(backgroundOfDay(7), green);
    simulator::touchUp();
    EXPECT_EQ(backgroundOfDay(7), clear);
    EXPECT_THAT(MessageLog::messages(), IsEmpty());
}

TEST_F(DayTouch, TellsNobodyOfTheEndWhenTheDelegateGoesInBetween)
{
    show("2014-03-15");
    {
        const AutoreleasePool pool;
        press(7);
    }
    delegate_ = nullptr;
    simulator::touchUp();
    EXPECT_THAT(MessageLog::messages(), ElementsAre("selected day 7", "selected date 20140307"));
}

TEST_F(DayTouch, KeepsNoSelection)
{
    show("2014-03-15");
    press(7);
    simulator::touchUp();
    press(7);
    simulator::touchUp();
    EXPECT_EQ(MessageLog::messages().size(), 6U);
}

TEST_F(DayTouch, DoesNothingWhenTheCalendarTakesNoTouches)
{
    show("2014-03-15");
    calendar_->setUserInteractionEnabled(false);
    press(7);
    simulator::touchUp();
    EXPECT_THAT(MessageLog::messages(), IsEmpty());
}

TEST(DayTouchOverTheConsole, MakesTheDayGreenWhileTheFingerIsDown)
{
    Console console;
    console.environment["LANG"] = console.environment["LC_ALL"] = "de_DE.UTF-8";
    // 7 March 2014 stands in the second row, under "Fri".
    const auto lines = linesOf(console, "clock 2014-03-15T12:00:00\n"
                                        "let cal send APLCalendar alloc\n"
                                        "let cal send cal init\n"
                                        "add cal 0,100\n"
                                        "show cal.subviews[18].currentTitle\n"
                                        "press 198,233\n"
                                        "show cal.subviews[18].backgroundColor\n"
                                        "release 20,40\n"
                                        "show cal.subviews[18].backgroundColor\n");
    ASSERT_EQ(lines.size(), 3U);
    EXPECT_EQ(lines[0], "7");
    EXPECT_EQ(lines[1]["rgba"], Json({0, 1, 0, 1}));
    EXPECT_EQ(lines[2]["rgba"], Json({0, 0, 0, 0}));
}
