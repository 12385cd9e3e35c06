#include <gmock/gmock.h>

#include "simulator/runtime/SimulatedClass.hpp"
#include "tests/support/Console.hpp"
#include "tests/support/MessageLog.hpp"
#include "tests/support/MorningPhone.hpp"
#include "tests/support/Picture.hpp"
#include "tests/support/list_items.hpp"
#include "tests/support/panel.hpp"
#include "tests/support/runtime_calls.hpp"
#include "tests/support/strip.hpp"

/// Where a layout pass puts the pieces of the panel, and the two lines that it writes.

namespace {

using testing::ElementsAre;

class PanelLayout : public testing::Test {
protected:
    LockedPhone phone_;
};

/// What each screen gives.
struct Screen {
    int width;
    int height;
    int scale;
};

void PrintTo(const Screen& screen, std::ostream* stream)
{
    *stream << screen.width << 'x' << screen.height;
}

class Screens : public testing::TestWithParam<Screen> {
protected:
    std::vector<Json> lines(const std::vector<std::string>& paths) const
    {
        const auto [width, height, scale] = GetParam();
        Console console;
        console.options = {"--screen", std::to_string(width) + 'x' + std::to_string(height) + '@' + std::to_string(scale)};
        std::string script = "clock 2014-03-05T08:30:00\nweather 21 26\nlock\n";
        for (const std::string& path : paths)
            script += path + '\n';
        return linesOf(console, script);
    }
};

/// The view of that name in a tree, or null.
Json named(const Json& tree, const std::string& name)
{
    if (tree.value("name", "") == name)
        return tree;
    for (const Json& subview : tree["subviews"]) {
        if (Json found = named(subview, name); found != nullptr)
            return found;
    }
    return nullptr;
}

} // namespace

TEST_P(Screens, PutEveryPieceInItsPlace)
{
    const auto [width, height, scale] = GetParam();
    const auto shown = lines({"show headlineLabel.frame", "show subtitleLabel.frame", "show calendarIconView.frame",
                              "show notificationIconView.frame", "show appsView.frame", "show calendarPaneView.frame",
                              "show notificationPaneView.frame", "show listView._tableView.frame", "show widgetView.frame",
                              "show listView._topPocketView.frame", "show listView._containerView.frame", "show tabView.frame"});
    EXPECT_EQ(shown.at(0), Json({0, 0, width, 100}));
    EXPECT_EQ(shown.at(1), Json({0, 65, width, 50}));
    EXPECT_EQ(shown.at(2), Json({22, 87, 32, 32}));
    EXPECT_EQ(shown.at(3), Json({width - 54, 87, 32, 32}));
    EXPECT_EQ(shown.at(4), Json({76, 100, width - 152, 100}));
    EXPECT_EQ(shown.at(5), Json({0, 130, width, height - 130}));
    EXPECT_EQ(shown.at(6), Json({0, 130, width, height - 130}));
    EXPECT_EQ(shown.at(7), Json({0, 0, width, height - 130}));
    EXPECT_EQ(shown.at(8), Json({0, 0, width, height - 130}));
    EXPECT_EQ(shown.at(9), Json({0, 130, width, 0.5}));
    EXPECT_EQ(shown.at(10), Json({0, 0, width, height}));
    EXPECT_EQ(shown.at(11), Json({0, 0, 0, 0}));
}

TEST_P(Screens, PutTheTabsAtTheirIcons)
{
    const int width = GetParam().width;
    const auto shown = lines({"tap calendarIconView", "show tabView.frame", "tap notificationIconView", "show tabView.frame"});
    EXPECT_THAT(shown, ElementsAre(Json({12, 77, 52, 150}), Json({width - 64, 77, 52, 150})));
}

