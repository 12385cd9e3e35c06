#include <dlfcn.h>
#include <gmock/gmock.h>

#include "simulator/foundation/surroundings.hpp"
#include "simulator/runtime/SimulatedClass.hpp"
#include "tests/support/MessageLog.hpp"
#include "tests/support/MorningPhone.hpp"
#include "tests/support/drawn_texts.hpp"
#include "tests/support/list_items.hpp"
#include "tests/support/panel.hpp"
#include "tests/support/runtime_calls.hpp"
#include "tests/support/strip.hpp"

/// What the panel makes of SpringBoard's list: items that come, lists that are cleared, the screen that goes off and on. And
/// the two views that it keeps out of sight.

namespace {

using testing::ElementsAre;

class ListController : public testing::Test {
protected:
    static std::string subtitle() { return textOf(panel::subtitle()->text()); }

    LockedPhone phone_;
};

NSObject* controller()
{
    return simulator::listController();
}

constexpr const char* mail = "com.apple.mobilemail";

} // namespace

// Away texts

namespace {

struct Arrival {
    const char* time;
    const char* text;
    /// How often the time of day is asked for.
    int questions;
};

void PrintTo(const Arrival& arrival, std::ostream* stream)
{
    *stream << arrival.time;
}

class Arrivals : public ListController, public testing::WithParamInterface<Arrival> {};

/// Done before the hour is told, at each question for the hour.
void (*atEachQuestion)(int number) = nullptr;
int questions = 0;
NSObject* (*previousComponents)(NSObject*, SEL, NSUInteger, NSObject*);

/// From now on questions for the hour are counted.
void countQuestions()
{
    constexpr NSUInteger hour = 32;
    NSObject* const sample = send<"currentCalendar", NSObject*>(objc_getClass("NSCalendar"));
    previousComponents = simulator::replaceMethod<"components:fromDate:">(
        object_getClass(sample), +[](NSObject* self, SEL message, NSUInteger units, NSObject* date) -> NSObject* {
            NSObject* const components = previousComponents(self, message, units, date);
            if (units == hour) {
                ++questions;
                if (atEachQuestion != nullptr)
                    atEachQuestion(questions);
            }
            return components;
        });
}

} // namespace

TEST_P(Arrivals, PutAnAwayTextIntoTheSecondLine)
{
    freezeClockAtUniversalTime("2014-03-05T" + std::string(GetParam().time));
    countQuestions();
    notify(mail);
    EXPECT_EQ(subtitle(), GetParam().text);
    EXPECT_EQ(questions, GetParam().questions);
}

INSTANTIATE_TEST_SUITE_P(
    AroundTheClock, Arrivals,
    testing::Values(Arrival{"23:00:00", "While you were asleep...", 4}, Arrival{"00:00:00", "While you were asleep...", 4},
                    Arrival{"06:59:59", "While you were asleep...", 4}, Arrival{"07:00:00", "While you were gone...", 1},
                    Arrival{"12:59:59", "While you were gone...", 1}, Arrival{"13:00:00", "While you were gone...", 2},
                    Arrival{"17:59:59", "While you were gone...", 2}, Arrival{"18:00:00", "While you were gone...", 3},
                    Arrival{"21:59:59", "While you were gone...", 3}, Arrival{"22:00:00", "While you were asleep...", 4}));

TEST_F(ListController, AMorningThatBeginsBetweenTheQuestionsLeavesTheLineAsItIs)
{
    freezeClockAtUniversalTime("2014-03-05T06:59:59");
    countQuestions();
    // Night at the first question, morning at all others: no question gets the answer that it is about.
    atEachQuestion = [](int number) {
        if (number == 1)
            freezeClockAtUniversalTime("2014-03-05T07:00:00");
    };
    panel::subtitle()->setText(text("as it was"));
    notify(mail);
    EXPECT_EQ(subtitle(), "as it was");
    EXPECT_EQ(questions, 4);
    // The strip gains its icon all the same.
    EXPECT_EQ(panel::strip()->subviews()->count(), 1U);
}

