#include <algorithm>
#include <gmock/gmock.h>

#include "platform/UIKit/UIGestureRecognizer.hpp"
#include "platform/UIKit/UIWindow.hpp"
#include "platform/UIKit/_UIBackdropView.hpp"
#include "platform/runtime/each.hpp"
#include "simulator/foundation/system_log.hpp"
#include "simulator/runtime/SimulatedClass.hpp"
#include "simulator/uikit/UIGestureRecognizer.hpp"
#include "tests/support/Console.hpp"
#include "tests/support/MessageLog.hpp"
#include "tests/support/MorningPhone.hpp"
#include "tests/support/Picture.hpp"
#include "tests/support/drawn_texts.hpp"
#include "tests/support/live_objects.hpp"
#include "tests/support/panel.hpp"
#include "tests/support/runtime_calls.hpp"
#include "tests/support/strip.hpp"

/// The panel as it is built inside a new list view, before anything is laid out.

namespace {

namespace fs = std::filesystem;
using testing::Each;
using testing::ElementsAre;
using testing::StartsWith;

/// On the console: a list view that is made and not laid out.
constexpr const char* made = "clock 2014-03-05T08:30:00\n"
                             "weather 21 26\n"
                             "let list send SBLockScreenNotificationListView alloc\n"
                             "let list send list initWithFrame: 0,0,320,568\n";

std::vector<Json> shownOnConsole(const std::vector<std::string>& paths)
{
    const Console console;
    std::string script = made;
    for (const std::string& path : paths)
        script += "show " + path + '\n';
    std::vector<Json> lines = linesOf(console, script);
    lines.resize(paths.size());
    return lines;
}

class PanelConstruction : public testing::Test {
protected:
    void build(CGRect frame = CGRect::make(0, 0, 320, 568)) { list_ = panel::newListView(frame); }

    fs::path imageFile(const char* name) const { return phone_.tree().root() / "Library/Application Support/Solvane" / name; }

    InjectedMorningPhone phone_;
    Owned<UIView> list_;
};

/// The stock initialiser goes first, then what a test does to the new list view.
class PanelOfAnotherSpringBoard : public testing::Test {
protected:
    using Change = UIView* (*)(UIView* built);

    void build(Change change)
    {
        change_ = change;
        stock_ = simulator::replaceMethod<"initWithFrame:">(
            objc_getClass("SBLockScreenNotificationListView"),
            +[](UIView* self, SEL message, CGRect frame) { return change_(stock_(self, message, frame)); });
        phone_.inject();
        list_ = panel::newListView();
    }

    static inline UIView* (*stock_)(UIView*, SEL, CGRect);
    static inline Change change_;
    MorningPhone phone_;
    Owned<UIView> list_;
};

Picture withText(const char* string, const char* file)
{
    const auto draw = exportedFunction<UIImage*(NSString*, UIImage*, CGPoint)>("drawTextInImage");
    return pictureOf(draw(text(string), UIImage::imageWithContentsOfFile(text(file)), {10, 11}));
}

constexpr const char* calendarImage = "/Library/Application Support/Solvane/Calendar.png";
constexpr const char* notificationImage = "/Library/Application Support/Solvane/Notification.png";

} // namespace

// The two lines

TEST(PanelOnTheConsole, HasAHeadlineWithoutTextOverItsSubtitle)
{
    const auto lines = shownOnConsole({"headlineLabel", "subtitleLabel"});
    EXPECT_EQ(lines[0]["class"], "UILabel");
    EXPECT_EQ(lines[0]["text"], nullptr);
    EXPECT_EQ(lines[1]["class"], "UILabel");
    EXPECT_EQ(lines[1]["text"], "It's 21° C and Cloudy.");
    for (const Json& line : lines) {
        EXPECT_EQ(line["hidden"], false);
        EXPECT_EQ(line["alpha"], 1);
    }
}

TEST(PanelOnTheConsole, WritesItsLinesInUltraLight)
{
    const auto lines = shownOnConsole({"headlineLabel.font", "subtitleLabel.font"});
    EXPECT_EQ(lines[0], Json::parse(R"({"class":"UIFont","name":".HelveticaNeueInterface-UltraLightP2","size":37.5})"));
    EXPECT_EQ(lines[1], Json::parse(R"({"class":"UIFont","name":".HelveticaNeueInterface-UltraLightP2","size":17.5})"));
}

TEST(PanelOnTheConsole, WritesItsLinesInWhiteOverNothing)
{
    const auto lines = shownOnConsole(
        {"headlineLabel.textColor", "subtitleLabel.textColor", "headlineLabel.backgroundColor", "subtitleLabel.backgroundColor"});
    EXPECT_EQ(lines[0]["rgba"], Json({1, 1, 1, 1}));
    EXPECT_EQ(lines[1]["rgba"], Json({1, 1, 1, 1}));
    EXPECT_EQ(lines[2]["rgba"][3], 0);
    EXPECT_EQ(lines[3]["rgba"][3], 0);
}

