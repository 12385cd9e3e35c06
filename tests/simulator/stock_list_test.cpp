#include <gmock/gmock.h>

#include "platform/Foundation/NSArray.hpp"
#include "platform/UIKit/UITableView.hpp"
#include "platform/runtime/instance_variable.hpp"
#include "simulator/foundation/phone_system.hpp"
#include "simulator/foundation/surroundings.hpp"
#include "simulator/runtime/SimulatedClass.hpp"
#include "simulator/springboard/list_items.hpp"
#include "tests/support/MorningPhone.hpp"
#include "tests/support/list_items.hpp"

/// The stock controller's methods, as the library finds them.

namespace {

using testing::ElementsAre;

NSMutableArray* items()
{
    return instanceVariable<NSMutableArray>(simulator::listController(), "_listItems");
}

struct StockList : TestOn<MorningPhone> {
    StockList() { simulator::lockScreen(); }
};

} // namespace

TEST_F(StockList, HoldsANewItemWhenTheMethodThatAddsItReturnsAndNotBefore)
{
    static std::vector<NSUInteger> counts;
    static void (*add)(NSObject*, SEL, NSObject*);
    add = simulator::replaceMethod<"_updateModelAndViewForAdditionOfItem:">(
        objc_getClass("SBLockScreenNotificationListController"), +[](NSObject* self, SEL message, NSObject* item) {
            counts.push_back(items()->count());
            add(self, message, item);
            counts.push_back(items()->count());
        });
    notify("com.apple.mobilemail");
    notify("com.apple.MobileSMS");
    EXPECT_THAT(counts, ElementsAre(0U, 1U, 1U, 2U));
}

TEST_F(StockList, HasTheNewestItemFirst)
{
    const auto older = notification("com.apple.mobilemail");
    freezeClockAtUniversalTime("2014-03-05T08:31:00");
    const auto newer = notification("com.apple.MobileSMS");
    simulator::addListItem(newer);
    simulator::addListItem(older);
    EXPECT_EQ(items()->objectAtIndex(0), newer.get());
    EXPECT_EQ(items()->objectAtIndex(1), older.get());
}

TEST_F(StockList, HasTheLastThatCameFirstWhereTwoAreEquallyNew)
{
    const auto first = notification("com.apple.mobilemail");
    const auto last = notification("com.apple.MobileSMS");
    simulator::addListItem(first);
    simulator::addListItem(last);
    EXPECT_EQ(items()->objectAtIndex(0), last.get());
}

TEST_F(StockList, TakesAnotherItemInThePlaceOfOne)
{
    const auto one = notification("com.apple.mobilemail");
    const auto other = notification("com.apple.MobileSMS");
    simulator::addListItem(one);
    send<"_updateModelAndViewForReplacingItem:withNewItem:">(simulator::listController(), one.get(), other.get());
    EXPECT_EQ(items()->count(), 1U);
    EXPECT_EQ(items()->objectAtIndex(0), other.get());
}

namespace {

/// What the controller is told, in order.
std::vector<std::string>& told()
{
    static std::vector<std::string> messages;
    return messages;
}

/// Notes each message of that name that the controller gets, before it is carried out.
template <FixedString Name, class Result, class... Arguments>
void note()
{
    static Result (*previous)(NSObject*, SEL, Arguments...);
    previous = simulator::replaceMethod<Name>(
        objc_getClass("SBLockScreenNotificationListController"), +[](NSObject* self, SEL message, Arguments... arguments) {
            told().emplace_back(Name.text);
            return previous(self, message, arguments...);
        });
}

constexpr const char* addition = "_updateModelAndViewForAdditionOfItem:";
constexpr const char* modification = "_updateModelAndViewForModificationOfItem:";
constexpr const char* removal = "_updateModelAndViewForRemovalOfItem:";

bool isSeven()
{
    return simulator::phoneSystem() < simulator::System::v8_1;
}

struct WhatTheControllerIsTold : StockList {
    WhatTheControllerIsTold()
    {
        note<"activateCardItem:animated:", void, NSObject*, BOOL>();
        note<"updateCardItem:", void, NSObject*>();
        note<"deactivateCardItem:", void, NSObject*>();
        note<"_updateModelAndViewForAdditionOfItem:", void, NSObject*>();
        note<"_updateModelAndViewForModificationOfItem:", void, NSObject*>();
        note<"_updateModelAndViewForRemovalOfItem:", void, NSObject*>();
        if (isSeven()) {
            note<"activateAlertItem:", BOOL, NSObject*>();
            note<"deactivateAlertItem:", void, NSObject*>();
        } else {
            note<"activateAlertItem:animated:", BOOL, NSObject*, BOOL>();
            note<"deactivateAlertItem:animated:", void, NSObject*, BOOL>();
        }
    }

    static NSObject* first() { return items()->objectAtIndex(0); }
};

} // namespace

TEST_F(WhatTheControllerIsTold, OfACard)
{
    simulator::receiveCard(text("pass.1"), text("Ferry"));
    simulator::modifyListItem(first(), text("Train"), nullptr);
    simulator::receiveCard(text("pass.1"), text("Bus"));
    simulator::removeListItem(first());
    EXPECT_THAT(told(), ElementsAre("activateCardItem:animated:", addition, "updateCardItem:", modification,
                                    "activateCardItem:animated:", modification, "deactivateCardItem:", removal));
    EXPECT_EQ(items()->count(), 0U);
}