TEST_P(Screens, ShowThePanelsTree)
{
    const Json tree = lines({"tree listView"}).at(0);
    const Json& container = tree["subviews"].at(0);
    std::vector<std::string> names;
    for (const Json& view : container["subviews"])
        names.push_back(view.value("name", "-"));
    EXPECT_THAT(names, ElementsAre("appsView", "tabView", "notificationPaneView", "calendarPaneView", "-", "headlineLabel",
                                   "subtitleLabel", "calendarIconView", "notificationIconView"));
    EXPECT_EQ(named(tree, "headlineLabel")["text"], "Good morning, Pal.");
    EXPECT_EQ(named(tree, "subtitleLabel")["text"], "It's 21° C and Cloudy.");
    for (const char* hidden : {"tabView", "notificationPaneView", "calendarPaneView"})
        EXPECT_EQ(named(tree, hidden)["hidden"], true) << hidden;
    for (const char* visible : {"appsView", "headlineLabel", "subtitleLabel", "calendarIconView", "notificationIconView"})
        EXPECT_EQ(named(tree, visible)["hidden"], false) << visible;
    EXPECT_EQ(named(tree, "widgetView")["subviews"].at(0)["hidden"], false);
}

constexpr Screen everySize[] = {{320, 568, 2}, {375, 667, 2}, {414, 736, 3}};

INSTANTIATE_TEST_SUITE_P(OfEverySize, Screens, testing::ValuesIn(everySize));

namespace {

struct Greeting : testing::TestWithParam<Screen> {
    LockedPhone phone{
        {static_cast<CGFloat>(GetParam().width), static_cast<CGFloat>(GetParam().height), static_cast<double>(GetParam().scale)}};

    /// The rows of pixels that a headline changes.
    static Picture::Box rowsOf(const std::string& headline)
    {
        panel::headline()->setText(text(""));
        Picture picture = screenshot();
        panel::headline()->setText(text(headline));
        const Picture written = screenshot();
        constexpr std::uint32_t faintest = 0x20;
        for (std::size_t i = 0; i < picture.pixels.size(); ++i)
            picture.pixels[i] = (written.pixels[i] & 0xFF) - (picture.pixels[i] & 0xFF) > faintest ? 0xFF000000 : 0;
        return picture.ink().value_or(Picture::Box{});
    }
};

} // namespace

TEST_P(Greeting, StandsOnOneLineHoweverLongItIs)
{
    const Picture::Box brief = rowsOf("HHH");
    const Picture::Box lengthy = rowsOf("HHHHHHHHHHHHHHHHHHHH");
    EXPECT_LT(lengthy.bottom - lengthy.top, brief.bottom - brief.top - GetParam().scale);
    EXPECT_EQ(lengthy.bottom, brief.bottom);
}

INSTANTIATE_TEST_SUITE_P(OfEverySize, Greeting, testing::ValuesIn(everySize));

TEST_F(PanelLayout, MakesTheListViewOpaqueAgain)
{
    simulator::listView()->setAlpha(0.3);
    panel::layOut();
    EXPECT_EQ(simulator::listView()->alpha(), 1);
}

TEST_F(PanelLayout, WritesBothLinesAnew)
{
    panel::headline()->setText(text("one"));
    panel::subtitle()->setText(text("two"));
    panel::layOut();
    EXPECT_EQ(textOf(panel::headline()->text()), "Good morning, Pal.");
    EXPECT_EQ(textOf(panel::subtitle()->text()), morningWeather);
}

TEST_F(PanelLayout, FollowsTheTimeOfDay)
{
    freezeClockAtUniversalTime("2014-03-05T22:00:00");
    EXPECT_EQ(textOf(panel::headline()->text()), "Good morning, Pal.");
    panel::layOut();
    EXPECT_EQ(textOf(panel::headline()->text()), "Good night, Pal.");
}

TEST_F(PanelLayout, TakesTheAwayTextAway)
{
    notify("com.apple.mobilemail");
    ASSERT_EQ(textOf(panel::subtitle()->text()), "While you were gone...");
    panel::layOut();
    EXPECT_EQ(textOf(panel::subtitle()->text()), morningWeather);
}

