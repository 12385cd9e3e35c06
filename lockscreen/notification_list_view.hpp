#pragma once

#include "platform/SpringBoard/SBLockScreen.hpp"

/// What replaces and extends the methods of `SBLockScreenNotificationListView`, and the replaced implementations.

extern SBLockScreenNotificationListView* (*previousInitListViewWithFrame)(SBLockScreenNotificationListView*, SEL, CGRect);
SBLockScreenNotificationListView* initListViewWithFrame(SBLockScreenNotificationListView* self, SEL selector, CGRect frame);

extern void (*previousLayoutSubviews)(SBLockScreenNotificationListView*, SEL);
void layoutSubviews(SBLockScreenNotificationListView* self, SEL selector);

/// Rounds the tab's upper corners.
void cornerRadiusHook(SBLockScreenNotificationListView* self, SEL selector);
/// Closes whatever a tap has opened; the action of a double tap on either icon.
void normalizePrevTap(SBLockScreenNotificationListView* self, SEL selector);
/// The action of a tap on the calendar icon.
void imgCalenderTapped(SBLockScreenNotificationListView* self, SEL selector);
/// The action of a tap on the notification icon.
void imgNotificationsTapped(SBLockScreenNotificationListView* self, SEL selector);