TEST_F(WhatTheControllerIsTold, OfAnAlert)
{
    simulator::receiveAlert(text("Low Battery"), nullptr);
    simulator::removeListItem(first());
    if (isSeven())
        EXPECT_THAT(told(), ElementsAre("activateAlertItem:", addition, "deactivateAlertItem:", removal));
    else
        EXPECT_THAT(told(), ElementsAre("activateAlertItem:animated:", addition, "deactivateAlertItem:animated:", removal));
}

TEST_F(WhatTheControllerIsTold, OfACardOrAnAlertThatTheListLacksChangesNothing)
{
    simulator::receiveCard(text("pass.1"), text("Ferry"));
    simulator::receiveAlert(text("Low Battery"), nullptr);
    const auto card = simulator::newCard(text("pass.2"), nullptr);
    const auto alert = simulator::newAlert(text("Low Battery"), nullptr);
    told().clear();
    send<"updateCardItem:">(simulator::listController(), card.get());
    send<"deactivateCardItem:">(simulator::listController(), card.get());
    if (isSeven())
        send<"deactivateAlertItem:">(simulator::listController(), alert.get());
    else
        send<"deactivateAlertItem:animated:">(simulator::listController(), alert.get(), NO);
    EXPECT_THAT(told(), testing::Each(testing::Not(testing::HasSubstr("_updateModel"))));
    EXPECT_EQ(items()->count(), 2U);
}

TEST_F(StockList, MakesTheItemOfABulletinByTheMethodOfItsSystem)
{
    const Class controller = objc_getClass("SBLockScreenNotificationListController");
    const auto answers = [&](const char* name) { return class_getInstanceMethod(controller, sel_registerName(name)) != nullptr; };
    const auto system = simulator::phoneSystem();
    EXPECT_EQ(answers("_newItemForBulletin:"), system == simulator::System::v8_1);
    EXPECT_EQ(answers("_newItemForBulletin:shouldPlayLightsAndSirens:"), system == simulator::System::v8_4);
}

// The table, which may outlive the list

namespace {

/// What the table knows of a list, which is only compared: there may be nobody.
struct Known {
    NSObject* dataSource;
    NSObject* delegate;

    explicit Known(UITableView* table)
        : dataSource(send<"dataSource", NSObject*>(table)), delegate(send<"delegate", NSObject*>(table))
    {
    }
};

struct OutlivingTable : StockList {
    OutlivingTable()
    {
        lockAgain();
        notify("com.apple.mobilemail");
        simulator::listView()->layoutIfNeeded();
        list = simulator::listView();
        objc_storeWeak(&weakList, list);
        table = instanceVariable<UITableView>(simulator::listView(), "_tableView");
    }

    static void lockAgain()
    {
        const AutoreleasePool pool;
        simulator::lockScreen();
    }

    NSObject* list = nullptr;
    id weakList = nullptr;
    Owned<UITableView> table;
};

int rowsGone = 0;

/// Whether there was a list still when the next one was made.
bool wasThere = true;

} // namespace

TEST_F(OutlivingTable, HasTheListForItsDataSourceAndDelegate)
{
    EXPECT_EQ(Known(table).dataSource, list);
    EXPECT_EQ(Known(table).delegate, list);
}

TEST_F(OutlivingTable, HasNoListAnyMoreWhenTheNextOneIsMade)
{
    static id& previous = weakList;
    static NSObject* (*make)(NSObject*, SEL, CGRect);
    make = simulator::replaceMethod<"initWithFrame:">(
        objc_getClass("SBLockScreenNotificationListView"), +[](NSObject* self, SEL message, CGRect frame) {
            wasThere = previous != nullptr;
            return make(self, message, frame);
        });
    lockAgain();
    EXPECT_FALSE(wasThere);
}

TEST_F(OutlivingTable, IsLeftByAListThatGoes)
{
    lockAgain();
    ASSERT_EQ(weakList, nullptr);
    EXPECT_EQ(Known(table).dataSource, nullptr);
    EXPECT_EQ(Known(table).delegate, nullptr);
}

TEST_F(OutlivingTable, KeepsPointersToNobodyWhereTheListDoesNotClearThem)
{
    simulator::surroundings().listViewClearsItsTable = false;
    lockAgain();
    ASSERT_EQ(weakList, nullptr);
    EXPECT_EQ(Known(table).dataSource, list);
    EXPECT_EQ(Known(table).delegate, list);
    // It would speak to them at its end.
    table->setDataSource(nullptr);
    send<"setDelegate:">(table.get(), id{});
}

TEST_F(OutlivingTable, TellsItsDelegateOfRowsThatGo)
{
    simulator::replaceMethod<"tableView:didEndDisplayingCell:forRowAtIndexPath:">(
        objc_getClass("SBLockScreenNotificationListView"),
        +[](NSObject*, SEL, UITableView*, UITableViewCell*, NSIndexPath*) { ++rowsGone; });
    notify("com.apple.MobileSMS");
    simulator::listView()->layoutIfNeeded();
    EXPECT_EQ(rowsGone, 1);
    {
        const auto another = adopt(UITableView::alloc()->initWithFrame(table->frame()));
        another->setDataSource(simulator::listView());
        send<"setDelegate:">(another.get(), simulator::listView());
        another->layoutIfNeeded();
        EXPECT_EQ(rowsGone, 1);
    }
    EXPECT_EQ(rowsGone, 3);
}
