#pragma once

#include "platform/SpringBoard/SBLockScreen.hpp"

/// What the panel adds to `SBLockScreenNotificationListView`: the answers to taps.

/// Rounds the upper corners of the tab, which has its frame already.
void cornerRadiusHook(SBLockScreenNotificationListView* self, SEL selector);
/// Closes whatever is open; the action of a double tap on either icon.
void normalizePrevTap(SBLockScreenNotificationListView* self, SEL selector);
/// The action of a tap on the calendar icon.
void imgCalenderTapped(SBLockScreenNotificationListView* self, SEL selector);
/// The action of a tap on the notification icon.
void imgNotificationsTapped(SBLockScreenNotificationListView* self, SEL selector);