TEST_F(ListController, ANightThatBeginsBetweenTheQuestionsIsSeen)
{
    freezeClockAtUniversalTime("2014-03-05T21:59:59");
    countQuestions();
    // Evening at the first two questions, night at the third, which is about the evening.
    atEachQuestion = [](int number) {
        if (number == 2)
            freezeClockAtUniversalTime("2014-03-05T22:00:00");
    };
    notify(mail);
    EXPECT_EQ(subtitle(), "While you were asleep...");
    EXPECT_EQ(questions, 4);
}

TEST_F(ListController, AnEveningThatBeginsBetweenTheQuestionsIsSeen)
{
    freezeClockAtUniversalTime("2014-03-05T17:59:59");
    countQuestions();
    atEachQuestion = [](int number) {
        if (number == 1)
            freezeClockAtUniversalTime("2014-03-05T18:00:00");
    };
    notify(mail);
    EXPECT_EQ(subtitle(), "While you were gone...");
    EXPECT_EQ(questions, 3);
}

TEST_F(ListController, EachItemChoosesItsAwayTextAnew)
{
    notify(mail);
    EXPECT_EQ(subtitle(), "While you were gone...");
    freezeClockAtUniversalTime("2014-03-05T23:30:00");
    notify(mail);
    EXPECT_EQ(subtitle(), "While you were asleep...");
}

TEST_F(ListController, AnItemLeavesTheGreetingAlone)
{
    panel::headline()->setText(text("Hello"));
    notify(mail);
    EXPECT_EQ(textOf(panel::headline()->text()), "Hello");
}

// The strip

namespace {

/// SpringBoard's own controller and the panel's parts note what they are told.
class NotedListController : public testing::Test {
protected:
    NotedListController()
    {
        Noted<"SBLockScreenNotificationListController", "_updateModelAndViewForAdditionOfItem:", void, id>::install();
        Noted<"SBLockScreenNotificationListController", "prepareForTeardown", void>::install();
        Noted<"SBLockScreenNotificationListController", "clearItemsForNotificationCenter", void>::install();
        Noted<"SBLockScreenNotificationListController", "setInScreenOffMode:", void, BOOL>::install();
        phone_.inject();
        simulator::lockScreen();
        MessageLog::name(simulator::listController(), "controller");
        MessageLog::name(panel::headline(), "headline");
        MessageLog::name(panel::subtitle(), "subtitle");
        MessageLog::name(panel::strip(), "strip");
        Noted<"SVAppsView", "setItems:", void, id>::install();
        Noted<"SVAppsView", "addIconFor:andBadgeCount:", void, id, NSInteger>::install();
        Noted<"SVAppsView", "showIcons", void>::install();
        Noted<"SVAppsView", "clearAll", void>::install();
        // A label's text, by its words.
        setText_ = simulator::replaceMethod<"setText:">(
            objc_getClass("UILabel"), +[](UILabel* self, SEL message, NSString* words) {
                MessageLog::messages().push_back(MessageLog::describe(self) + " \"" + textOf(words) + '"');
                setText_(self, message, words);
            });
        MessageLog::messages().clear();
    }

    static std::vector<std::string> taken()
    {
        std::vector<std::string> all = std::exchange(MessageLog::messages(), {});
        std::erase_if(all, [](const std::string& message) { return message.starts_with('?'); });
        return all;
    }

    static inline void (*setText_)(UILabel*, SEL, NSString*);
    MorningPhone phone_;
};

} // namespace

TEST_F(NotedListController, AnItemGoesToSpringBoardThenToTheLineThenToTheStrip)
{
    const auto item = notification(mail);
    MessageLog::name(item, "item");
    MessageLog::name(instanceVariable<NSObject>(controller(), "_listItems"), "list");
    simulator::addListItem(item);
    EXPECT_THAT(taken(),
                ElementsAre("controller _updateModelAndViewForAdditionOfItem: item", "subtitle \"While you were gone...\"",
                            "strip setItems: list", "strip addIconFor:andBadgeCount: item 0", "strip showIcons"));
}

