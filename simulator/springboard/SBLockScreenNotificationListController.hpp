#pragma once

#include "platform/Foundation/NSArray.hpp"
#include "platform/SpringBoard/SBLockScreen.hpp"
#include "platform/runtime/each.hpp"

namespace simulator {

/// What stands in the list, newest first.
NSMutableArray* itemsOf(SBLockScreenNotificationListController* controller);

/// The first item of that class of which the condition holds; nil when there is none.
template <class Item, FixedString ClassName, class Condition>
Item* firstItem(SBLockScreenNotificationListController* controller, const Condition& holds)
{
    for (NSObject* item : each<NSObject>(itemsOf(controller))) {
        if (item->isKindOfClass(classNamed<ClassName>()) && holds(static_cast<Item*>(item)))
            return static_cast<Item*>(item);
    }
    return nullptr;
}

/// Adds what the controller is told of cards and of alerts.
void addCards(Class controller);
void addAlerts(Class controller);

} // namespace simulator
