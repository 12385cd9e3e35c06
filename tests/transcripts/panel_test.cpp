#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>

#include "platform/UIKit/UIImage.hpp"
#include "platform/runtime/AutoreleasePool.hpp"
#include "simulator/runtime/SimulatedClass.hpp"
#include "tests/calendar/MonthCalendar.hpp"
#include "tests/support/MorningPhone.hpp"
#include "tests/support/list_items.hpp"
#include "tests/support/objects.hpp"
#include "tests/support/panel.hpp"
#include "tests/support/strip.hpp"
#include "tests/transcripts/month_tables.hpp"
#include "tests/transcripts/strip_tables.hpp"
#include "tests/transcripts/text_tables.hpp"

/// The panel: its construction in SpringBoard's list view, its layout, the taps on it, and what SpringBoard's controller does to
/// it.

namespace {

/// Reading a private instance variable.
std::string variableOf(const std::string& className, const std::string& name)
{
    return "class_getInstanceVariable " + className + ' ' + name;
}

std::string variableOfList(const std::string& name)
{
    return variableOf("SBLockScreenNotificationListView", name);
}

const std::string ultraLight = "'.HelveticaNeueInterface-UltraLightP2'";
const std::string assets = "/Library/Application Support/Solvane/";

// Construction

Rows label(const std::string& role, const std::string& y, const std::string& size, const std::string& scale)
{
    return {"container frame",
            "[UILabel alloc] initWithFrame: (0 " + y + " 320 50) = " + role,
            "UIFont fontWithName: " + ultraLight + " size: " + size + " = font",
            role + " setFont: font",
            "UIColor clearColor = clear",
            role + " setBackgroundColor: clear",
            "UIColor whiteColor = white",
            role + " setTextColor: white",
            role + " setNumberOfLines: 1",
            role + " font",
            "font pointSize",
            role + " setMinimumScaleFactor: " + scale,
            role + " setAdjustsFontSizeToFitWidth: YES",
            role + " setTextAlignment: 1",
            role + " sizeToFit"};
}

Rows icon(const std::string& role, const Rows& width, const std::string& x, const std::string& file, const std::string& digits)
{
    const std::string path = assets + file;
    UIImage* const image = UIImage::imageWithContentsOfFile(text(path));
    const bool isThere = image != nullptr;
    return width +
           Rows{"[UIImageView alloc] initWithFrame: (" + x + " 87 32 32) = " + role,
                "UIImage imageWithContentsOfFile: '" + path + '\'' + (isThere ? " = image" : "")} +
           tables::drawing({isThere ? "image" : "nil", image->size(), text(digits), {10, 11}}) +
           Rows{role + " setImage: " + (isThere ? "drawn" : "nil"),
                role + " layer = layer",
                variableOfList("_topPocketView"),
                "topPocket layer = pocketLayer",
                "pocketLayer compositingFilter",
                "layer setCompositingFilter: 'plusL'",
                "container addSubview: " + role};
}

Rows recogniser(const std::string& icon, const std::string& action, const std::string& taps)
{
    return {"[UITapGestureRecognizer alloc] initWithTarget: list action: " + action + " = tap",
            "tap setNumberOfTapsRequired: " + taps, icon + " addGestureRecognizer: tap"};
}

Rows recognisers(const std::string& icon, const std::string& action)
{
    return Rows{icon + " setUserInteractionEnabled: YES"} + recogniser(icon, action, "1") +
           recogniser(icon, "normalizePrevTap", "2");
}

Rows backdrop(const std::string& pane)
{
    return {"[_UIBackdropView alloc] initWithStyle: 1 = backdrop",
            "backdrop inputSettings = settings",
            "UIColor blackColor = black",
            "settings setColorTint: black",
            "backdrop inputSettings",
            "settings setColorTintAlpha: 0.4",
            "backdrop setBlurRadiusSetOnce: YES",
            "backdrop setBlurRadius: 4",
            "backdrop setBlurHardEdges: 2",
            "backdrop setBlursWithHardEdges: YES",
            "backdrop setBlurQuality: 'default'",
            pane + " insertSubview: backdrop atIndex: 0"};
}

Rows pane(const std::string& role)
{
    return {variableOfList("_tableView"), "table frame", "[UIView alloc] initWithFrame: (0 0 320 568) = " + role,
            role + " setHidden: YES", "container insertSubview: " + role + " atIndex: 0"};
}

Rows construction(const tables::Weather& weather)
{
    return Rows{"list previous initWithFrame: (0 0 320 568)", variableOfList("_containerView"),
                variableOfList("_bottomPocketView"), "bottomPocket removeFromSuperview"} +
           label("headline", "0", "37.5", "0.426667") + Rows{"container addSubview: headline"} +
           label("subtitle", "65", "17.5", "0.914286") + tables::weather(weather) +
           Rows{"subtitle setText: 'It's 21\u00b0 C and Cloudy.'", "container addSubview: subtitle"} +
           Rows{"NSCalendar currentCalendar = gregorian", "NSDate date = now",
                "gregorian components: 16 fromDate: now = components", "components day",
                "NSString stringWithFormat: '%ld' -> '5'"} +
           icon("calendarIcon", {}, "22", "Calendar.png", "5") +
           icon("notificationIcon", {"container frame"}, "266", "Notification.png", "") +
           recognisers("calendarIcon", "imgCalenderTapped") + recognisers("notificationIcon", "imgNotificationsTapped") +
           pane("calendarPane") + backdrop("calendarPane") +
           Rows{"calendarPane bounds", "[SVWidget alloc] initWithFrame: (0 0 320 568) = widget"} +
           tables::widgetConstruction({}, "(0 0 320 568)") + Rows{"calendarPane addSubview: widget"} + pane("notificationPane") +
           backdrop("notificationPane") + Rows{variableOfList("_tableView"), "notificationPane addSubview: table"} +
           Rows{"[UIView alloc] initWithFrame: (0 0 0 0) = tab", "tab setHidden: YES",
                "container insertSubview: tab atIndex: 0"} +
           backdrop("tab") + Rows{"container frame", "[SVAppsView alloc] initWithFrame: (76 100 168 100) = strip"} +
           tables::stripConstruction("(76 100 168 100)") + Rows{"container insertSubview: strip atIndex: 0"};
}

/// Builds a list view; what the stock initialiser makes is named too.
Owned<UIView> built(Transcript& transcript)
{
    Owned<UIView> list = panel::newListView();
    transcript.name("list", list)
        .name("container", panel::container(list))
        .name("table", panel::table(list))
        .name("topPocket", panel::topPocket(list))
        .name("bottomPocket", panel::bottomPocket(list));
    return list;
}

void expectConstruction(const Rows& rows)
{
    Transcript transcript;
    Owned<UIView> list;
    transcript.expect([&] { list = built(transcript); }, rows);
}

} // namespace