TEST_F(NotedListController, EachItemOfOneApplicationIsAddedWithCountZero)
{
    const auto first = notification(mail);
    const auto second = notification(mail);
    MessageLog::name(first, "first");
    MessageLog::name(second, "second");
    MessageLog::name(instanceVariable<NSObject>(controller(), "_listItems"), "list");
    simulator::addListItem(first);
    simulator::addListItem(second);
    EXPECT_THAT(taken(),
                ElementsAre("controller _updateModelAndViewForAdditionOfItem: first", "subtitle \"While you were gone...\"",
                            "strip setItems: list", "strip addIconFor:andBadgeCount: first 0", "strip showIcons",
                            "controller _updateModelAndViewForAdditionOfItem: second", "subtitle \"While you were gone...\"",
                            "strip setItems: list", "strip addIconFor:andBadgeCount: second 0", "strip showIcons"));
}

TEST_F(NotedListController, ATeardownGoesToSpringBoardThenBringsTheWeatherAndEmptiesTheStrip)
{
    send<"prepareForTeardown">(controller());
    EXPECT_THAT(taken(), ElementsAre("controller prepareForTeardown", std::string("subtitle \"") + morningWeather + '"',
                                     "strip clearAll", "strip showIcons"));
}

TEST_F(NotedListController, AClearingGoesToSpringBoardThenBringsTheWeatherAndEmptiesTheStrip)
{
    send<"clearItemsForNotificationCenter">(controller());
    EXPECT_THAT(taken(), ElementsAre("controller clearItemsForNotificationCenter",
                                     std::string("subtitle \"") + morningWeather + '"', "strip clearAll", "strip showIcons"));
}

TEST_F(NotedListController, TheScreensModeGoesToSpringBoardThenBringsBothLinesBothWays)
{
    for (const BOOL isOff : {YES, NO}) {
        send<"setInScreenOffMode:">(controller(), isOff);
        EXPECT_THAT(taken(), ElementsAre(isOff != NO ? "controller setInScreenOffMode: YES" : "controller setInScreenOffMode: NO",
                                         "headline \"Good morning, Pal.\"", std::string("subtitle \"") + morningWeather + '"'));
    }
}

TEST_F(ListController, TheStripHasTheVeryListOfTheController)
{
    notify(mail);
    auto* const list = instanceVariable<NSMutableArray>(controller(), "_listItems");
    EXPECT_EQ(strip::items(panel::strip()), list);
    notify("org.solvane.ferry");
    EXPECT_EQ(strip::items(panel::strip())->count(), 2U);
}

TEST_F(ListController, TheListIsReadAtEachItem)
{
    notify(mail);
    const auto other = arrayOf({notification(mail), notification(mail), notification(mail)});
    const Ivar ivar = class_getInstanceVariable(object_getClass(controller()), "_listItems");
    *reinterpret_cast<NSObject**>(reinterpret_cast<char*>(controller()) + ivar_getOffset(ivar)) =
        objc_retain(static_cast<NSObject*>(other));
    noteDrawnTexts();
    notify(mail);
    EXPECT_EQ(strip::items(panel::strip()), other.get());
    EXPECT_THAT(drawnTexts(), ElementsAre("4"));
}

TEST_F(ListController, TheListIsTheOneThatSpringBoardLeaves)
{
    // SpringBoard has put the item into its list by the time it tells of it.
    noteDrawnTexts();
    notify(mail);
    notify(mail);
    notify("org.solvane.ferry");
    EXPECT_THAT(drawnTexts(), ElementsAre("1", "2", "1"));
}

using ListControllerOfAnotherSpringBoard = TestOn<MorningPhone>;

TEST_F(ListControllerOfAnotherSpringBoard, AnItemThatIsToldOfWithoutBeingInTheListCountsNothing)
{
    simulator::replaceMethod<"_updateModelAndViewForAdditionOfItem:">(
        objc_getClass("SBLockScreenNotificationListController"), +[](NSObject*, SEL, NSObject*) {});
    phone.inject();
    simulator::lockScreen();
    noteDrawnTexts();
    notify(mail);
    EXPECT_THAT(drawnTexts(), ElementsAre("0"));
}

