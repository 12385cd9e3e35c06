#include "lockscreen/notification_list_controller.hpp"

void (*previousUpdateModelAndViewForAdditionOfItem)(SBLockScreenNotificationListController*, SEL, id) = nullptr;
void (*previousPrepareForTeardown)(SBLockScreenNotificationListController*, SEL) = nullptr;
void (*previousClearItemsForNotificationCenter)(SBLockScreenNotificationListController*, SEL) = nullptr;
void (*previousSetInScreenOffMode)(SBLockScreenNotificationListController*, SEL, BOOL) = nullptr;

void updateModelAndViewForAdditionOfItem(SBLockScreenNotificationListController* self, SEL selector, id item)
{
    previousUpdateModelAndViewForAdditionOfItem(self, selector, item);
}

void prepareForTeardown(SBLockScreenNotificationListController* self, SEL selector)
{
    previousPrepareForTeardown(self, selector);
}

void clearItemsForNotificationCenter(SBLockScreenNotificationListController* self, SEL selector)
{
    previousClearItemsForNotificationCenter(self, selector);
}

void setInScreenOffMode(SBLockScreenNotificationListController* self, SEL selector, BOOL isOff)
{
    previousSetInScreenOffMode(self, selector, isOff);
}
