#pragma once

#include "platform/SpringBoard/SBLockScreen.hpp"

/// What replaces the methods of `SBLockScreenNotificationListController`, and the replaced implementations.

extern void (*previousUpdateModelAndViewForAdditionOfItem)(SBLockScreenNotificationListController*, SEL, id);
void updateModelAndViewForAdditionOfItem(SBLockScreenNotificationListController* self, SEL selector, id item);

extern void (*previousPrepareForTeardown)(SBLockScreenNotificationListController*, SEL);
void prepareForTeardown(SBLockScreenNotificationListController* self, SEL selector);

extern void (*previousClearItemsForNotificationCenter)(SBLockScreenNotificationListController*, SEL);
void clearItemsForNotificationCenter(SBLockScreenNotificationListController* self, SEL selector);

extern void (*previousSetInScreenOffMode)(SBLockScreenNotificationListController*, SEL, BOOL);
void setInScreenOffMode(SBLockScreenNotificationListController* self, SEL selector, BOOL isOff);
