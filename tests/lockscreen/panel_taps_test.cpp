#include <algorithm>
#include <gmock/gmock.h>

#include "platform/UIKit/UIWindow.hpp"
#include "simulator/quartzcore/CGPath.hpp"
#include "simulator/runtime/SimulatedClass.hpp"
#include "simulator/uikit/touch_input.hpp"
#include "tests/support/MessageLog.hpp"
#include "tests/support/MorningPhone.hpp"
#include "tests/support/Picture.hpp"
#include "tests/support/list_items.hpp"
#include "tests/support/panel.hpp"
#include "tests/support/runtime_calls.hpp"
#include "tests/support/strip.hpp"

/// Taps on the two icons, with a finger on the screen.

namespace {

using testing::ElementsAre;

class PanelTaps : public testing::Test {
protected:
    static void expectClosed()
    {
        EXPECT_TRUE(panel::calendarPane()->isHidden());
        EXPECT_TRUE(panel::notificationPane()->isHidden());
        EXPECT_TRUE(panel::tab()->isHidden());
        EXPECT_EQ(panel::tab()->frame(), CGRectZero);
        EXPECT_EQ(panel::topPocket()->alpha(), 0);
    }

    static void expectOpen(UIView* pane, CGRect tab)
    {
        EXPECT_EQ(panel::calendarPane()->isHidden(), pane != panel::calendarPane());
        EXPECT_EQ(panel::notificationPane()->isHidden(), pane != panel::notificationPane());
        EXPECT_FALSE(panel::tab()->isHidden());
        EXPECT_EQ(panel::tab()->frame(), tab);
        EXPECT_EQ(panel::topPocket()->alpha(), 1);
    }
    static void expectCalendarOpen() { expectOpen(panel::calendarPane(), CGRect::make(12, 77, 52, 150)); }
    static void expectNotificationsOpen() { expectOpen(panel::notificationPane(), CGRect::make(256, 77, 52, 150)); }

    /// Notes what the recognisers send to the list view, and what it sends itself.
    static void noteTaps()
    {
        MessageLog::name(simulator::listView(), "list");
        Noted<"SBLockScreenNotificationListView", "imgCalenderTapped", void>::install();
        Noted<"SBLockScreenNotificationListView", "imgNotificationsTapped", void>::install();
        Noted<"SBLockScreenNotificationListView", "normalizePrevTap", void>::install();
        Noted<"SBLockScreenNotificationListView", "cornerRadiusHook", void>::install();
    }

    LockedPhone phone_;
};

NSObject* maskOf(UIView* view)
{
    return send<"mask", NSObject*>(view->layer());
}

} // namespace

TEST_F(PanelTaps, ThePanelIsClosedAtFirst)
{
    expectClosed();
}

TEST_F(PanelTaps, ATapOnTheCalendarIconOpensTheCalendar)
{
    panel::tap(panel::calendarIcon());
    expectCalendarOpen();
}

TEST_F(PanelTaps, ATapOnTheNotificationIconOpensTheNotifications)
{
    panel::tap(panel::notificationIcon());
    expectNotificationsOpen();
}

TEST_F(PanelTaps, ATapOnTheOtherIconSwitches)
{
    panel::tap(panel::calendarIcon());
    panel::tap(panel::notificationIcon());
    expectNotificationsOpen();
    panel::tap(panel::calendarIcon());
    expectCalendarOpen();
}

TEST_F(PanelTaps, ATapOnAnIconWhosePaneIsOpenLeavesItOpen)
{
    for (int i = 0; i < 3; ++i) {
        panel::tap(panel::calendarIcon());
        expectCalendarOpen();
    }
    for (int i = 0; i < 3; ++i) {
        panel::tap(panel::notificationIcon());
        expectNotificationsOpen();
    }
}

TEST_F(PanelTaps, ADoubleTapOnTheCalendarIconCloses)
{
    panel::tap(panel::calendarIcon());
    panel::tap(panel::calendarIcon(), 2);
    expectClosed();
}

TEST_F(PanelTaps, ADoubleTapOnTheNotificationIconCloses)
{
    panel::tap(panel::notificationIcon());
    panel::tap(panel::notificationIcon(), 2);
    expectClosed();
}