TEST_F(ListController, TheWeatherGoesIntoTheLineThatIsInTheRecordOnceTheServiceHasAnswered)
{
    static Owned<UIView> newer;
    simulator::replaceMethod<"isCelsius">(
        objc_getClass("WeatherPreferences"), +[](NSObject*, SEL) -> BOOL {
            static bool wasAsked = false;
            if (!std::exchange(wasAsked, true)) {
                newer = panel::newListView();
                panel::subtitle()->setText(text("Nothing yet"));
            }
            return YES;
        });
    send<"prepareForTeardown">(controller());
    EXPECT_EQ(subtitle(), morningWeather);
}

using MissingListDeathTest = ListController;

TEST_F(MissingListDeathTest, EndsSpringBoard)
{
    hideInstanceVariable("_listItems");
    EXPECT_DEATH(notify(mail), "");
}

// Clearing

TEST_F(ListController, ClearingEmptiesTheStripAndBringsTheWeatherBack)
{
    notify(mail);
    notify("org.solvane.ferry");
    send<"clearItemsForNotificationCenter">(controller());
    EXPECT_EQ(subtitle(), morningWeather);
    EXPECT_EQ(panel::strip()->subviews()->count(), 0U);
    EXPECT_EQ(strip::icons(panel::strip())->count(), 0U);
    notify(mail);
    EXPECT_EQ(panel::strip()->subviews()->count(), 1U);
}

TEST_F(ListController, ATeardownEmptiesTheStripAndBringsTheWeatherBack)
{
    notify(mail);
    send<"prepareForTeardown">(controller());
    EXPECT_EQ(subtitle(), morningWeather);
    EXPECT_EQ(panel::strip()->subviews()->count(), 0U);
}

TEST_F(ListController, ClearingLeavesTheGreetingAndThePanesAlone)
{
    panel::tap(panel::calendarIcon());
    panel::headline()->setText(text("Hello"));
    send<"clearItemsForNotificationCenter">(controller());
    EXPECT_EQ(textOf(panel::headline()->text()), "Hello");
    EXPECT_FALSE(panel::calendarPane()->isHidden());
}

TEST_F(ListController, TheWeatherThatComesBackIsTheLatest)
{
    notify(mail);
    simulator::surroundings().weather = simulator::LocalWeather{"-3", 16};
    send<"clearItemsForNotificationCenter">(controller());
    EXPECT_EQ(subtitle(), "It's -3° C and Snow.");
}

// The screen

TEST_F(ListController, TheScreenBringsTheGreetingOfTheHourAndTheWeatherBothWays)
{
    for (const BOOL isOff : {YES, NO}) {
        freezeClockAtUniversalTime(isOff != NO ? "2014-03-05T14:00:00" : "2014-03-05T23:00:00");
        panel::headline()->setText(text("one"));
        panel::subtitle()->setText(text("two"));
        send<"setInScreenOffMode:">(controller(), isOff);
        EXPECT_EQ(textOf(panel::headline()->text()), isOff != NO ? "Good afternoon, Pal." : "Good night, Pal.");
        EXPECT_EQ(subtitle(), morningWeather);
    }
}

TEST_F(ListController, TheScreenLeavesTheStripAlone)
{
    notify(mail);
    UIView* const icon = strip::iconOf(panel::strip(), mail);
    for (const BOOL isOff : {YES, NO}) {
        send<"setInScreenOffMode:">(controller(), isOff);
        EXPECT_EQ(strip::iconOf(panel::strip(), mail), icon);
        EXPECT_EQ(icon->superview(), panel::strip());
    }
}

TEST_F(ListController, TheScreensModeIsSpringBoardsToKeep)
{
    send<"setInScreenOffMode:">(controller(), YES);
    EXPECT_TRUE(simulator::lockScreenView()->isHidden());
    send<"setInScreenOffMode:">(controller(), NO);
    EXPECT_FALSE(simulator::lockScreenView()->isHidden());
}

// A newer lock screen

TEST_F(ListController, ItemsGoToTheNewerPanel)
{
    notify(mail);
    const Owned<UIScrollView> older = panel::strip();
    simulator::lockScreen();
    // The older one was emptied when it was torn down.
    EXPECT_EQ(older->subviews()->count(), 0U);
    notify("org.solvane.ferry");
    EXPECT_EQ(older->subviews()->count(), 0U);
    EXPECT_NE(panel::strip(), older.get());
    EXPECT_NE(strip::iconOf(panel::strip(), "org.solvane.ferry"), nullptr);
}