TEST_F(PanelLayout, LeavesTheStripsIconsWhereTheyAre)
{
    notify("com.apple.mobilemail");
    const CGRect before = strip::iconOf(panel::strip(), "com.apple.mobilemail")->frame();
    panel::layOut();
    EXPECT_EQ(strip::iconOf(panel::strip(), "com.apple.mobilemail")->frame(), before);
    EXPECT_EQ(panel::strip()->subviews()->count(), 1U);
}

TEST_F(PanelLayout, KeepsThePocketsSize)
{
    panel::topPocket()->setFrame(CGRect::make(5, 6, 70, 8));
    panel::layOut();
    EXPECT_EQ(panel::topPocket()->frame(), CGRect::make(0, 130, 70, 8));
}

TEST_F(PanelLayout, GivesThePanesTheSameHeightOnEveryPass)
{
    for (int i = 0; i < 3; ++i) {
        panel::layOut();
        EXPECT_EQ(panel::calendarPane()->frame(), CGRect::make(0, 130, 320, 438));
        EXPECT_EQ(panel::notificationPane()->frame(), CGRect::make(0, 130, 320, 438));
        EXPECT_EQ(panel::table()->frame(), CGRect::make(0, 0, 320, 438));
    }
}

using PanelLayoutOfAnotherSpringBoard = TestOn<MorningPhone>;

TEST_F(PanelLayoutOfAnotherSpringBoard, MeasuresThePanesByTheTableBeforeItIsFitted)
{
    // A stock layout that leaves the table as it finds it.
    simulator::replaceMethod<"layoutSubviews">(objc_getClass("SBLockScreenNotificationListView"), +[](NSObject*, SEL) {});
    phone.inject();
    simulator::lockScreen();
    EXPECT_EQ(panel::calendarPane()->frame(), CGRect::make(0, 130, 320, 438));
    EXPECT_EQ(panel::table()->frame(), CGRect::make(0, 0, 320, 438));
    panel::layOut();
    EXPECT_EQ(panel::calendarPane()->frame(), CGRect::make(0, 130, 320, 308));
    EXPECT_EQ(panel::notificationPane()->frame(), CGRect::make(0, 130, 320, 308));
    EXPECT_EQ(panel::table()->frame(), CGRect::make(0, 0, 320, 308));
    EXPECT_EQ(panel::widget()->frame(), CGRect::make(0, 0, 320, 308));
}

TEST_F(PanelLayoutOfAnotherSpringBoard, TakesTheTablesWidthForThePanesAndTheContainersForTheRest)
{
    simulator::replaceMethod<"layoutSubviews">(
        objc_getClass("SBLockScreenNotificationListView"), +[](UIView* self, SEL) {
            panel::container(self)->setFrame(CGRect::make(0, 0, 300, 500));
            panel::table(self)->setFrame(CGRect::make(30, 40, 250, 400));
        });
    phone.inject();
    simulator::lockScreen();
    EXPECT_EQ(panel::calendarPane()->frame(), CGRect::make(0, 130, 250, 270));
    EXPECT_EQ(panel::notificationPane()->frame(), CGRect::make(0, 130, 250, 270));
    EXPECT_EQ(panel::table()->frame(), CGRect::make(0, 0, 250, 270));
    EXPECT_EQ(panel::headline()->frame(), CGRect::make(0, 0, 300, 100));
    EXPECT_EQ(panel::subtitle()->frame(), CGRect::make(0, 65, 300, 50));
    EXPECT_EQ(panel::notificationIcon()->frame(), CGRect::make(246, 87, 32, 32));
    EXPECT_EQ(panel::strip()->frame(), CGRect::make(76, 100, 148, 100));
}

