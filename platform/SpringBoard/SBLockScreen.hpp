#pragma once

#include "platform/UIKit/UIView.hpp"

/// SpringBoard's private lock-screen classes.

/// The list of notifications on the lock screen.
class SBLockScreenNotificationListView : public UIView {};

/// Keeps the notifications of the lock screen and drives their list.
class SBLockScreenNotificationListController : public NSObject {};

/// The lock screen as a whole.
class SBLockScreenView : public UIView {};

/// The artwork of the music that plays, behind the lock screen's contents.
class _NowPlayingArtView : public UIView {};