TEST(ConstructionTranscript, OfTheFirstPanel)
{
    const InjectedMorningPhone phone;
    expectConstruction(construction({.isFirst = true}));
}

TEST(ConstructionTranscript, OfTheSecondPanel)
{
    const LockedPhone phone;
    expectConstruction(construction({}));
}

TEST(ConstructionTranscript, OfAPanelThatTakesThePlaceOfOneThatIsGone)
{
    const InjectedMorningPhone phone;
    Transcript transcript;
    {
        const AutoreleasePool pool;
        const Owned<UIView> first = panel::newListView();
        transcript.name("earlierWidget", panel::widget()).name("earlierStrip", panel::strip());
        transcript.name("earlierCalendar", variable<NSObject*>(panel::widget(), "cal"));
    }
    Rows rows = construction({});
    // The widget goes when the new one takes its place in the record, and its calendar with it; the strip likewise.
    const auto after = [&](const std::string& row, const Rows& inserted) {
        const auto found = std::ranges::find(rows, row);
        ASSERT_NE(found, rows.end()) << row;
        rows.insert(found, inserted.begin(), inserted.end());
    };
    after("calendarPane addSubview: widget", {"earlierWidget super dealloc", "earlierCalendar super dealloc"});
    after("container insertSubview: strip atIndex: 0", {"earlierStrip super dealloc"});
    Owned<UIView> list;
    transcript.expect([&] { list = built(transcript); }, rows);
}

TEST(ConstructionTranscript, OfAPanelWithoutImageFiles)
{
    const InjectedMorningPhone phone;
    for (const char* file : {"Calendar.png", "Notification.png"})
        std::filesystem::remove(phone.tree().root() / (assets.substr(1) + file));
    expectConstruction(construction({.isFirst = true}));
}