TEST(PanelOnTheConsole, LetsItsLinesShrinkToSixteenPoints)
{
    const auto lines = shownOnConsole({"headlineLabel.minimumScaleFactor", "subtitleLabel.minimumScaleFactor",
                                       "headlineLabel.adjustsFontSizeToFitWidth", "subtitleLabel.adjustsFontSizeToFitWidth",
                                       "headlineLabel.numberOfLines", "subtitleLabel.numberOfLines"});
    EXPECT_EQ(lines[0].get<CGFloat>(), static_cast<CGFloat>(16 / 37.5));
    EXPECT_EQ(lines[1].get<CGFloat>(), static_cast<CGFloat>(16 / 17.5));
    EXPECT_EQ(lines[2], true);
    EXPECT_EQ(lines[3], true);
    EXPECT_EQ(lines[4], 1);
    EXPECT_EQ(lines[5], 1);
}

TEST(PanelOnTheConsole, CentresItsLines)
{
    EXPECT_THAT(shownOnConsole({"headlineLabel.textAlignment", "subtitleLabel.textAlignment"}), Each(Json(1)));
}

namespace {

int labels = 0;
UIView* (*initLabel)(UIView*, SEL, CGRect);

/// The labels get names in the order of their making.
void noteLabels()
{
    initLabel = simulator::replaceMethod<"initWithFrame:">(
        objc_getClass("UILabel"), +[](UIView* self, SEL message, CGRect frame) -> UIView* {
            constexpr const char* names[] = {"headline", "subtitle"};
            const bool isOfThePanel = labels < std::ssize(names);
            MessageLog::name(self, isOfThePanel ? names[labels] : "other");
            ++labels;
            if (isOfThePanel)
                MessageLog::note(self, message, frame);
            return initLabel(self, message, frame);
        });
}

/// The messages to one label, without its name.
std::vector<std::string> messagesTo(const std::string& name)
{
    std::vector<std::string> all;
    for (const std::string& message : MessageLog::messages()) {
        if (message.starts_with(name + ' '))
            all.push_back(message.substr(name.size() + 1));
    }
    return all;
}

} // namespace

TEST_F(PanelConstruction, SetsEachLineUpInOrder)
{
    noteLabels();
    Noted<"UILabel", "setFont:", void, id>::install();
    Noted<"UILabel", "setBackgroundColor:", void, id>::install();
    Noted<"UILabel", "setTextColor:", void, id>::install();
    Noted<"UILabel", "setNumberOfLines:", void, NSInteger>::install();
    Noted<"UILabel", "setMinimumScaleFactor:", void, CGFloat>::install();
    Noted<"UILabel", "setAdjustsFontSizeToFitWidth:", void, BOOL>::install();
    Noted<"UILabel", "setTextAlignment:", void, NSInteger>::install();
    Noted<"UILabel", "sizeToFit", void>::install();
    Noted<"UILabel", "setText:", void, id>::install();
    Noted<"UILabel", "didMoveToSuperview", void>::install();
    build();
    EXPECT_THAT(messagesTo("headline"),
                ElementsAre("initWithFrame: 0,0,320,50", "setFont: ?", "setBackgroundColor: ?", "setTextColor: ?",
                            "setNumberOfLines: 1", "setMinimumScaleFactor: 0.426667", "setAdjustsFontSizeToFitWidth: YES",
                            "setTextAlignment: 1", "sizeToFit", "didMoveToSuperview"));
    EXPECT_THAT(messagesTo("subtitle"),
                ElementsAre("initWithFrame: 0,65,320,50", "setFont: ?", "setBackgroundColor: ?", "setTextColor: ?",
                            "setNumberOfLines: 1", "setMinimumScaleFactor: 0.914286", "setAdjustsFontSizeToFitWidth: YES",
                            "setTextAlignment: 1", "sizeToFit", "setText: ?", "didMoveToSuperview"));
}

TEST_F(PanelConstruction, SizesTheLinesBeforeTheyHaveText)
{
    build();
    EXPECT_EQ(panel::headline()->frame(), CGRect::make(0, 0, 0, 0));
    EXPECT_EQ(panel::subtitle()->frame(), CGRect::make(0, 65, 0, 0));
}

TEST_F(PanelConstruction, FollowsTheFontThatALabelHas)
{
    // Some label may turn the size that it is given into another.
    simulator::replaceMethod<"font">(objc_getClass("UILabel"), +[](NSObject*, SEL) { return UIFont::systemFontOfSize(20); });
    build();
    EXPECT_EQ((send<"minimumScaleFactor", CGFloat>(panel::headline())), static_cast<CGFloat>(16 / 20.0));
}

