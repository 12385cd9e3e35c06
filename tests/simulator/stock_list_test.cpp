#include <gmock/gmock.h>

#include "platform/Foundation/NSArray.hpp"
#include "platform/runtime/instance_variable.hpp"
#include "simulator/runtime/SimulatedClass.hpp"
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