TEST_F(PanelTaps, ADoubleTapOnTheOtherIconCloses)
{
    panel::tap(panel::notificationIcon());
    panel::tap(panel::calendarIcon(), 2);
    expectClosed();
}

TEST_F(PanelTaps, ADoubleTapOnAClosedPanelEndsClosed)
{
    panel::tap(panel::calendarIcon(), 2);
    expectClosed();
    panel::tap(panel::notificationIcon(), 2);
    expectClosed();
}

TEST_F(PanelTaps, APanelOpensAgainAfterADoubleTap)
{
    panel::tap(panel::calendarIcon(), 2);
    panel::tap(panel::calendarIcon());
    expectCalendarOpen();
}

TEST_F(PanelTaps, ADoubleTapIsASingleTapFirst)
{
    noteTaps();
    panel::tap(panel::calendarIcon(), 2);
    EXPECT_THAT(MessageLog::messages(),
                ElementsAre("list imgCalenderTapped", "list normalizePrevTap", "list cornerRadiusHook", "list normalizePrevTap"));
    MessageLog::messages().clear();
    panel::tap(panel::notificationIcon(), 2);
    EXPECT_THAT(MessageLog::messages(), ElementsAre("list imgNotificationsTapped", "list normalizePrevTap",
                                                    "list cornerRadiusHook", "list normalizePrevTap"));
}

TEST_F(PanelTaps, ASingleTapIsNoDoubleTap)
{
    noteTaps();
    panel::tap(panel::calendarIcon());
    panel::tap(panel::calendarIcon());
    EXPECT_THAT(MessageLog::messages(), ElementsAre("list imgCalenderTapped", "list normalizePrevTap", "list cornerRadiusHook",
                                                    "list imgCalenderTapped", "list normalizePrevTap", "list cornerRadiusHook"));
}

TEST_F(PanelTaps, TheWholeIconTakesTapsAndNothingBesideIt)
{
    const auto tapAt = [](CGFloat x, CGFloat y) {
        send<"normalizePrevTap">(simulator::listView());
        simulator::tap(simulator::springBoardWindow(), {x, y}, 1);
        return !panel::calendarPane()->isHidden();
    };
    EXPECT_TRUE(tapAt(22, 87));
    EXPECT_TRUE(tapAt(53.5, 118.5));
    EXPECT_FALSE(tapAt(21, 100));
    EXPECT_FALSE(tapAt(54.5, 100));
    EXPECT_FALSE(tapAt(38, 86));
    EXPECT_FALSE(tapAt(38, 119.5));
}

TEST_F(PanelTaps, ATapInAnOpenPaneLeavesItOpen)
{
    panel::tap(panel::calendarIcon());
    simulator::tap(simulator::springBoardWindow(), {160, 400}, 2);
    expectCalendarOpen();
}

// Step by step

TEST_F(PanelTaps, TheResetHidesBothPanesAndTheTabInOrder)
{
    panel::tap(panel::calendarIcon());
    MessageLog::name(panel::calendarPane(), "calendar");
    MessageLog::name(panel::notificationPane(), "notifications");
    MessageLog::name(panel::tab(), "tab");
    MessageLog::name(panel::topPocket(), "pocket");
    Noted<"UIView", "setHidden:", void, BOOL>::install();
    Noted<"UIView", "setFrame:", void, CGRect>::install();
    Noted<"UIView", "setAlpha:", void, CGFloat>::install();
    send<"normalizePrevTap">(simulator::listView());
    std::erase_if(MessageLog::messages(), [](const std::string& message) { return message.starts_with('?'); });
    EXPECT_THAT(MessageLog::messages(), ElementsAre("calendar setHidden: YES", "notifications setHidden: YES",
                                                    "tab setHidden: YES", "tab setFrame: 0,0,0,0", "pocket setAlpha: 0"));
}