// Layout

namespace {

class PanelTranscript : public testing::Test {
protected:
    PanelTranscript()
    {
        transcript_.nameExported()
            .name("list", simulator::listView())
            .name("controller", simulator::listController())
            .name("container", panel::container())
            .name("table", panel::table())
            .name("topPocket", panel::topPocket())
            .name("calendar", variable<NSObject*>(panel::widget(), "cal"))
            .name("icons", strip::icons(panel::strip()));
    }

    void setRecord(NSObject* object)
    {
        for (const char* name : {"headlineLabel", "subtitleLabel", "calendarIconView", "calendarPaneView", "tabView",
                                 "notificationIconView", "notificationPaneView", "appsView", "widgetView"})
            exportedVariable(name) = object;
    }

    LockedPhone phone_;
    Transcript transcript_;
};

Rows headline()
{
    return tables::hour() + Rows{"headlineLabel setText: 'Good morning, Pal.'"};
}

Rows subtitle()
{
    return tables::weather() + Rows{"subtitleLabel setText: 'It's 21\u00b0 C and Cloudy.'"};
}

/// A frame of the panel that is as wide as the container.
Rows asWideAsTheContainer(const std::string& row)
{
    return {variableOfList("_containerView"), "container frame", row};
}

Rows pane(const std::string& pane, const std::string& frame)
{
    return {variableOfList("_tableView"), "table frame", pane + " setFrame: " + frame};
}

} // namespace

TEST_F(PanelTranscript, OfALayoutPass)
{
    transcript_.expect(
        [] { panel::layOut(); },
        Rows{"list previous layoutSubviews", "list setAlpha: 1"} + asWideAsTheContainer("headlineLabel setFrame: (0 0 320 100)") +
            asWideAsTheContainer("subtitleLabel setFrame: (0 65 320 50)") +
            Rows{variableOfList("_topPocketView"), variableOfList("_topPocketView"), "topPocket frame",
                 "topPocket setFrame: (0 130 320 0.5)", "calendarIconView setFrame: (22 87 32 32)"} +
            pane("calendarPaneView", "(0 130 320 438)") + asWideAsTheContainer("notificationIconView setFrame: (266 87 32 32)") +
            pane("notificationPaneView", "(0 130 320 438)") +
            Rows{variableOfList("_tableView"), "notificationPaneView bounds", "table setFrame: (0 0 320 438)"} +
            asWideAsTheContainer("appsView setFrame: (76 100 168 100)") +
            Rows{"calendarPaneView bounds", "widgetView setFrame: (0 0 320 438)", "widgetView showCalendar", "widgetView frame",
                 "widgetView frame", "calendar setCenter: (160 194)", "calendar setHidden: NO"} +
            headline() + subtitle());
}

TEST_F(PanelTranscript, OfALayoutPassWithAnEmptyRecord)
{
    setRecord(nullptr);
    const Rows width{variableOfList("_containerView"), "container frame"};
    transcript_.expect(
        [] { panel::layOut(); },
        Rows{"list previous layoutSubviews", "list setAlpha: 1"} + width + width +
            Rows{variableOfList("_topPocketView"), variableOfList("_topPocketView"), "topPocket frame",
                 "topPocket setFrame: (0 130 320 0.5)", variableOfList("_tableView"), "table frame"} +
            width + Rows{variableOfList("_tableView"), "table frame", variableOfList("_tableView"), "table setFrame: (0 0 0 0)"} +
            width + tables::hour() + tables::weather());
}

// Taps

