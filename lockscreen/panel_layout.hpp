#pragma once

#include "platform/SpringBoard/SBLockScreen.hpp"

/// What replaces the layout pass of `SBLockScreenNotificationListView`, and the replaced implementation.
extern void (*previousLayoutSubviews)(SBLockScreenNotificationListView*, SEL);

/// Places every piece of the panel and writes both lines anew.
void layoutSubviews(SBLockScreenNotificationListView* self, SEL selector);