// The icons

TEST_F(PanelConstruction, PutsTheIconsAtTheirPlaces)
{
    build();
    EXPECT_EQ(panel::calendarIcon()->frame(), CGRect::make(22, 87, 32, 32));
    EXPECT_EQ(panel::notificationIcon()->frame(), CGRect::make(266, 87, 32, 32));
    for (UIView* icon : {panel::calendarIcon(), panel::notificationIcon()}) {
        EXPECT_EQ(classNameOf(icon), "UIImageView");
        EXPECT_FALSE(icon->isHidden());
    }
}

TEST_F(PanelConstruction, DrawsTheDayIntoTheCalendarIcon)
{
    build();
    EXPECT_EQ(shown(panel::calendarIcon()), withText("5", calendarImage));
    EXPECT_NE(shown(panel::calendarIcon()), withText("", calendarImage));
}

TEST_F(PanelConstruction, LeavesTheNotificationIconAsItIs)
{
    build();
    EXPECT_EQ(shown(panel::notificationIcon()), withText("", notificationImage));
}

TEST_F(PanelConstruction, WritesTheDayWithoutALeadingZero)
{
    noteDrawnTexts();
    freezeClockAtUniversalTime("2014-03-01T08:30:00");
    build();
    EXPECT_THAT(drawnTexts(), ElementsAre("1", ""));
    EXPECT_EQ(shown(panel::calendarIcon()), withText("1", calendarImage));
}

TEST_F(PanelConstruction, WritesTheThirtyFirst)
{
    noteDrawnTexts();
    freezeClockAtUniversalTime("2014-03-31T23:59:59");
    build();
    EXPECT_THAT(drawnTexts(), ElementsAre("31", ""));
    EXPECT_EQ(shown(panel::calendarIcon()), withText("31", calendarImage));
    EXPECT_NE(withText("31", calendarImage), withText("1", calendarImage));
}

TEST_F(PanelConstruction, KeepsTheDayOfItsMaking)
{
    build();
    const Picture before = shown(panel::calendarIcon());
    freezeClockAtUniversalTime("2014-03-06T08:30:00");
    send<"layoutSubviews">(list_.get());
    EXPECT_EQ(shown(panel::calendarIcon()), before);
}

TEST_F(PanelConstruction, AsksTheUsersCalendarForTheDay)
{
    static std::vector<NSUInteger> units;
    static NSObject* current = nullptr;
    static NSObject* (*components)(NSObject*, SEL, NSUInteger, NSObject*);
    current = send<"currentCalendar", NSObject*>(objc_getClass("NSCalendar"));
    simulator::replaceMethod<"currentCalendar">(
        simulator::metaclassOf(objc_getClass("NSCalendar")), +[](NSObject*, SEL) { return current; });
    components = simulator::replaceMethod<"components:fromDate:">(
        object_getClass(current), +[](NSObject* self, SEL message, NSUInteger asked, NSObject* date) -> NSObject* {
            if (self == current)
                units.push_back(asked);
            return components(self, message, asked, date);
        });
    noteDrawnTexts();
    build();
    EXPECT_THAT(units, testing::Contains(16U));
}

TEST_F(PanelConstruction, GivesTheIconsThePocketsFilter)
{
    build();
    const id filter = panel::topPocket(list_)->layer()->compositingFilter();
    ASSERT_NE(filter, nullptr);
    EXPECT_EQ(panel::calendarIcon()->layer()->compositingFilter(), filter);
    EXPECT_EQ(panel::notificationIcon()->layer()->compositingFilter(), filter);
}

TEST_F(PanelOfAnotherSpringBoard, TheIconsFilterIsWhateverThePocketHas)
{
    static NSString* const filter = text("multiplyBlendMode");
    build(+[](UIView* list) {
        panel::topPocket(list)->layer()->setCompositingFilter(filter);
        return list;
    });
    EXPECT_EQ(panel::calendarIcon()->layer()->compositingFilter(), filter);
    EXPECT_EQ(panel::notificationIcon()->layer()->compositingFilter(), filter);
}

TEST_F(PanelOfAnotherSpringBoard, TheIconsHaveNoFilterWhenThePocketHasNone)
{
    build(+[](UIView* list) {
        panel::topPocket(list)->layer()->setCompositingFilter(nullptr);
        return list;
    });
    EXPECT_EQ(panel::calendarIcon()->layer()->compositingFilter(), nullptr);
    EXPECT_EQ(panel::notificationIcon()->layer()->compositingFilter(), nullptr);
}