TEST_F(PanelTaps, ATapResetsThenTogglesThenRoundsTheTab)
{
    noteTaps();
    MessageLog::name(panel::calendarPane(), "calendar");
    MessageLog::name(panel::notificationPane(), "notifications");
    MessageLog::name(panel::tab(), "tab");
    MessageLog::name(panel::topPocket(), "pocket");
    MessageLog::name(panel::strip(), "strip");
    MessageLog::name(panel::subtitle(), "subtitle");
    Noted<"UIView", "setHidden:", void, BOOL>::install();
    Noted<"UIView", "setFrame:", void, CGRect>::install();
    Noted<"UIView", "setAlpha:", void, CGFloat>::install();
    Noted<"UILabel", "setText:", void, id>::install();
    Noted<"SVAppsView", "clearAll", void>::install();
    const auto messages = [] {
        std::vector<std::string> all = std::exchange(MessageLog::messages(), {});
        std::erase_if(all, [](const std::string& message) { return message.starts_with('?'); });
        return all;
    };
    send<"imgCalenderTapped">(simulator::listView());
    EXPECT_THAT(messages(), ElementsAre("list imgCalenderTapped", "list normalizePrevTap", "calendar setHidden: YES",
                                        "notifications setHidden: YES", "tab setHidden: YES", "tab setFrame: 0,0,0,0",
                                        "pocket setAlpha: 0", "calendar setHidden: NO", "tab setHidden: NO",
                                        "tab setFrame: 12,77,52,150", "pocket setAlpha: 1", "list cornerRadiusHook"));
    send<"imgNotificationsTapped">(simulator::listView());
    EXPECT_THAT(messages(),
                ElementsAre("list imgNotificationsTapped", "list normalizePrevTap", "calendar setHidden: YES",
                            "notifications setHidden: YES", "tab setHidden: YES", "tab setFrame: 0,0,0,0", "pocket setAlpha: 0",
                            "notifications setHidden: NO", "tab setHidden: NO", "tab setFrame: 256,77,52,150",
                            "pocket setAlpha: 1", "subtitle setText: ?", "strip clearAll", "list cornerRadiusHook"));
}

TEST_F(PanelTaps, ATapReadsTheIconsFrameForEachNumberThatItTakesFromIt)
{
    MessageLog::name(panel::calendarIcon(), "calendar icon");
    MessageLog::name(panel::notificationIcon(), "notification icon");
    Noted<"UIImageView", "frame", CGRect>::install();
    send<"imgCalenderTapped">(simulator::listView());
    EXPECT_EQ(std::ranges::count(MessageLog::messages(), "calendar icon frame"), 3);
    send<"imgNotificationsTapped">(simulator::listView());
    EXPECT_EQ(std::ranges::count(MessageLog::messages(), "notification icon frame"), 3);
}

TEST_F(PanelTaps, ATapOpensThePaneThatIsInTheRecordByThen)
{
    static Owned<UIView> newer;
    simulator::replaceMethod<"normalizePrevTap">(
        objc_getClass("SBLockScreenNotificationListView"), +[](NSObject*, SEL) { newer = panel::newListView(); });
    UIView* const olderPane = panel::calendarPane();
    send<"imgCalenderTapped">(simulator::listView());
    EXPECT_NE(panel::calendarPane(), olderPane);
    EXPECT_FALSE(panel::calendarPane()->isHidden());
    EXPECT_FALSE(panel::tab()->isHidden());
    EXPECT_EQ(panel::tab()->frame(), CGRect::make(12, 77, 52, 150));
}

TEST_F(PanelTaps, ATapTogglesWhenNothingIsResetBefore)
{
    // Another extension may keep the panel from being reset.
    simulator::replaceMethod<"normalizePrevTap">(objc_getClass("SBLockScreenNotificationListView"), +[](NSObject*, SEL) {});
    for (UIView* const icon : {panel::calendarIcon(), panel::notificationIcon()}) {
        UIView* const pane = icon == panel::calendarIcon() ? panel::calendarPane() : panel::notificationPane();
        panel::tap(icon);
        EXPECT_FALSE(pane->isHidden());
        EXPECT_FALSE(panel::tab()->isHidden());
        EXPECT_EQ(panel::topPocket()->alpha(), 1);
        EXPECT_EQ(panel::tab()->frame().size, (CGSize{52, 150}));
        panel::tap(icon);
        EXPECT_TRUE(pane->isHidden());
        EXPECT_TRUE(panel::tab()->isHidden());
        EXPECT_EQ(panel::topPocket()->alpha(), 0);
        EXPECT_EQ(panel::tab()->frame(), CGRectZero);
    }
}