// The underlay and the artwork

TEST_F(ListController, TheUnderlayIsNeverAdded)
{
    UIView* const lock = simulator::lockScreenView();
    const NSUInteger before = lock->subviews()->count();
    for (NSObject* requester : {static_cast<NSObject*>(simulator::listController()), static_cast<NSObject*>(nullptr)})
        send<"_addLockContentUnderlayWithRequester:">(lock, requester);
    EXPECT_EQ(lock->subviews()->count(), before);
}

namespace {

Owned<UIView> artView(CGRect frame = CGRect::make(0, 0, 320, 320))
{
    return adopt(send<"alloc", UIView*>(objc_getClass("_NowPlayingArtView"))->initWithFrame(frame));
}

} // namespace

TEST_F(ListController, AnArtViewStartsHiddenAndIsRemembered)
{
    EXPECT_EQ(exportedVariable("nowPlayingArtView"), nullptr);
    const auto art = artView(CGRect::make(1, 2, 30, 40));
    EXPECT_TRUE(art->isHidden());
    EXPECT_EQ(art->frame(), CGRect::make(1, 2, 30, 40));
    EXPECT_EQ(exportedVariable<UIView>("nowPlayingArtView"), art.get());
    EXPECT_EQ(retainCount(art), 2U);
}

TEST_F(ListController, TheNewestArtViewTakesThePlaceOfThePreviousOne)
{
    const auto first = artView();
    const auto second = artView();
    EXPECT_TRUE(second->isHidden());
    EXPECT_EQ(exportedVariable<UIView>("nowPlayingArtView"), second.get());
    EXPECT_EQ(retainCount(first), 1U);
}

TEST_F(ListController, AnArtViewThatSpringBoardShowsIsLeftAlone)
{
    const auto art = artView();
    art->setHidden(false);
    panel::layOut();
    notify(mail);
    EXPECT_FALSE(art->isHidden());
}

TEST_F(ListController, ALockScreenLeavesTheArtViewInTheRecord)
{
    const auto art = artView();
    simulator::lockScreen();
    EXPECT_EQ(exportedVariable<UIView>("nowPlayingArtView"), art.get());
}

using ArtViewOfAnotherSpringBoard = TestOn<MorningPhone>;

TEST_F(ArtViewOfAnotherSpringBoard, WhateverTheInitialiserGivesIsHiddenKeptAndGiven)
{
    static UIView* other = nullptr;
    other = UIView::alloc()->initWithFrame({});
    // The class is there before the library asks for it.
    ASSERT_NE(dlopen(phone.tree().artLibrary().c_str(), RTLD_NOW), nullptr);
    simulator::replaceMethod<"initWithFrame:">(objc_getClass("_NowPlayingArtView"), +[](UIView*, SEL, CGRect) { return other; });
    phone.inject();
    UIView* const made = send<"alloc", UIView*>(objc_getClass("_NowPlayingArtView"))->initWithFrame({});
    EXPECT_EQ(made, other);
    EXPECT_TRUE(other->isHidden());
    EXPECT_EQ(exportedVariable<UIView>("nowPlayingArtView"), other);
    EXPECT_EQ(retainCount(other), 2U);
}

TEST_F(ArtViewOfAnotherSpringBoard, AnInitialiserThatGivesNothingIsTakenAtItsWord)
{
    ASSERT_NE(dlopen(phone.tree().artLibrary().c_str(), RTLD_NOW), nullptr);
    static bool givesNothing = false;
    static UIView* (*init)(UIView*, SEL, CGRect);
    init = simulator::replaceMethod<"initWithFrame:">(
        objc_getClass("_NowPlayingArtView"),
        +[](UIView* self, SEL message, CGRect frame) { return givesNothing ? nullptr : init(self, message, frame); });
    phone.inject();
    const auto first = artView();
    givesNothing = true;
    EXPECT_EQ(artView(), nullptr);
    EXPECT_EQ(exportedVariable("nowPlayingArtView"), nullptr);
    EXPECT_EQ(retainCount(first), 1U);
}
