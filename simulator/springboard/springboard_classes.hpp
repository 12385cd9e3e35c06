#pragma once

namespace simulator {

/// Registers SpringBoard's classes, superclasses first. To be called once, after UIKit's.
void registerSpringBoardClasses();

void registerSpringBoard();
void registerApplications();
void registerListItems();
void registerBBBulletin();
void registerSBAwayBulletinListItem();
void registerSBLockScreenBulletinCell();
void registerSBLockScreenNotificationListView();
void registerSBLockScreenNotificationListController();
void registerSBFLockScreenDateView();
void registerSBLockScreenView();

} // namespace simulator