TEST_F(PanelConstruction, LeavesTheIconsEmptyWithoutTheirFiles)
{
    for (const char* name : {"Calendar.png", "Calendar@2x.png", "Notification.png", "Notification@2x.png"})
        fs::remove(imageFile(name));
    build();
    EXPECT_EQ(panel::calendarIcon()->image(), nullptr);
    EXPECT_EQ(panel::notificationIcon()->image(), nullptr);
    EXPECT_EQ(panel::calendarIcon()->gestureRecognizers()->count(), 2U);
    // The widget's calendar alone has something to say.
    EXPECT_THAT(simulator::takeSystemLog(), Each(StartsWith("dayOfWeek: ")));
}

TEST_F(PanelConstruction, LeavesOneIconEmptyWhenItsFileIsNoPicture)
{
    writeFile(imageFile("Calendar.png"), "no picture");
    writeFile(imageFile("Calendar@2x.png"), "no picture");
    build();
    EXPECT_EQ(panel::calendarIcon()->image(), nullptr);
    EXPECT_EQ(shown(panel::notificationIcon()), withText("", notificationImage));
    // The widget's calendar alone has something to say.
    EXPECT_THAT(simulator::takeSystemLog(), Each(StartsWith("dayOfWeek: ")));
}

// The recognisers

namespace {

/// "action taps", with the target checked.
std::vector<std::string> recognisersOf(UIView* view, NSObject* target)
{
    std::vector<std::string> all;
    for (UIGestureRecognizer* recognizer : each<UIGestureRecognizer>(view->gestureRecognizers())) {
        EXPECT_EQ(classNameOf(recognizer), "UITapGestureRecognizer");
        const auto& targets = ivarsOf<simulator::GestureState>(recognizer).targets;
        EXPECT_EQ(targets.size(), 1U);
        EXPECT_EQ(targets.at(0).object, target);
        all.push_back(std::string(sel_getName(targets.at(0).action)) + ' ' +
                      std::to_string(static_cast<UITapGestureRecognizer*>(recognizer)->numberOfTapsRequired()));
    }
    return all;
}

} // namespace

TEST_F(PanelConstruction, MakesTheIconsTappable)
{
    build();
    EXPECT_TRUE(panel::calendarIcon()->isUserInteractionEnabled());
    EXPECT_TRUE(panel::notificationIcon()->isUserInteractionEnabled());
    EXPECT_THAT(recognisersOf(panel::calendarIcon(), list_), ElementsAre("imgCalenderTapped 1", "normalizePrevTap 2"));
    EXPECT_THAT(recognisersOf(panel::notificationIcon(), list_), ElementsAre("imgNotificationsTapped 1", "normalizePrevTap 2"));
}

TEST_F(PanelConstruction, SetsEachNumberOfTaps)
{
    MessageLog::messages().clear();
    Noted<"UITapGestureRecognizer", "setNumberOfTapsRequired:", void, NSUInteger>::install();
    build();
    EXPECT_THAT(MessageLog::messages(), ElementsAre("? setNumberOfTapsRequired: 1", "? setNumberOfTapsRequired: 2",
                                                    "? setNumberOfTapsRequired: 1", "? setNumberOfTapsRequired: 2"));
}

TEST_F(PanelConstruction, PutsNoRecogniserElsewhere)
{
    build();
    for (UIView* view : {static_cast<UIView*>(panel::headline()), static_cast<UIView*>(panel::subtitle()), panel::tab(),
                         panel::calendarPane(), panel::notificationPane(), panel::container(list_), list_.get()})
        EXPECT_EQ(view->gestureRecognizers()->count(), 0U);
}

// The panes, the tab and the strip

TEST_F(PanelConstruction, HidesTwoPanesOfTheTablesFrame)
{
    build();
    for (UIView* pane : {panel::calendarPane(), panel::notificationPane()}) {
        EXPECT_EQ(classNameOf(pane), "UIView");
        EXPECT_EQ(pane->frame(), CGRect::make(0, 0, 320, 568));
        EXPECT_TRUE(pane->isHidden());
    }
}

TEST_F(PanelOfAnotherSpringBoard, ThePanesFollowTheTablesFrame)
{
    build(+[](UIView* list) {
        panel::table(list)->setFrame(CGRect::make(7, 40, 300, 400));
        return list;
    });
    EXPECT_EQ(panel::calendarPane()->frame(), CGRect::make(7, 40, 300, 400));
    EXPECT_EQ(panel::notificationPane()->frame(), CGRect::make(7, 40, 300, 400));
    EXPECT_EQ(panel::widget()->frame(), CGRect::make(0, 0, 300, 400));
    // Its origin counts from the pane's now.
    EXPECT_EQ(panel::table(list_)->frame(), CGRect::make(7, 40, 300, 400));
}

