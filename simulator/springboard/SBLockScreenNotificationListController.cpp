#include "simulator/springboard/SBLockScreenNotificationListController.hpp"

#include <algorithm>
#include <vector>

#include "platform/runtime/ClassBuilder.hpp"
#include "simulator/foundation/phone_system.hpp"
#include "simulator/runtime/SimulatedClass.hpp"
#include "simulator/springboard/bulletins.hpp"
#include "simulator/springboard/geometry.hpp"
#include "simulator/springboard/list_items.hpp"
#include "simulator/springboard/springboard_classes.hpp"

/// The stock controller: the bulletin board tells it of notifications, it makes items of them, keeps these newest first, and
/// tells its view. Cards and alerts have a file of their own. An item is in the list when the method that adds it returns, and
/// not before it is called.

namespace simulator {

namespace {

using Controller = SBLockScreenNotificationListController;
using ListView = SBLockScreenNotificationListView;
using Notification = SBAwayBulletinListItem;

struct ControllerIvars {
    Strong<ListView> _notificationView;
    Strong<NSMutableArray> _listItems;
};

ListView* viewOf(Controller* self)
{
    return ivarsOf<ControllerIvars>(self)._notificationView;
}

/// The place of that very item; NSNotFound when it is not in the list.
NSUInteger placeOf(Controller* self, NSObject* item)
{
    return send<"indexOfObjectIdenticalTo:", NSUInteger>(itemsOf(self), item);
}

Controller* initWithNibName_bundle(Controller* self, SEL, NSString* name, NSObject* bundle)
{
    superOf<ControllerIvars, "initWithNibName:bundle:", Controller*>(self, name, bundle);
    ivarsOf<ControllerIvars>(self)._listItems = adopt(NSMutableArray::alloc()->init());
    return self;
}

void loadView(Controller* self, SEL)
{
    auto& view = ivarsOf<ControllerIvars>(self)._notificationView;
    UIView* const allocated = send<"alloc", UIView*>(classNamed<"SBLockScreenNotificationListView">());
    view = adopt(static_cast<ListView*>(allocated->initWithFrame(geometry().notificationView)));
    send<"setModel:">(view.get(), self);
    self->setView(view);
}

// What the view asks its model

NSUInteger count(Controller* self, SEL)
{
    return itemsOf(self)->count();
}

NSObject* listItemAtIndexPath(Controller* self, SEL, NSIndexPath* path)
{
    return itemsOf(self)->objectAtIndex(static_cast<NSUInteger>(path->row()));
}

// What happens to items

/// Newest first; what is equally new stays as it stands.
void sortItemList(Controller*, SEL, NSMutableArray* list)
{
    std::vector<Owned<NSObject>> items;
    for (NSObject* item : each<NSObject>(list))
        items.emplace_back(item);
    const auto age = [](const Owned<NSObject>& item) {
        return -ivarsOf<ListItemIvars>(item.get())._timestamp->timeIntervalSince1970();
    };
    if (std::ranges::is_sorted(items, {}, age))
        return;
    std::ranges::stable_sort(items, {}, age);
    list->removeAllObjects();
    for (const auto& item : items)
        list->addObject(item);
}

void sortListItems(Controller* self, SEL selector)
{
    sortItemList(self, selector, itemsOf(self));
}

void updateForAddition(Controller* self, SEL selector, NSObject* item)
{
    // Told of twice, an item is listed once.
    if (placeOf(self, item) == NSUInteger{NSNotFound})
        itemsOf(self)->insertObject_atIndex(item, 0);
    sortListItems(self, selector);
    send<"updateForAdditionOfItemAtIndex:allowHighlightOnInsert:">(viewOf(self), placeOf(self, item), YES);
}

void updateForModification(Controller* self, SEL selector, NSObject* item)
{
    const NSUInteger oldPlace = placeOf(self, item);
    sortListItems(self, selector);
    send<"updateForModificationOfItemWithOldIndex:andNewIndex:">(viewOf(self), oldPlace, placeOf(self, item));
}

void updateForRemoval(Controller* self, SEL, NSObject* item)
{
    const Owned<NSObject> removed(item);
    const NSUInteger place = placeOf(self, item);
    send<"removeObjectAtIndex:">(itemsOf(self), place);
    send<"updateForRemovalOfItemAtIndex:removedItem:">(viewOf(self), place, removed.get());
}

void updateForReplacing(Controller* self, SEL, NSObject* item, NSObject* newItem)
{
    const NSUInteger place = placeOf(self, item);
    send<"replaceObjectAtIndex:withObject:">(itemsOf(self), place, newItem);
    send<"updateForModificationOfItemWithOldIndex:andNewIndex:">(viewOf(self), place, place);
}

void clearItemsForNotificationCenter(Controller* self, SEL)
{
    itemsOf(self)->removeAllObjects();
    send<"updateForRemovalOfItems">(viewOf(self));
}

// What the bulletin board tells

/// The item that takes the bulletin in; nil when it gets one of its own.
Notification* itemThatTakesIn(Controller* self, SEL, BBBulletin* bulletin)
{
    return firstItem<Notification, "SBAwayBulletinListItem">(
        self, [bulletin](Notification* item) { return send<"canCoalesceWithBulletin:", BOOL>(item, bulletin) != NO; });
}

Notification* itemWith(Controller* self, BBBulletin* bulletin)
{
    return firstItem<Notification, "SBAwayBulletinListItem">(self, [bulletin](Notification* item) {
        bool holds = false;
        for (BBBulletin* own : each<BBBulletin>(send<"bulletins", NSArray*>(item)))
            holds |= areTheSame(own, bulletin);
        return holds;
    });
}

/// The caller's own, as all that a method of such a name gives.
template <class... PlaysLightsAndSirens>
NSObject* newItemForBulletin(Controller*, SEL, BBBulletin* bulletin, PlaysLightsAndSirens...)
{
    NSObject* const item = newListItem(classNamed<"SBAwayBulletinListItem">()).leak();
    return send<"initWithBulletin:andObserver:", NSObject*>(item, bulletin, id{});
}

Owned<NSObject> itemFor(Controller* self, BBBulletin* bulletin)
{
    if (phoneSystem() < System::v8_1)
        return adopt(newItemForBulletin(self, nullptr, bulletin));
    if (phoneSystem() < System::v8_4)
        return adopt(send<"_newItemForBulletin:", NSObject*>(self, bulletin));
    return adopt(send<"_newItemForBulletin:shouldPlayLightsAndSirens:", NSObject*>(self, bulletin, YES));
}

void addBulletin(Controller* self, BBBulletin* bulletin)
{
    if (Notification* const item = itemThatTakesIn(self, nullptr, bulletin)) {
        send<"addBulletin:">(item, bulletin);
        send<"_updateModelAndViewForModificationOfItem:">(self, item);
        return;
    }
    self->_updateModelAndViewForAdditionOfItem(itemFor(self, bulletin));
}

void observer_addBulletin_forFeed(Controller* self, SEL, NSObject*, BBBulletin* bulletin, NSUInteger)
{
    addBulletin(self, bulletin);
}

void observer_addBulletin_forFeed_playLightsAndSirens_withReply(Controller* self, SEL, NSObject*, BBBulletin* bulletin,
                                                                NSUInteger, BOOL, id)
{
    addBulletin(self, bulletin);
}

void observer_modifyBulletin(Controller* self, SEL, NSObject*, BBBulletin* bulletin)
{
    Notification* const item = itemWith(self, bulletin);
    if (item == nullptr)
        return;
    send<"modifyBulletin:">(item, bulletin);
    send<"_updateModelAndViewForModificationOfItem:">(self, item);
}

/// An item goes with its last bulletin.
void observer_removeBulletin(Controller* self, SEL, NSObject*, BBBulletin* bulletin)
{
    Notification* const item = itemWith(self, bulletin);
    if (item == nullptr)
        return;
    if (send<"bulletins", NSArray*>(item)->count() == 1) {
        send<"_updateModelAndViewForRemovalOfItem:">(self, item);
        return;
    }
    send<"removeBulletin:">(item, bulletin);
    send<"_updateModelAndViewForModificationOfItem:">(self, item);
}

// What becomes of the lock screen

/// The view may outlive the controller, which it does not retain.
void prepareForTeardown(Controller* self, SEL)
{
    send<"setModel:">(viewOf(self), id{});
}

void setInScreenOffMode(Controller* self, SEL, BOOL isOff)
{
    send<"setInScreenOffMode:">(viewOf(self), isOff);
}

} // namespace

NSMutableArray* itemsOf(Controller* controller)
{
    return ivarsOf<ControllerIvars>(controller)._listItems;
}

void registerSBLockScreenNotificationListController()
{
    const Class controller = ClassBuilder<ControllerIvars>("SBLockScreenNotificationListController", "UIViewController")
                                 .ivar<&ControllerIvars::_notificationView>("_notificationView")
                                 .ivar<&ControllerIvars::_listItems>("_listItems")
                                 .method<"initWithNibName:bundle:">(initWithNibName_bundle)
                                 .method<"loadView">(loadView)
                                 .method<"count">(count)
                                 .method<"listItemAtIndexPath:">(listItemAtIndexPath)
                                 .method<"_updateModelAndViewForAdditionOfItem:">(updateForAddition)
                                 .method<"_updateModelAndViewForModificationOfItem:">(updateForModification)
                                 .method<"_updateModelAndViewForRemovalOfItem:">(updateForRemoval)
                                 .method<"_updateModelAndViewForReplacingItem:withNewItem:">(updateForReplacing)
                                 .method<"clearItemsForNotificationCenter">(clearItemsForNotificationCenter)
                                 .method<"observer:modifyBulletin:">(observer_modifyBulletin)
                                 .method<"observer:removeBulletin:">(observer_removeBulletin)
                                 .method<"prepareForTeardown">(prepareForTeardown)
                                 .method<"setInScreenOffMode:">(setInScreenOffMode)
                                 .registerClass();
    addCards(controller);
    addAlerts(controller);
    if (phoneSystem() < System::v8_1) {
        addMethod<"_sortListItems">(controller, &sortListItems);
        addMethod<"_listItemForNewBulletin:">(controller, &itemThatTakesIn);
        addMethod<"observer:addBulletin:forFeed:">(controller, &observer_addBulletin_forFeed);
    } else {
        addMethod<"_sortItemList:">(controller, &sortItemList);
        addMethod<"_coalescableListItemForNewBulletin:">(controller, &itemThatTakesIn);
        if (phoneSystem() < System::v8_4)
            addMethod<"_newItemForBulletin:">(controller, &newItemForBulletin<>);
        else
            addMethod<"_newItemForBulletin:shouldPlayLightsAndSirens:">(controller, &newItemForBulletin<BOOL>);
        addMethod<"observer:addBulletin:forFeed:playLightsAndSirens:withReply:">(
            controller, &observer_addBulletin_forFeed_playLightsAndSirens_withReply);
    }
}

} // namespace simulator