TEST(PanelLayoutInOrder, LetsSpringBoardLayOutFirstAndGoesFromTheTopDown)
{
    MorningPhone phone;
    Noted<"SBLockScreenNotificationListView", "layoutSubviews", void>::install();
    phone.inject();
    simulator::lockScreen();
    MessageLog::name(simulator::listView(), "list");
    MessageLog::name(panel::container(), "container");
    MessageLog::name(panel::table(), "table");
    MessageLog::name(panel::topPocket(), "pocket");
    for (const char* name : {"headlineLabel", "subtitleLabel", "calendarIconView", "calendarPaneView", "notificationIconView",
                             "notificationPaneView", "appsView", "widgetView", "tabView"})
        MessageLog::name(exportedVariable(name), name);
    Noted<"SBLockScreenNotificationListView", "setAlpha:", void, CGFloat>::install();
    Noted<"UILabel", "setFrame:", void, CGRect>::install();
    Noted<"UILabel", "setText:", void, id>::install();
    Noted<"UIImageView", "setFrame:", void, CGRect>::install();
    Noted<"SVAppsView", "setFrame:", void, CGRect>::install();
    Noted<"UITableView", "setFrame:", void, CGRect>::install();
    Noted<"SVWidget", "setFrame:", void, CGRect>::install();
    Noted<"SVWidget", "showCalendar", void>::install();
    MessageLog::messages().clear();
    send<"layoutSubviews">(simulator::listView());
    EXPECT_THAT(MessageLog::messages(),
                ElementsAre("list layoutSubviews", "table setFrame: 0,0,320,568", "list setAlpha: 1",
                            "headlineLabel setFrame: 0,0,320,100", "subtitleLabel setFrame: 0,65,320,50",
                            "calendarIconView setFrame: 22,87,32,32", "notificationIconView setFrame: 266,87,32,32",
                            "table setFrame: 0,0,320,438", "appsView setFrame: 76,100,168,100",
                            "widgetView setFrame: 0,0,320,438", "widgetView showCalendar", "headlineLabel setText: ?",
                            "subtitleLabel setText: ?"));
}

TEST_F(PanelLayout, ShowsTheCalendarInTheMiddleOfItsPane)
{
    auto* const calendar = instanceVariable<UIView>(panel::widget(), "cal");
    calendar->setHidden(true);
    panel::layOut();
    EXPECT_FALSE(calendar->isHidden());
    EXPECT_EQ(calendar->center(), (CGPoint{160, 194}));
}

TEST_F(PanelLayout, KeepsWhatIsOpen)
{
    panel::tap(panel::calendarIcon());
    panel::layOut();
    EXPECT_FALSE(panel::calendarPane()->isHidden());
    EXPECT_TRUE(panel::notificationPane()->isHidden());
    EXPECT_FALSE(panel::tab()->isHidden());
    EXPECT_EQ(panel::tab()->frame(), CGRect::make(12, 77, 52, 150));
    EXPECT_EQ(panel::topPocket()->alpha(), 1);
    panel::tap(panel::notificationIcon());
    panel::layOut();
    EXPECT_TRUE(panel::calendarPane()->isHidden());
    EXPECT_FALSE(panel::notificationPane()->isHidden());
    EXPECT_EQ(panel::tab()->frame(), CGRect::make(256, 77, 52, 150));
}

TEST_F(PanelLayout, KeepsWhatIsClosed)
{
    panel::layOut();
    for (UIView* view : {panel::calendarPane(), panel::notificationPane(), panel::tab()})
        EXPECT_TRUE(view->isHidden());
    EXPECT_EQ(panel::tab()->frame(), CGRectZero);
}

TEST_F(PanelLayout, ReadsThePrivateVariablesAtEachUse)
{
    const auto before = instanceVariableLookups().size();
    send<"layoutSubviews">(simulator::listView());
    const auto lookups = instanceVariableLookups();
    const auto count = [&](const char* name) {
        return std::count(lookups.begin() + static_cast<long>(before), lookups.end(), name);
    };
    // The width for the two lines, the right icon and the strip; the pocket and its size; the table for two panes and itself.
    EXPECT_EQ(count("_containerView"), 4);
    EXPECT_EQ(count("_topPocketView"), 2);
    EXPECT_GE(count("_tableView"), 3);
}