namespace {

Rows reset()
{
    return {"list normalizePrevTap",  "calendarPaneView setHidden: YES", "notificationPaneView setHidden: YES",
            "tabView setHidden: YES", "tabView setFrame: (0 0 0 0)",     variableOfList("_topPocketView"),
            "topPocket setAlpha: 0"};
}

Rows roundedTab(const std::string& bounds = "(0 0 52 150)")
{
    return {"list cornerRadiusHook",
            "CAShapeLayer layer = shape",
            "tabView bounds",
            "UIBezierPath bezierPathWithRoundedRect: " + bounds + " byRoundingCorners: 3 cornerRadii: (5 5) = path",
            "path CGPath = outline",
            "shape setPath: outline",
            "tabView layer = tabLayer",
            "tabLayer setMask: shape"};
}

/// Steps 2 to 5 of a tap that finds everything closed.
Rows opening(const std::string& pane, const std::string& icon, const std::string& tab)
{
    return {pane + " isHidden",
            pane + " setHidden: NO",
            "tabView isHidden",
            "tabView setHidden: NO",
            "tabView frame",
            icon + " frame",
            icon + " frame",
            icon + " frame",
            "tabView setFrame: " + tab,
            variableOfList("_topPocketView"),
            pane + " isHidden",
            "topPocket setAlpha: 1"};
}

/// clearAll of a strip 168 wide and 100 high without icons.
Rows clearing(const std::vector<std::string>& icons = {})
{
    return tables::stripClearing("appsView", icons);
}

} // namespace

TEST_F(PanelTranscript, OfTheReset)
{
    Rows rows = reset();
    rows.erase(rows.begin());
    transcript_.expect([] { send<"normalizePrevTap">(simulator::listView()); }, rows);
}

TEST_F(PanelTranscript, OfTheRoundedTab)
{
    Rows rows = roundedTab("(0 0 0 0)");
    rows.erase(rows.begin());
    transcript_.expect([] { send<"cornerRadiusHook">(simulator::listView()); }, rows);
}

TEST_F(PanelTranscript, OfATapOnTheCalendarIcon)
{
    const Rows rows = reset() + opening("calendarPaneView", "calendarIconView", "(12 77 52 150)") + roundedTab();
    transcript_.expect([] { send<"imgCalenderTapped">(simulator::listView()); }, rows);
    // The same when its pane is open already.
    transcript_.expect([] { send<"imgCalenderTapped">(simulator::listView()); }, rows);
}

TEST_F(PanelTranscript, OfATapOnTheNotificationIcon)
{
    const Rows rows = reset() + opening("notificationPaneView", "notificationIconView", "(256 77 52 150)") + subtitle() +
                      clearing() + roundedTab();
    transcript_.expect([] { send<"imgNotificationsTapped">(simulator::listView()); }, rows);
    transcript_.expect([] { send<"imgNotificationsTapped">(simulator::listView()); }, rows);
}

TEST_F(PanelTranscript, OfATapThatFindsItsPaneOpen)
{
    // As it would be with a reset that resets nothing.
    send<"imgCalenderTapped">(simulator::listView());
    simulator::replaceMethod<"normalizePrevTap">(objc_getClass("SBLockScreenNotificationListView"), +[](UIView*, SEL) {});
    transcript_.expect([] { send<"imgCalenderTapped">(simulator::listView()); },
                       Rows{"list normalizePrevTap", "calendarPaneView isHidden", "calendarPaneView setHidden: YES",
                            "tabView isHidden", "tabView setHidden: YES", "tabView frame", "tabView setFrame: (0 0 0 0)",
                            variableOfList("_topPocketView"), "calendarPaneView isHidden", "topPocket setAlpha: 0"} +
                           roundedTab("(0 0 0 0)"));
}

TEST_F(PanelTranscript, OfTapsWithAnEmptyRecord)
{
    setRecord(nullptr);
    const Rows rows{"list normalizePrevTap", variableOfList("_topPocketView"), "topPocket setAlpha: 0",
                    variableOfList("_topPocketView"), "topPocket setAlpha: 1"};
    const Rows tab{"list cornerRadiusHook", "CAShapeLayer layer = shape",
                   "UIBezierPath bezierPathWithRoundedRect: (0 0 0 0) byRoundingCorners: 3 cornerRadii: (5 5) = path",
                   "path CGPath = outline", "shape setPath: outline"};
    transcript_.expect([] { send<"imgCalenderTapped">(simulator::listView()); }, rows + tab);
    transcript_.expect([] { send<"imgNotificationsTapped">(simulator::listView()); }, rows + tables::weather() + tab);
}

// What the controller is told

TEST_F(PanelTranscript, OfTeardown)
{
    transcript_.expect([] { send<"prepareForTeardown">(simulator::listController()); },
                       Rows{"controller previous prepareForTeardown"} + subtitle() + clearing());
}

