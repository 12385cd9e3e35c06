#pragma once

#include <functional>
#include <memory>

#include "platform/Foundation/NSString.hpp"
#include "platform/SpringBoard/SBLockScreen.hpp"
#include "simulator/graphics/Bitmap.hpp"

class UIWindow;

/// SpringBoard itself: its window and its lock screen.
namespace simulator {

struct ScreenSize {
    /// In points.
    CGFloat width = 320;
    CGFloat height = 568;
    /// Pixels per point.
    double scale = 2;
};

/// Registers SpringBoard's and UIKit's classes and makes the application, its screen and its window. To be called once,
/// before any library is injected.
void launchSpringBoard(const ScreenSize& screen);

UIWindow* springBoardWindow();

/// Builds a lock screen (view, controller, list view) in the window, in place of any that is there, and lays it out.
void lockScreen();

/// Nil before the first lockScreen().
SBLockScreenView* lockScreenView();
SBLockScreenNotificationListController* listController();
SBLockScreenNotificationListView* listView();

/// A list item for a notification of the application with that bundle identifier; nil stands for no text.
Owned<NSObject> bulletinItem(NSString* bundleIdentifier, NSString* title, NSString* message);
/// A list item for a card, such as a boarding pass.
Owned<NSObject> cardItem(NSString* identifier, NSString* title);
Owned<NSObject> systemAlertItem(NSString* title, NSString* message);
/// A list item of none of the other kinds.
Owned<NSObject> unknownItem();

/// Adds an item to the lock screen's list, which tells its view. There must be a lock screen.
void addListItem(NSObject* item);

/// Called when SpringBoard is told to relaunch; it must not return.
void setRelaunchHandler(std::function<void()> handler);

/// The screen as it stands, laid out and drawn. As long as nothing on it changes, it is the same bitmap.
std::shared_ptr<Bitmap> screenPicture();

} // namespace simulator
