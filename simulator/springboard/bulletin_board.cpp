#include "platform/Foundation/NSArray.hpp"
#include "simulator/foundation/phone_system.hpp"
#include "simulator/springboard/SpringBoard.hpp"
#include "simulator/springboard/bulletins.hpp"

/// What others tell the lock screen's controller: the bulletin board of notifications, by the messages of this phone's system;
/// and whoever has other items in the list.

namespace simulator {

namespace {

/// The controller does not look at who tells it.
constexpr id board = nullptr;

SBAwayBulletinListItem* asNotification(NSObject* item)
{
    return item->isKindOfClass(classNamed<"SBAwayBulletinListItem">()) ? static_cast<SBAwayBulletinListItem*>(item) : nullptr;
}

/// The same card or alert with other texts; nil for an item that has none.
Owned<NSObject> otherVersion(NSObject* item, NSString* title, NSString* message)
{
    if (item->isKindOfClass(classNamed<"SBAwayCardListItem">()))
        return cardItem(static_cast<SBAwayCardListItem*>(item)->cardItem()->identifier(), title);
    if (item->isKindOfClass(classNamed<"SBAwaySystemAlertItem">()))
        return systemAlertItem(title, message);
    return nullptr;
}

} // namespace

void receiveBulletin(BBBulletin* bulletin)
{
    constexpr NSUInteger lockScreenFeed = 2;
    if (phoneSystem() < System::v8_1)
        send<"observer:addBulletin:forFeed:">(listController(), board, bulletin, lockScreenFeed);
    else
        send<"observer:addBulletin:forFeed:playLightsAndSirens:withReply:">(listController(), board, bulletin, lockScreenFeed,
                                                                            YES, id{});
}

bool modifyListItem(NSObject* item, NSString* title, NSString* message)
{
    if (SBAwayBulletinListItem* const notification = asNotification(item)) {
        const auto bulletin = modifiedBulletin(notification->activeBulletin(), title, message);
        send<"observer:modifyBulletin:">(listController(), board, bulletin.get());
        return true;
    }
    const Owned<NSObject> other = otherVersion(item, title, message);
    if (other == nullptr)
        return false;
    send<"_updateModelAndViewForReplacingItem:withNewItem:">(listController(), item, other.get());
    return true;
}

void removeListItem(NSObject* item)
{
    if (SBAwayBulletinListItem* const notification = asNotification(item))
        send<"observer:removeBulletin:">(listController(), board, notification->activeBulletin());
    else
        send<"_updateModelAndViewForRemovalOfItem:">(listController(), item);
}

} // namespace simulator
