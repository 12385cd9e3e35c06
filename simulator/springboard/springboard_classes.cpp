#include "simulator/springboard/springboard_classes.hpp"

namespace simulator {

void registerSpringBoardClasses()
{
    registerSpringBoard();
    registerApplications();
    registerListItems();
    registerSBLockScreenBulletinCell();
    registerSBLockScreenNotificationListView();
    registerSBLockScreenNotificationListController();
    registerSBFLockScreenDateView();
    registerSBLockScreenView();
}

} // namespace simulator
