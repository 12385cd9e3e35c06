#include "simulator/foundation/phone_system.hpp"
#include "simulator/springboard/SpringBoard.hpp"
#include "simulator/springboard/bulletins.hpp"
#include "simulator/springboard/list_items.hpp"

/// What others tell the lock screen's controller, by the messages of this phone's system: the bulletin board of notifications,
/// applications of cards, the system of alerts.

namespace simulator {

namespace {

/// The controller does not look at who tells it.
constexpr id board = nullptr;

template <class Item, FixedString ClassName>
Item* asKind(NSObject* item)
{
    return item->isKindOfClass(classNamed<ClassName>()) ? static_cast<Item*>(item) : nullptr;
}

SBAwayBulletinListItem* asNotification(NSObject* item)
{
    return asKind<SBAwayBulletinListItem, "SBAwayBulletinListItem">(item);
}

SBAwayCardListItem* asCard(NSObject* item)
{
    return asKind<SBAwayCardListItem, "SBAwayCardListItem">(item);
}

SBAwaySystemAlertItem* asAlert(NSObject* item)
{
    return asKind<SBAwaySystemAlertItem, "SBAwaySystemAlertItem">(item);
}

bool hasMessagesOfSeven()
{
    return phoneSystem() < System::v8_1;
}

void deactivateAlert(SBAlertItem* alert)
{
    if (hasMessagesOfSeven())
        send<"deactivateAlertItem:">(listController(), alert);
    else
        send<"deactivateAlertItem:animated:">(listController(), alert, YES);
}

} // namespace

void receiveBulletin(BBBulletin* bulletin)
{
    constexpr NSUInteger lockScreenFeed = 2;
    if (hasMessagesOfSeven())
        send<"observer:addBulletin:forFeed:">(listController(), board, bulletin, lockScreenFeed);
    else
        send<"observer:addBulletin:forFeed:playLightsAndSirens:withReply:">(listController(), board, bulletin, lockScreenFeed,
                                                                            YES, id{});
}

void receiveCard(NSString* identifier, NSString* title)
{
    send<"activateCardItem:animated:">(listController(), newCard(identifier, title).get(), YES);
}

void receiveAlert(NSString* title, NSString* message)
{
    const Owned<SBAlertItem> alert = newAlert(title, message);
    if (hasMessagesOfSeven())
        send<"activateAlertItem:", BOOL>(listController(), alert.get());
    else
        send<"activateAlertItem:animated:", BOOL>(listController(), alert.get(), YES);
}

bool modifyListItem(NSObject* item, NSString* title, NSString* message)
{
    if (SBAwayBulletinListItem* const notification = asNotification(item)) {
        const auto bulletin = modifiedBulletin(notification->activeBulletin(), title, message);
        send<"observer:modifyBulletin:">(listController(), board, bulletin.get());
        return true;
    }
    if (SBAwayCardListItem* const card = asCard(item)) {
        send<"updateCardItem:">(listController(), newCard(card->cardItem()->identifier(), title).get());
        return true;
    }
    // Nobody changes an alert: another one takes its place.
    if (asAlert(item) == nullptr)
        return false;
    send<"_updateModelAndViewForReplacingItem:withNewItem:">(listController(), item, systemAlertItem(title, message).get());
    return true;
}

void removeListItem(NSObject* item)
{
    if (SBAwayBulletinListItem* const notification = asNotification(item))
        send<"observer:removeBulletin:">(listController(), board, notification->activeBulletin());
    else if (SBAwayCardListItem* const card = asCard(item))
        send<"deactivateCardItem:">(listController(), card->cardItem());
    else if (SBAwaySystemAlertItem* const alert = asAlert(item))
        deactivateAlert(send<"currentAlert", SBAlertItem*>(alert));
    else
        send<"_updateModelAndViewForRemovalOfItem:">(listController(), item);
}

} // namespace simulator
