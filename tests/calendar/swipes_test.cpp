#include <gmock/gmock.h>

#include "platform/UIKit/UIGestureRecognizer.hpp"
#include "platform/UIKit/UIWindow.hpp"
#include "platform/runtime/each.hpp"
#include "simulator/foundation/system_log.hpp"
#include "simulator/runtime/SimulatedClass.hpp"
#include "simulator/uikit/touch_input.hpp"
#include "tests/calendar/MonthCalendar.hpp"
#include "tests/support/Console.hpp"
#include "tests/support/MessageLog.hpp"

/// A month calendar's swipe recogniser, and what it makes of a swipe.

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

UISwipeGestureRecognizer* recognizerOf(UIView* calendar)
{
    return variable<UISwipeGestureRecognizer*>(calendar, "_recognizer");
}

std::string monthAfterHandling(UIView* calendar, NSUInteger direction)
{
    setMonth(calendar, 2014, 3);
    const auto recognizer = adopt(UISwipeGestureRecognizer::alloc()->initWithTarget_action(nullptr, nullptr));
    recognizer->setDirection(direction);
    send<"swipePerformed:">(calendar, recognizer.get());
    return shownMonth(calendar);
}

} // namespace

TEST(MonthSwipe, HasOneRecogniserForAllFourDirections)
{
    const RegionalPhone phone;
    const auto calendar = newCalendar();
    UISwipeGestureRecognizer* const recognizer = recognizerOf(calendar);
    EXPECT_EQ(classNameOf(recognizer), "UISwipeGestureRecognizer");
    EXPECT_EQ(recognizer->direction(), 15U);
    EXPECT_EQ(recognizer->view(), calendar.get());
    std::vector<UIGestureRecognizer*> all;
    for (UIGestureRecognizer* one : each<UIGestureRecognizer>(calendar->gestureRecognizers()))
        all.push_back(one);
    EXPECT_THAT(all, ElementsAre(recognizer));
}

TEST(MonthSwipe, LeavesTheRecogniserItsDefaultForTouchesInTheView)
{
    const RegionalPhone phone;
    static std::vector<id> told;
    simulator::replaceMethod<"setCancelsTouchesInView:">(
        objc_getClass("UIGestureRecognizer"), +[](UIGestureRecognizer* self, SEL, BOOL) { told.push_back(self); });
    const auto calendar = newCalendar();
    EXPECT_THAT(told, IsEmpty());
    const auto plain = adopt(UISwipeGestureRecognizer::alloc()->initWithTarget_action(nullptr, nullptr));
    EXPECT_EQ(recognizerOf(calendar)->cancelsTouchesInView(), plain->cancelsTouchesInView());
}

TEST(MonthSwipe, IsReadyBeforeAnythingIsDrawn)
{
    const RegionalPhone phone;
    Noted<"UISwipeGestureRecognizer", "initWithTarget:action:", id, id, SEL>::install();
    Noted<"UISwipeGestureRecognizer", "setDirection:", void, NSUInteger>::install();
    Noted<"UIView", "addGestureRecognizer:", void, id>::install();
    Noted<"APLCalendar", "drawHeader", void>::install();
    Noted<"APLCalendar", "drawDays", void>::install();
    const auto calendar = newCalendar();
    std::vector<std::string> selectors;
    for (const std::string& message : MessageLog::messages()) {
        std::istringstream words(message);
        std::string receiver;
        std::string name;
        words >> receiver >> name;
        selectors.push_back(name);
    }
    EXPECT_THAT(selectors,
                ElementsAre("initWithTarget:action:", "setDirection:", "addGestureRecognizer:", "drawHeader", "drawDays"));
}

TEST(MonthSwipe, AnswersASingleDirectionWithItsNavigation)
{
    const RegionalPhone phone;
    const auto calendar = newCalendarOn("2014-03-15");
    EXPECT_EQ(monthAfterHandling(calendar, 1), "2014-4") << "right";
    EXPECT_EQ(monthAfterHandling(calendar, 2), "2014-2") << "left";
    EXPECT_EQ(monthAfterHandling(calendar, 4), "2013-3") << "up";
    EXPECT_EQ(monthAfterHandling(calendar, 8), "2015-3") << "down";
}