TEST_F(PanelConstruction, MovesTheTableIntoItsPaneAsItIs)
{
    build();
    UIView* const table = panel::table(list_);
    EXPECT_EQ(table->superview(), panel::notificationPane());
    EXPECT_EQ(table->frame(), CGRect::make(0, 0, 320, 568));
    EXPECT_FALSE(table->isHidden());
    EXPECT_THAT(subviewsOf(panel::notificationPane()), ElementsAre(exportedVariable<UIView>("notificationPaneBackdrop"), table));
}

TEST_F(PanelConstruction, PutsTheWidgetOverTheWholeCalendarPane)
{
    build();
    EXPECT_EQ(classNameOf(panel::widget()), "SVWidget");
    EXPECT_EQ(panel::widget()->frame(), CGRect::make(0, 0, 320, 568));
    EXPECT_THAT(subviewsOf(panel::calendarPane()),
                ElementsAre(exportedVariable<UIView>("calendarPaneBackdrop"), panel::widget()));
}

TEST_F(PanelConstruction, HidesATabWithoutSize)
{
    build();
    EXPECT_EQ(classNameOf(panel::tab()), "UIView");
    EXPECT_EQ(panel::tab()->frame(), CGRectZero);
    EXPECT_TRUE(panel::tab()->isHidden());
    EXPECT_EQ(panel::tab()->subviews()->count(), 1U);
}

TEST_F(PanelConstruction, PutsTheStripBetweenTheIcons)
{
    build();
    EXPECT_EQ(classNameOf(panel::strip()), "SVAppsView");
    EXPECT_EQ(panel::strip()->frame(), CGRect::make(76, 100, 168, 100));
    EXPECT_FALSE(panel::strip()->isHidden());
    EXPECT_EQ(panel::strip()->subviews()->count(), 0U);
    EXPECT_EQ(strip::items(panel::strip()), nullptr);
}

TEST_F(PanelConstruction, PutsEverythingInTheContainerFromBackToFront)
{
    build();
    EXPECT_THAT(subviewsOf(panel::container(list_)),
                ElementsAre(panel::strip(), panel::tab(), panel::notificationPane(), panel::calendarPane(),
                            panel::topPocket(list_), panel::headline(), panel::subtitle(), panel::calendarIcon(),
                            panel::notificationIcon()));
}

TEST_F(PanelConstruction, RemovesTheBottomPocket)
{
    build();
    ASSERT_NE(panel::bottomPocket(list_), nullptr);
    EXPECT_EQ(panel::bottomPocket(list_)->superview(), nullptr);
    EXPECT_EQ(panel::topPocket(list_)->superview(), panel::container(list_));
}

TEST_F(PanelOfAnotherSpringBoard, TheWidthIsThatOfTheContainer)
{
    build(+[](UIView* list) {
        panel::container(list)->setFrame(CGRect::make(10, 20, 300, 500));
        return list;
    });
    EXPECT_EQ(panel::calendarIcon()->frame(), CGRect::make(22, 87, 32, 32));
    EXPECT_EQ(panel::notificationIcon()->frame(), CGRect::make(246, 87, 32, 32));
    EXPECT_EQ(panel::strip()->frame(), CGRect::make(76, 100, 148, 100));
}

TEST_F(PanelOfAnotherSpringBoard, IsBuiltWithoutAContainerToo)
{
    build(+[](UIView* list) {
        variable<UIView*>(list, "_containerView") = nullptr;
        return list;
    });
    EXPECT_EQ(panel::notificationIcon()->frame(), CGRect::make(-54, 87, 32, 32));
    for (UIView* view : {static_cast<UIView*>(panel::headline()), static_cast<UIView*>(panel::calendarIcon()),
                         panel::calendarPane(), panel::notificationPane(), panel::tab(), static_cast<UIView*>(panel::strip())})
        EXPECT_EQ(view->superview(), nullptr);
    EXPECT_EQ(panel::table(list_)->superview(), panel::notificationPane());
}

// Backdrops

namespace {

std::vector<NSInteger> styles;
UIView* (*initBackdrop)(UIView*, SEL, NSInteger);

} // namespace

