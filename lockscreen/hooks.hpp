#pragma once

#include "platform/SpringBoard/SBLockScreen.hpp"
#include "platform/runtime/types.hpp"

/// What the panel puts into SpringBoard's lock-screen classes: methods in place of SpringBoard's own, and methods added. Each is
/// called by the name of its selector.
namespace hooks {

/// A method and, once it is installed, the implementation that it replaced.
template <class Signature>
struct Replacement;

template <class Result, class Self, class... Arguments>
struct Replacement<Result(Self*, Arguments...)> {
    using Implementation = Result (*)(Self*, SEL, Arguments...);

    Implementation implementation;
    Implementation previous = nullptr;
};

using ListView = SBLockScreenNotificationListView;
using ListController = SBLockScreenNotificationListController;

/// SpringBoard builds its list view, and the panel is built inside.
extern Replacement<ListView*(ListView*, CGRect)> initListView;
/// Places every piece of the panel and writes both lines anew.
extern Replacement<void(ListView*)> layoutSubviews;

/// Rounds the upper corners of the tab, which has its frame already.
void cornerRadiusHook(ListView* self, SEL selector);
/// Closes whatever is open; the action of a double tap on either icon.
void normalizePrevTap(ListView* self, SEL selector);
/// The actions of a tap on the calendar icon and on the notification icon.
void imgCalenderTapped(ListView* self, SEL selector);
void imgNotificationsTapped(ListView* self, SEL selector);

/// The panel follows SpringBoard's list.
extern Replacement<void(ListController*, id)> updateModelAndViewForAdditionOfItem;
extern Replacement<void(ListController*)> prepareForTeardown;
extern Replacement<void(ListController*)> clearItemsForNotificationCenter;
extern Replacement<void(ListController*, BOOL)> setInScreenOffMode;

/// Does nothing in place of dimming what lies behind the lock screen's contents. What it replaces is never called.
extern Replacement<void(SBLockScreenView*, id)> addLockContentUnderlayWithRequester;

/// Every such view starts hidden; the newest is remembered.
extern Replacement<_NowPlayingArtView*(_NowPlayingArtView*, CGRect)> initNowPlayingArtView;

} // namespace hooks
