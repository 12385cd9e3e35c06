#pragma once

#include "platform/UIKit/UIViewController.hpp"

/// SpringBoard's private lock-screen classes.

/// The list of notifications on the lock screen.
class SBLockScreenNotificationListView : public UIView {};

/// Keeps the notifications of the lock screen and drives their list.
class SBLockScreenNotificationListController : public UIViewController {
public:
    void clearItemsForNotificationCenter() { send<"clearItemsForNotificationCenter">(this); }
    void prepareForTeardown() { send<"prepareForTeardown">(this); }
    void setInScreenOffMode(bool isOff) { send<"setInScreenOffMode:">(this, BOOL{isOff}); }
    void _updateModelAndViewForAdditionOfItem(NSObject* item) { send<"_updateModelAndViewForAdditionOfItem:">(this, item); }
};

/// What covers the screen until the user has dealt with it.
class SBAlertView : public UIView {};

/// The lock screen as a whole.
class SBLockScreenView : public SBAlertView {
public:
    void _addLockContentUnderlayWithRequester(NSObject* requester)
    {
        send<"_addLockContentUnderlayWithRequester:">(this, requester);
    }
};

/// The artwork of the music that plays, behind the lock screen's contents.
class _NowPlayingArtView : public UIView {};