TEST_F(PanelTaps, TheTabStandsWhereTheIconIs)
{
    panel::calendarIcon()->setFrame(CGRect::make(60, 90, 40, 30));
    send<"imgCalenderTapped">(simulator::listView());
    EXPECT_EQ(panel::tab()->frame(), CGRect::make(50, 80, 60, 150));
    panel::notificationIcon()->setFrame(CGRect::make(200, 70, 10, 10));
    send<"imgNotificationsTapped">(simulator::listView());
    EXPECT_EQ(panel::tab()->frame(), CGRect::make(190, 60, 30, 150));
}

// The two icons differ

TEST_F(PanelTaps, TheNotificationsTapEmptiesTheStripAndBringsTheWeatherBack)
{
    notify("com.apple.mobilemail");
    notify("org.solvane.ferry");
    // What is still to be laid out does not touch the line.
    simulator::springBoardWindow()->layoutIfNeeded();
    ASSERT_EQ(textOf(panel::subtitle()->text()), "While you were gone...");
    panel::tap(panel::notificationIcon());
    EXPECT_EQ(textOf(panel::subtitle()->text()), morningWeather);
    EXPECT_EQ(panel::strip()->subviews()->count(), 0U);
    EXPECT_EQ(strip::icons(panel::strip())->count(), 0U);
    EXPECT_EQ(panel::strip()->contentSize(), (CGSize{0, 100}));
    // SpringBoard's list is as it was.
    EXPECT_EQ(strip::items(panel::strip())->count(), 2U);
}

TEST_F(PanelTaps, TheCalendarsTapLeavesTheStripAndTheLineAlone)
{
    notify("com.apple.mobilemail");
    send<"imgCalenderTapped">(simulator::listView());
    EXPECT_EQ(textOf(panel::subtitle()->text()), "While you were gone...");
    EXPECT_EQ(panel::strip()->subviews()->count(), 1U);
}

TEST_F(PanelTaps, ClosingLeavesTheStripAndTheLineAlone)
{
    notify("com.apple.mobilemail");
    send<"normalizePrevTap">(simulator::listView());
    EXPECT_EQ(textOf(panel::subtitle()->text()), "While you were gone...");
    EXPECT_EQ(panel::strip()->subviews()->count(), 1U);
}

TEST_F(PanelTaps, LeaveTheGreetingAlone)
{
    panel::headline()->setText(text("Hello"));
    send<"imgCalenderTapped">(simulator::listView());
    send<"imgNotificationsTapped">(simulator::listView());
    EXPECT_EQ(textOf(panel::headline()->text()), "Hello");
}

// The rounded tab

TEST_F(PanelTaps, TheTabsMaskIsMadeOfItsBoundsWithTwoRoundCorners)
{
    static UIView* (*make)(NSObject*, SEL, CGRect, NSUInteger, CGSize);
    make = simulator::replaceMethod<"bezierPathWithRoundedRect:byRoundingCorners:cornerRadii:">(
        simulator::metaclassOf(objc_getClass("UIBezierPath")),
        +[](NSObject* self, SEL message, CGRect rect, NSUInteger corners, CGSize radii) {
            MessageLog::note(self, message, rect, corners, radii);
            return make(self, message, rect, corners, radii);
        });
    panel::tap(panel::calendarIcon());
    EXPECT_THAT(MessageLog::messages(),
                ElementsAre("? bezierPathWithRoundedRect:byRoundingCorners:cornerRadii: 0,0,52,150 3 5,5"));
    EXPECT_STREQ(class_getName(object_getClass(maskOf(panel::tab()))), "CAShapeLayer");
    EXPECT_NE((send<"path", NSObject*>(maskOf(panel::tab()))), nullptr);
}