TEST_F(PanelConstruction, SetsThreeBackdropsUpInTheSameOrder)
{
    initBackdrop = simulator::replaceMethod<"initWithStyle:">(
        objc_getClass("_UIBackdropView"), +[](UIView* self, SEL message, NSInteger style) -> UIView* {
            styles.push_back(style);
            MessageLog::name(self, "backdrop" + std::to_string(styles.size()));
            UIView* const built = initBackdrop(self, message, style);
            MessageLog::name(static_cast<_UIBackdropView*>(built)->inputSettings(), "settings" + std::to_string(styles.size()));
            return built;
        });
    Noted<"_UIBackdropViewSettings", "setColorTint:", void, id>::install();
    Noted<"_UIBackdropViewSettings", "setColorTintAlpha:", void, CGFloat>::install();
    Noted<"_UIBackdropView", "inputSettings", id>::install();
    Noted<"_UIBackdropView", "setBlurRadiusSetOnce:", void, BOOL>::install();
    Noted<"_UIBackdropView", "setBlurRadius:", void, CGFloat>::install();
    Noted<"_UIBackdropView", "setBlurHardEdges:", void, NSInteger>::install();
    Noted<"_UIBackdropView", "setBlursWithHardEdges:", void, BOOL>::install();
    Noted<"_UIBackdropView", "setBlurQuality:", void, id>::install();
    build();
    EXPECT_THAT(styles, ElementsAre(1, 1, 1));
    std::vector<std::string> expected;
    for (const std::string number : {"1", "2", "3"}) {
        const std::string backdrop = "backdrop" + number + ' ';
        for (const std::string& message :
             {backdrop + "inputSettings", "settings" + number + " setColorTint: ?", backdrop + "inputSettings",
              "settings" + number + " setColorTintAlpha: 0.4", backdrop + "setBlurRadiusSetOnce: YES",
              backdrop + "setBlurRadius: 4", backdrop + "setBlurHardEdges: 2", backdrop + "setBlursWithHardEdges: YES",
              backdrop + "setBlurQuality: ?"})
            expected.push_back(message);
    }
    // The first look at a backdrop's settings is this test's own.
    std::vector<std::string> messages;
    for (const std::string& message : MessageLog::messages()) {
        const bool isRepeated = !messages.empty() && messages.back() == message;
        if (!isRepeated)
            messages.push_back(message);
    }
    EXPECT_EQ(messages, expected);
}

TEST(PanelOnTheConsole, TintsItsBackdropsBlackAndBlursThem)
{
    for (const std::string backdrop : {"calendarPaneBackdrop", "notificationPaneBackdrop", "tabView.subviews[0]"}) {
        const auto lines = shownOnConsole({backdrop + ".inputSettings.colorTint", backdrop + ".inputSettings.colorTintAlpha",
                                           backdrop + ".style", backdrop + ".blurRadiusSetOnce", backdrop + ".blurRadius",
                                           backdrop + ".blurHardEdges", backdrop + ".blursWithHardEdges",
                                           backdrop + ".blurQuality", backdrop + ".class"});
        EXPECT_EQ(lines[0]["rgba"], Json({0, 0, 0, 1}));
        EXPECT_EQ(lines[1], 0.4);
        EXPECT_EQ(lines[2], 1);
        EXPECT_EQ(lines[3], true);
        EXPECT_EQ(lines[4], 4);
        EXPECT_EQ(lines[5], 2);
        EXPECT_EQ(lines[6], true);
        EXPECT_EQ(lines[7], "default");
        EXPECT_EQ(lines[8], "_UIBackdropView");
    }
}

TEST_F(PanelConstruction, KeepsThePanesBackdropsAndNotTheTabs)
{
    build();
    UIView* const third = subviewsOf(panel::tab()).at(0);
    EXPECT_EQ(classNameOf(third), "_UIBackdropView");
    EXPECT_NE(third, exportedVariable<UIView>("calendarPaneBackdrop"));
    EXPECT_NE(third, exportedVariable<UIView>("notificationPaneBackdrop"));
    EXPECT_NE(exportedVariable("calendarPaneBackdrop"), exportedVariable("notificationPaneBackdrop"));
}

// The record

namespace {

constexpr const char* record[] = {
    "headlineLabel", "subtitleLabel",        "calendarIconView",     "calendarPaneView",         "calendarPaneBackdrop",
    "tabView",       "notificationIconView", "notificationPaneView", "notificationPaneBackdrop", "appsView",
    "widgetView"};

} // namespace

TEST_F(PanelConstruction, FillsARecordThatWasEmpty)
{
    for (const char* name : record)
        EXPECT_EQ(exportedVariable(name), nullptr) << name;
    build();
    for (const char* name : record)
        EXPECT_NE(exportedVariable(name), nullptr) << name;
    EXPECT_EQ(exportedVariable("nowPlayingArtView"), nullptr);
}

namespace {

/// The name under which the record holds an object.
std::string nameInRecord(NSObject* object)
{
    const auto* const found = std::ranges::find_if(record, [&](const char* name) { return exportedVariable(name) == object; });
    return found == std::end(record) ? "nothing" : *found;
}

/// The objects that were set up, by the names they had in the record by then.
std::vector<std::string> setUp;

/// From now on each view is noted at the first message that sets it up.
template <FixedString ClassName, FixedString Selector, class Result, class... Arguments>
void noteSetUp()
{
    static Result (*previous)(NSObject*, SEL, Arguments...);
    previous = simulator::replaceMethod<Selector>(
        objc_getClass(ClassName.text), +[](NSObject* self, SEL message, Arguments... arguments) {
            if (object_getClass(self) == objc_getClass(ClassName.text))
                setUp.push_back(nameInRecord(self));
            return previous(self, message, arguments...);
        });
}

} // namespace