TEST_F(PanelTranscript, OfClearing)
{
    notify("com.apple.MobileSMS");
    transcript_.name("icon 0", strip::iconOf(panel::strip(), "com.apple.MobileSMS"));
    transcript_.expect([] { send<"clearItemsForNotificationCenter">(simulator::listController()); },
                       Rows{"controller previous clearItemsForNotificationCenter"} + subtitle() + clearing({"icon 0"}));
}

TEST_F(PanelTranscript, OfTheScreenGoingOffAndOn)
{
    for (const BOOL isOff : {YES, NO})
        transcript_.expect([&] { send<"setInScreenOffMode:">(simulator::listController(), isOff); },
                           Rows{std::string("controller previous setInScreenOffMode: ") + (isOff != NO ? "YES" : "NO")} +
                               headline() + subtitle());
}

TEST_F(PanelTranscript, OfTheControllersMessagesWithAnEmptyRecord)
{
    setRecord(nullptr);
    transcript_.expect([] { send<"prepareForTeardown">(simulator::listController()); },
                       Rows{"controller previous prepareForTeardown"} + tables::weather());
    transcript_.expect([] { send<"setInScreenOffMode:">(simulator::listController(), YES); },
                       Rows{"controller previous setInScreenOffMode: YES"} + tables::hour() + tables::weather());
    const Owned<NSObject> item = notification("com.apple.MobileSMS");
    transcript_.name("item", item);
    transcript_.expect([&] { send<"_updateModelAndViewForAdditionOfItem:">(simulator::listController(), item.get()); },
                       Rows{"controller previous _updateModelAndViewForAdditionOfItem: item"} + tables::hour() +
                           Rows{variableOf("SBLockScreenNotificationListController", "_listItems")});
}

TEST_F(PanelTranscript, OfTheContentUnderlay)
{
    transcript_.expect(
        [] { send<"_addLockContentUnderlayWithRequester:">(simulator::lockScreenView(), static_cast<id>(nullptr)); }, {});
}

TEST_F(PanelTranscript, OfTheArtworksView)
{
    const Owned<UIView> art = adopt(send<"alloc", UIView*>(objc_getClass("_NowPlayingArtView")));
    transcript_.name("art", art);
    transcript_.expect([&] { art->initWithFrame(CGRect::make(1, 2, 3, 4)); },
                       {"art previous initWithFrame: (1 2 3 4) = art", "art setHidden: YES"});
}

namespace {

/// A time of day, how often its bucket is asked for, and the text.
struct Arrival {
    std::string time;
    int buckets;
    std::string text;
};

class ArrivalTranscript : public PanelTranscript, public testing::WithParamInterface<Arrival> {};

} // namespace

TEST_P(ArrivalTranscript, OfAnItem)
{
    freezeClockAtUniversalTime("2014-03-05T" + GetParam().time);
    const Owned<NSObject> item = simulator::unknownItem();
    // The classes of the items are known by then.
    strip::icon(panel::strip(), item);
    NSObject* const items = instanceVariable<NSObject>(simulator::listController(), "_listItems");
    transcript_.name("item", item).name("items", items);
    Rows rows{"controller previous _updateModelAndViewForAdditionOfItem: item"};
    for (int i = 0; i < GetParam().buckets; ++i)
        rows = rows + tables::hour();
    rows = rows + Rows{"subtitleLabel setText: '" + GetParam().text + "'",
                       variableOf("SBLockScreenNotificationListController", "_listItems"), "appsView setItems: items",
                       "appsView addIconFor: item andBadgeCount: 0"};
    transcript_.expect([&] { send<"_updateModelAndViewForAdditionOfItem:">(simulator::listController(), item.get()); },
                       rows + tables::unknownItemAdded("appsView") + Rows{"appsView showIcons"} +
                           tables::stripRow("appsView", {"icon"}));
}

INSTANTIATE_TEST_SUITE_P(AtEachTimeOfDay, ArrivalTranscript,
                         testing::Values(Arrival{"08:30:00", 1, "While you were gone..."},
                                         Arrival{"13:00:00", 2, "While you were gone..."},
                                         Arrival{"21:59:59", 3, "While you were gone..."},
                                         Arrival{"23:00:00", 4, "While you were asleep..."}));