TEST(MonthSwipe, DrawsTheMonthThatItGoesTo)
{
    const RegionalPhone phone(german);
    const auto calendar = newCalendarOn("2014-03-15");
    monthAfterHandling(calendar, 1);
    EXPECT_EQ(gridOf(calendar).front(), "(31) 1 2 3 4 5 6");
}

TEST(MonthSwipe, AnswersAnyOtherValueWithNothing)
{
    const RegionalPhone phone;
    const auto calendar = newCalendarOn("2014-03-15");
    const auto drawn = subviewsOf(calendar);
    for (const NSUInteger direction : {0U, 3U, 5U, 6U, 7U, 9U, 10U, 11U, 12U, 13U, 14U, 15U, 16U, 17U})
        EXPECT_EQ(monthAfterHandling(calendar, direction), "2014-3") << direction;
    EXPECT_EQ(subviewsOf(calendar), drawn);
}

TEST(MonthSwipe, IsLoggedBeforeAnythingIsDrawn)
{
    const RegionalPhone phone(german);
    const auto calendar = newCalendarOn("2014-03-15");
    simulator::takeSystemLog();
    monthAfterHandling(calendar, 1);
    EXPECT_THAT(simulator::takeSystemLog(), ElementsAre("Swipe!", "dayOfWeek: 0"));
    monthAfterHandling(calendar, 15);
    EXPECT_THAT(simulator::takeSystemLog(), ElementsAre("Swipe!"));
}

TEST(MonthSwipe, OfAFingerIsLoggedAndChangesNothing)
{
    const RegionalPhone phone(german);
    const auto calendar = newCalendarOn("2014-03-15");
    phone.window()->addSubview(calendar);
    const auto drawn = subviewsOf(calendar);
    simulator::takeSystemLog();
    using simulator::Direction;
    for (const Direction direction : {Direction::left, Direction::right, Direction::up, Direction::down}) {
        simulator::swipe(phone.window(), {160, 200}, direction);
        EXPECT_THAT(simulator::takeSystemLog(), ElementsAre("Swipe!"));
        EXPECT_EQ(shownMonth(calendar), "2014-3");
        EXPECT_EQ(subviewsOf(calendar), drawn);
    }
}

TEST(MonthSwipe, OfAFingerTurnsThePageOnceASingleDirectionIsSet)
{
    const RegionalPhone phone(german);
    const auto calendar = newCalendarOn("2014-03-15");
    phone.window()->addSubview(calendar);
    recognizerOf(calendar)->setDirection(UISwipeGestureRecognizerDirectionDown);
    simulator::swipe(phone.window(), {160, 100}, simulator::Direction::down);
    EXPECT_EQ(shownMonth(calendar), "2015-3");
}

TEST(MonthSwipe, OverTheConsoleIsLoggedAndChangesNothing)
{
    const Console console;
    const auto lines = linesOf(console, "clock 2014-03-15T12:00:00\n"
                                        "let cal send APLCalendar alloc\n"
                                        "let cal send cal init\n"
                                        "add cal 0,100\n"
                                        "send cal layoutIfNeeded\n"
                                        "tree cal\n"
                                        "log\n"
                                        "swipe cal left\n"
                                        "swipe 40,240 right\n"
                                        "swipe 300,380 up\n"
                                        "swipe 300,200 down\n"
                                        "log\n"
                                        "show cal._month\n"
                                        "tree cal\n");
    ASSERT_EQ(lines.size(), 6U);
    EXPECT_EQ(lines[2], Json({"dayOfWeek: 5"}));
    EXPECT_EQ(lines[3], Json({"Swipe!", "Swipe!", "Swipe!", "Swipe!"}));
    EXPECT_EQ(lines[4], 3);
    EXPECT_EQ(lines[5], lines[1]);
}

TEST(MonthSwipe, LetsEveryTouchThrough)
{
    const RegionalPhone phone;
    const auto calendar = newCalendar();
    UIGestureRecognizer* const recognizer = recognizerOf(calendar);
    EXPECT_EQ((send<"gestureRecognizer:shouldReceiveTouch:", BOOL>(calendar.get(), recognizer, id{nullptr})), YES);
    EXPECT_EQ((send<"gestureRecognizer:shouldReceiveTouch:", BOOL>(calendar.get(), id{nullptr}, id{nullptr})), YES);
}
