#pragma once

#include <functional>
#include <memory>

#include "platform/Foundation/NSString.hpp"
#include "platform/SpringBoard/SBLockScreen.hpp"
#include "simulator/graphics/Bitmap.hpp"
#include "simulator/uikit/ScreenSize.hpp"

class BBBulletin;
class UIWindow;

/// SpringBoard itself: its window and its lock screen.
namespace simulator {

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

/// Has the lock screen's controller add an item to its list. There must be a lock screen.
void addListItem(NSObject* item);

/// The bulletin board tells the lock screen's controller of a bulletin. There must be a lock screen.
void receiveBulletin(BBBulletin* bulletin);
/// An application tells it of a card: one of an identifier that the list has already is updated.
void receiveCard(NSString* identifier, NSString* title);
/// The system tells it of an alert.
void receiveAlert(NSString* title, NSString* message);
/// An item of the list gets other texts: the latest bulletin of a notification, a card's title, an alert's texts. False for an
/// item that has none.
bool modifyListItem(NSObject* item, NSString* title, NSString* message);
/// The latest bulletin of a notification is gone, and the item with it if it was the only one; or the item itself.
void removeListItem(NSObject* item);

/// Called when SpringBoard is told to relaunch; it must not return.
void setRelaunchHandler(std::function<void()> handler);

/// The screen as it stands, laid out and drawn. As long as nothing on it changes, it is the same bitmap.
std::shared_ptr<Bitmap> screenPicture();

} // namespace simulator
