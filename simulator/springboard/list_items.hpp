#pragma once

#include "platform/Foundation/NSDate.hpp"
#include "platform/SpringBoard/SBAwayListItem.hpp"
#include "platform/UIKit/UITableView.hpp"
#include "platform/runtime/Owned.hpp"
#include "platform/runtime/Strong.hpp"

/// What the system asks or tells its user.
class SBAlertItem : public NSObject {};

namespace simulator {

/// The instance variables of SBAwayListItem.
struct ListItemIvars {
    /// When the item was made.
    Strong<NSDate> _timestamp;
};

/// What a row of the stock list shows of an item. Autoreleased, or the item's own.
struct ListItemRow {
    NSString* title;
    /// Nil for none.
    NSString* message;
    UIImage* image;
};

ListItemRow rowOf(NSObject* item);
/// Of a notification.
ListItemRow rowOfBulletins(NSObject* item);

/// An item of that class, made now.
Owned<NSObject> newListItem(Class cls);

/// A card, such as a boarding pass, as an application hands one to SpringBoard.
Owned<SBSCardItem> newCard(NSString* identifier, NSString* title);
/// An alert of the system.
Owned<SBAlertItem> newAlert(NSString* title, NSString* message);

/// New items for the two.
Owned<NSObject> listItemOf(SBSCardItem* card);
Owned<NSObject> listItemOf(SBAlertItem* alert);

/// The icon of an application in a row, or the generic one.
UIImage* rowIcon(NSString* bundleIdentifier);

/// Shows an item in a cell of the stock list.
void showInCell(UITableViewCell* cell, const ListItemRow& row);

} // namespace simulator