TEST_F(PanelTaps, TheTabsMaskIsMadeAnewAtEachCall)
{
    panel::tap(panel::calendarIcon());
    const Owned<NSObject> first = maskOf(panel::tab());
    panel::tab()->setFrame(CGRect::make(0, 0, 80, 60));
    send<"cornerRadiusHook">(simulator::listView());
    const Owned<NSObject> second = maskOf(panel::tab());
    EXPECT_NE(second, first.get());
    EXPECT_NE((send<"path", NSObject*>(second.get())), (send<"path", NSObject*>(first.get())));
    send<"cornerRadiusHook">(simulator::listView());
    EXPECT_NE(maskOf(panel::tab()), second.get());
    EXPECT_EQ(panel::tab()->frame(), CGRect::make(0, 0, 80, 60));
}

TEST_F(PanelTaps, TheResetLeavesTheMaskInPlace)
{
    panel::tap(panel::calendarIcon());
    NSObject* const mask = maskOf(panel::tab());
    panel::tap(panel::calendarIcon(), 2);
    EXPECT_NE(maskOf(panel::tab()), mask);
    NSObject* const latest = maskOf(panel::tab());
    send<"normalizePrevTap">(simulator::listView());
    EXPECT_EQ(maskOf(panel::tab()), latest);
}

TEST_F(PanelTaps, TheTabIsRoundAboveAndSquareBelow)
{
    // In red, and without the pane that covers its lower end.
    panel::tap(panel::calendarIcon());
    panel::calendarPane()->setHidden(true);
    UIView* const paint = UIView::alloc()->initWithFrame(panel::tab()->bounds());
    paint->setBackgroundColor(UIColor::colorWithRed_green_blue_alpha(1, 0, 0, 1));
    panel::tab()->addSubview(paint);
    const Picture picture = screenshot();
    constexpr std::uint32_t red = 0xFFFF0000;
    // The tab's pixels go from 24, 154 to 127, 453.
    EXPECT_NE(picture.at(24, 154), red);
    EXPECT_NE(picture.at(25, 155), red);
    EXPECT_NE(picture.at(127, 154), red);
    EXPECT_EQ(picture.at(34, 154), red);
    EXPECT_EQ(picture.at(24, 164), red);
    EXPECT_EQ(picture.at(117, 154), red);
    EXPECT_EQ(picture.at(127, 164), red);
    EXPECT_EQ(picture.at(24, 453), red);
    EXPECT_EQ(picture.at(127, 453), red);
    EXPECT_EQ(picture.at(24, 300), red);
    EXPECT_NE(picture.at(23, 300), red);
    EXPECT_NE(picture.at(128, 300), red);
    EXPECT_NE(picture.at(60, 454), red);
}

TEST_F(PanelTaps, TheTabRunsIntoItsPaneWithoutASeam)
{
    panel::tap(panel::calendarIcon());
    const Picture picture = screenshot();
    // Right above and right below the pane's edge at 130 points, away from the icon and from the pocket's line.
    const auto brightness = [](std::uint32_t pixel) {
        return static_cast<int>((pixel >> 16 & 255) + (pixel >> 8 & 255) + (pixel & 255));
    };
    for (const int x : {40, 60, 100, 120})
        EXPECT_NEAR(brightness(picture.at(x, 258)), brightness(picture.at(x, 263)), 24) << x;
}

// SpringBoard's pocket

namespace {

class MissingPocketDeathTest : public PanelTaps, public testing::WithParamInterface<const char*> {};

} // namespace

TEST_P(MissingPocketDeathTest, EndsSpringBoard)
{
    hideInstanceVariable("_topPocketView");
    EXPECT_DEATH((send<"performSelector:", id>(simulator::listView(), sel_registerName(GetParam()))), "");
}

INSTANTIATE_TEST_SUITE_P(AtATap, MissingPocketDeathTest,
                         testing::Values("normalizePrevTap", "imgCalenderTapped", "imgNotificationsTapped"));

TEST_F(PanelTaps, ReadThePocketAtEachUse)
{
    const std::size_t before = instanceVariableLookups().size();
    send<"imgCalenderTapped">(simulator::listView());
    EXPECT_EQ(instanceVariableLookups().size(), before + 2);
    EXPECT_EQ(instanceVariableLookups().back(), "_topPocketView");
}