TEST_F(PanelLayout, TakesTheObjectsThatAreThereOnEachPass)
{
    UIView* const container = UIView::alloc()->initWithFrame(CGRect::make(0, 0, 250, 500));
    UIView* const pocket = UIView::alloc()->initWithFrame(CGRect::make(1, 2, 33, 4));
    UIView* const table = UIView::alloc()->initWithFrame(CGRect::make(1, 2, 240, 300));
    const auto list = simulator::listView();
    variable<UIView*>(list, "_containerView") = container;
    variable<UIView*>(list, "_topPocketView") = pocket;
    variable<UIView*>(list, "_tableView") = table;
    panel::layOut();
    // The stock layout has given the container and the table the list view's own size by then.
    EXPECT_EQ(container->frame(), CGRect::make(0, 0, 320, 568));
    EXPECT_EQ(pocket->frame(), CGRect::make(0, 130, 33, 4));
    EXPECT_EQ(table->frame(), CGRect::make(0, 0, 320, 438));
}

TEST_F(PanelLayout, FollowsTheListViewsSize)
{
    simulator::listView()->setFrame(CGRect::make(0, 0, 400, 500));
    panel::layOut();
    EXPECT_EQ(panel::notificationIcon()->frame(), CGRect::make(346, 87, 32, 32));
    EXPECT_EQ(panel::strip()->frame(), CGRect::make(76, 100, 248, 100));
    EXPECT_EQ(panel::calendarPane()->frame(), CGRect::make(0, 130, 400, 370));
}

TEST_F(PanelLayout, SpreadsTheBackdropsOverTheirPanes)
{
    EXPECT_EQ(exportedVariable<UIView>("calendarPaneBackdrop")->frame(), CGRect::make(0, 0, 320, 438));
    EXPECT_EQ(exportedVariable<UIView>("notificationPaneBackdrop")->frame(), CGRect::make(0, 0, 320, 438));
}

namespace {

class MissingVariableAtLayoutDeathTest : public PanelLayout, public testing::WithParamInterface<const char*> {};

} // namespace

TEST_P(MissingVariableAtLayoutDeathTest, EndsSpringBoard)
{
    hideInstanceVariable(GetParam());
    EXPECT_DEATH(panel::layOut(), "");
}

INSTANTIATE_TEST_SUITE_P(ListView, MissingVariableAtLayoutDeathTest,
                         testing::Values("_containerView", "_topPocketView", "_tableView"));

// A panel that has not been built

namespace {

/// The lock screen was there before the library.
class NoPanel : public testing::Test {
protected:
    NoPanel()
    {
        simulator::lockScreen();
        phone_.inject();
    }

    static void expectEmptyRecord()
    {
        for (const char* name : {"headlineLabel", "subtitleLabel", "calendarIconView", "calendarPaneView", "tabView",
                                 "notificationIconView", "notificationPaneView", "appsView", "widgetView"})
            EXPECT_EQ(exportedVariable(name), nullptr) << name;
    }

    MorningPhone phone_;
};

} // namespace

TEST_F(NoPanel, IsLaidOutWithoutHarm)
{
    panel::layOut();
    expectEmptyRecord();
    EXPECT_EQ(panel::topPocket()->frame(), CGRect::make(0, 130, 320, 0.5));
    // The bounds of no pane.
    EXPECT_EQ(panel::table()->frame(), CGRectZero);
}

TEST_F(NoPanel, TakesTapsWithoutHarm)
{
    const auto list = simulator::listView();
    send<"imgCalenderTapped">(list);
    send<"imgNotificationsTapped">(list);
    send<"normalizePrevTap">(list);
    send<"cornerRadiusHook">(list);
    expectEmptyRecord();
    EXPECT_EQ(panel::topPocket()->alpha(), 0);
}

TEST_F(NoPanel, TakesItemsWithoutHarm)
{
    const auto controller = simulator::listController();
    notify("com.apple.mobilemail");
    send<"setInScreenOffMode:">(controller, YES);
    send<"setInScreenOffMode:">(controller, NO);
    send<"clearItemsForNotificationCenter">(controller);
    send<"prepareForTeardown">(controller);
    expectEmptyRecord();
}