TEST_F(PanelConstruction, PutsEachViewIntoTheRecordBeforeItIsSetUp)
{
    // Once empty, once with an older panel in it.
    build();
    noteSetUp<"UILabel", "setNumberOfLines:", void, NSInteger>();
    noteSetUp<"_UIBackdropView", "setBlurRadius:", void, CGFloat>();
    noteSetUp<"UIView", "setHidden:", void, BOOL>();
    build();
    EXPECT_THAT(setUp, ElementsAre("headlineLabel", "subtitleLabel", "calendarPaneView", "calendarPaneBackdrop",
                                   "notificationPaneView", "notificationPaneBackdrop", "tabView", "nothing"));
}

TEST_F(PanelConstruction, LetsGoOfAnOlderLineBeforeTheNewOneIsSetUp)
{
    static id older = nullptr;
    static bool wasThere = true;
    {
        const AutoreleasePool pool;
        build();
        objc_storeWeak(&older, panel::headline());
        list_ = nullptr;
    }
    ASSERT_NE(older, nullptr);
    static void (*setFont)(NSObject*, SEL, UIFont*);
    setFont = simulator::replaceMethod<"setFont:">(
        objc_getClass("UILabel"), +[](NSObject* self, SEL message, UIFont* font) {
            static bool isFirst = true;
            if (std::exchange(isFirst, false))
                wasThere = older != nullptr;
            setFont(self, message, font);
        });
    build();
    EXPECT_FALSE(wasThere);
}

TEST_F(PanelConstruction, KeepsEachViewOfTheRecordAlive)
{
    {
        const AutoreleasePool pool;
        build();
        list_ = nullptr;
    }
    for (const char* name : record)
        EXPECT_EQ(retainCount(exportedVariable(name)), 1U + (exportedVariable<UIView>(name)->superview() != nullptr)) << name;
    EXPECT_EQ(textOf(panel::subtitle()->text()), morningWeather);
}

TEST_F(PanelConstruction, OverwritesTheRecordWithANewerListViewsPanel)
{
    build();
    std::vector<NSObject*> first;
    for (const char* name : record)
        first.push_back(exportedVariable(name));
    const Owned<UIView> older = list_;
    build();
    for (std::size_t i = 0; i < first.size(); ++i)
        EXPECT_NE(exportedVariable(record[i]), first[i]) << record[i];
    EXPECT_EQ(panel::headline()->superview(), panel::container(list_));
    // The older one keeps its own, which nobody drives any more.
    EXPECT_EQ(subviewsOf(panel::container(older)).size(), 9U);
}

TEST_F(PanelConstruction, LetsAPanelGoWithItsListViewOnceThereIsANewerOne)
{
    const auto rebuild = [&] {
        const AutoreleasePool pool;
        build();
    };
    rebuild();
    rebuild();
    const auto before = livingObjects();
    for (int i = 0; i < 5; ++i)
        rebuild();
    EXPECT_EQ(livingObjects(), before);
}

// SpringBoard's private variables

TEST_F(PanelConstruction, ReadsThePrivateVariablesAtEachUse)
{
    const std::size_t before = instanceVariableLookups().size();
    build();
    auto lookups = instanceVariableLookups();
    lookups.erase(lookups.begin(), lookups.begin() + static_cast<std::ptrdiff_t>(before));
    EXPECT_THAT(lookups, ElementsAre("_containerView", "_bottomPocketView", "_topPocketView", "_topPocketView", "_tableView",
                                     "_tableView", "_tableView"));
}

TEST_F(PanelOfAnotherSpringBoard, TheContainerIsKeptUntilThePanelIsBuilt)
{
    static UIView* list = nullptr;
    static id container = nullptr;
    static bool wasThere = false;
    // The list view lets its container go in the middle.
    simulator::replaceMethod<"setNumberOfLines:">(
        objc_getClass("UILabel"), +[](NSObject*, SEL, NSInteger) {
            UIView* const own = panel::container(list);
            if (own == nullptr)
                return;
            own->removeFromSuperview();
            objc_release(own);
            variable<UIView*>(list, "_containerView") = nullptr;
            wasThere = container != nullptr;
        });
    {
        const AutoreleasePool pool;
        build([](UIView* built) {
            list = built;
            objc_storeWeak(&container, panel::container(built));
            return built;
        });
    }
    EXPECT_TRUE(wasThere);
    EXPECT_EQ(container, nullptr);
    EXPECT_NE(panel::strip(), nullptr);
}

