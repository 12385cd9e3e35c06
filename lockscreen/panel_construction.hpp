#pragma once

#include "platform/SpringBoard/SBLockScreen.hpp"

/// What replaces the initialiser of `SBLockScreenNotificationListView`, and the replaced implementation.
extern SBLockScreenNotificationListView* (*previousInitWithFrame)(SBLockScreenNotificationListView*, SEL, CGRect);

/// SpringBoard builds its list view, and the panel is built inside.
SBLockScreenNotificationListView* initWithFrame(SBLockScreenNotificationListView* self, SEL selector, CGRect frame);
