#include "platform/Foundation/NSArray.hpp"
#include "platform/SpringBoard/SBLockScreen.hpp"
#include "platform/UIKit/UITableView.hpp"
#include "platform/runtime/ClassBuilder.hpp"
#include "simulator/springboard/springboard_classes.hpp"

/// The stock controller: it keeps the list's items, newest first, and is the table's data source.

namespace simulator {

namespace {

using Controller = SBLockScreenNotificationListController;

struct ControllerIvars {
    Strong<NSMutableArray> _listItems;
    Strong<SBLockScreenNotificationListView> _listView;
    BOOL _inScreenOffMode;
};

Controller* initWithListView(Controller* self, SEL, SBLockScreenNotificationListView* view)
{
    auto& ivars = ivarsOf<ControllerIvars>(self);
    ivars._listItems = adopt(NSMutableArray::alloc()->init());
    ivars._listView = view;
    send<"setDataSource:">(view, self);
    return self;
}

/// The item is in the list before anybody is told.
void addItem(Controller* self, SEL, NSObject* item)
{
    ivarsOf<ControllerIvars>(self)._listItems->insertObject_atIndex(item, 0);
    self->_updateModelAndViewForAdditionOfItem(item);
}

void updateModelAndViewForAdditionOfItem(Controller* self, SEL, NSObject*)
{
    send<"reloadData">(ivarsOf<ControllerIvars>(self)._listView.get());
}

void clearItemsForNotificationCenter(Controller* self, SEL)
{
    auto& ivars = ivarsOf<ControllerIvars>(self);
    ivars._listItems->removeAllObjects();
    send<"reloadData">(ivars._listView.get());
}

/// The view may outlive the controller, which it does not retain.
void prepareForTeardown(Controller* self, SEL)
{
    send<"setDataSource:">(ivarsOf<ControllerIvars>(self)._listView.get(), static_cast<id>(nullptr));
}

/// With the screen off, the lock screen that the list is on shows nothing and takes no touches.
void setInScreenOffMode(Controller* self, SEL, BOOL isOff)
{
    auto& ivars = ivarsOf<ControllerIvars>(self);
    ivars._inScreenOffMode = isOff;
    ivars._listView->superview()->setHidden(isOff != NO);
}

BOOL isInScreenOffMode(Controller* self, SEL)
{
    return ivarsOf<ControllerIvars>(self)._inScreenOffMode;
}

NSInteger numberOfRows(Controller* self, SEL, UITableView*, NSInteger)
{
    return static_cast<NSInteger>(ivarsOf<ControllerIvars>(self)._listItems->count());
}

UITableViewCell* cellForRow(Controller* self, SEL, UITableView* table, NSInteger row)
{
    auto* const cell = send<"alloc", UITableViewCell*>(classNamed<"SBLockScreenBulletinCell">());
    cell->initWithFrame(CGRect::make(0, 0, table->bounds().size.width, table->rowHeight()));
    send<"setItem:">(cell, ivarsOf<ControllerIvars>(self)._listItems->objectAtIndex(static_cast<NSUInteger>(row)));
    return adopt(cell).autorelease();
}

} // namespace

void registerSBLockScreenNotificationListController()
{
    ClassBuilder<ControllerIvars>("SBLockScreenNotificationListController", "NSObject")
        .ivar<&ControllerIvars::_listItems>("_listItems")
        .ivar<&ControllerIvars::_listView>("_listView")
        .ivar<&ControllerIvars::_inScreenOffMode>("_inScreenOffMode")
        .method<"initWithListView:">(initWithListView)
        .method<"addItem:">(addItem)
        .method<"_updateModelAndViewForAdditionOfItem:">(updateModelAndViewForAdditionOfItem)
        .method<"clearItemsForNotificationCenter">(clearItemsForNotificationCenter)
        .method<"prepareForTeardown">(prepareForTeardown)
        .method<"setInScreenOffMode:">(setInScreenOffMode)
        .method<"isInScreenOffMode">(isInScreenOffMode)
        .method<"tableView:numberOfRowsInSection:">(numberOfRows)
        .method<"tableView:cellForRow:">(cellForRow)
        .registerClass();
}

} // namespace simulator