TEST_F(PanelConstruction, TakesThePocketThatIsThereAtEachUse)
{
    static UIView* list = nullptr;
    static UIView* other = nullptr;
    static UIImage* (*read)(NSObject*, SEL, NSString*);
    other = UIView::alloc()->initWithFrame({});
    other->layer()->setCompositingFilter(text("screenBlendMode"));
    // The pocket is another one by the time the second icon is made.
    read = simulator::replaceMethod<"imageWithContentsOfFile:">(
        simulator::metaclassOf(objc_getClass("UIImage")), +[](NSObject* self, SEL message, NSString* file) {
            if (textOf(file) == notificationImage)
                variable<UIView*>(list, "_topPocketView") = other;
            return read(self, message, file);
        });
    list = send<"alloc", UIView*>(objc_getClass("SBLockScreenNotificationListView"));
    list->initWithFrame(CGRect::make(0, 0, 320, 568));
    EXPECT_EQ(textOf(panel::calendarIcon()->layer()->compositingFilter()), "plusL");
    EXPECT_EQ(textOf(panel::notificationIcon()->layer()->compositingFilter()), "screenBlendMode");
}

TEST_F(PanelConstruction, TakesTheTableThatIsThereAtEachUse)
{
    static UIView* list = nullptr;
    static UIView* other = nullptr;
    static UIView* (*init)(UIView*, SEL, CGRect);
    other = UIView::alloc()->initWithFrame(CGRect::make(1, 2, 30, 40));
    // The table is another one by the time the notification pane is made.
    init = simulator::replaceMethod<"initWithFrame:">(
        objc_getClass("SVWidget"), +[](UIView* self, SEL message, CGRect frame) {
            variable<UIView*>(list, "_tableView") = other;
            return init(self, message, frame);
        });
    list = send<"alloc", UIView*>(objc_getClass("SBLockScreenNotificationListView"));
    list->initWithFrame(CGRect::make(0, 0, 320, 568));
    EXPECT_EQ(panel::calendarPane()->frame(), CGRect::make(0, 0, 320, 568));
    EXPECT_EQ(panel::notificationPane()->frame(), CGRect::make(1, 2, 30, 40));
    EXPECT_EQ(other->superview(), panel::notificationPane());
}

namespace {

class MissingVariableDeathTest : public PanelConstruction, public testing::WithParamInterface<const char*> {};

} // namespace

TEST_P(MissingVariableDeathTest, EndsSpringBoard)
{
    hideInstanceVariable(GetParam());
    EXPECT_DEATH(build(), "");
}

INSTANTIATE_TEST_SUITE_P(ListView, MissingVariableDeathTest,
                         testing::Values("_containerView", "_bottomPocketView", "_topPocketView", "_tableView"));

// The result

TEST_F(PanelConstruction, GivesTheListViewThatSpringBoardMade)
{
    UIView* const allocated = send<"alloc", UIView*>(objc_getClass("SBLockScreenNotificationListView"));
    EXPECT_EQ(allocated->initWithFrame(CGRect::make(0, 0, 320, 568)), allocated);
    EXPECT_EQ(allocated->frame(), CGRect::make(0, 0, 320, 568));
}

TEST_F(PanelOfAnotherSpringBoard, TheResultOfTheReplacedInitialiserIsGivenAndHoldsThePanel)
{
    static UIView* receiver = nullptr;
    static UIView* other = nullptr;
    build(+[](UIView* list) {
        receiver = list;
        const auto cls = objc_getClass("SBLockScreenNotificationListView");
        other = stock_(send<"alloc", UIView*>(cls), selector<"initWithFrame:">(), CGRect::make(0, 0, 200, 400));
        return other;
    });
    EXPECT_EQ(list_, other);
    // The container is the result's, all else the receiver's.
    EXPECT_EQ(panel::headline()->superview(), panel::container(other));
    EXPECT_EQ(panel::notificationIcon()->frame(), CGRect::make(146, 87, 32, 32));
    EXPECT_EQ(panel::bottomPocket(receiver)->superview(), nullptr);
    EXPECT_NE(panel::bottomPocket(other)->superview(), nullptr);
    EXPECT_EQ(panel::table(receiver)->superview(), panel::notificationPane());
    EXPECT_EQ(panel::calendarPane()->frame(), CGRect::make(0, 0, 320, 568));
    EXPECT_THAT(recognisersOf(panel::calendarIcon(), receiver), ElementsAre("imgCalenderTapped 1", "normalizePrevTap 2"));
}

TEST_F(PanelOfAnotherSpringBoard, TheReplacedInitialiserHasRunBeforeAnythingIsBuilt)
{
    static bool wasEmpty = false;
    build(+[](UIView* list) {
        wasEmpty = exportedVariable("headlineLabel") == nullptr && panel::container(list)->subviews()->count() == 3;
        return list;
    });
    EXPECT_TRUE(wasEmpty);
}
