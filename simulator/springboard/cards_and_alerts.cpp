#include "simulator/foundation/phone_system.hpp"
#include "simulator/runtime/SimulatedClass.hpp"
#include "simulator/springboard/SBLockScreenNotificationListController.hpp"
#include "simulator/springboard/list_items.hpp"

/// What the stock controller is told of cards and of the system's alerts, each of which has an item of its own in the list.

namespace simulator {

namespace {

using Controller = SBLockScreenNotificationListController;

// Cards: what has the same identifier is the same card.

SBAwayCardListItem* listItemContainingCard(Controller* self, SEL, SBSCardItem* card)
{
    return firstItem<SBAwayCardListItem, "SBAwayCardListItem">(
        self, [card](SBAwayCardListItem* item) { return item->cardItem()->identifier()->isEqualToString(card->identifier()); });
}

void activateOrUpdateCard(Controller* self, SEL selector, SBSCardItem* card, BOOL)
{
    if (SBAwayCardListItem* const item = listItemContainingCard(self, selector, card)) {
        send<"setCardItem:">(item, card);
        send<"_updateModelAndViewForModificationOfItem:">(self, item);
        return;
    }
    self->_updateModelAndViewForAdditionOfItem(listItemOf(card));
}

void updateCard(Controller* self, SEL selector, SBSCardItem* card)
{
    if (listItemContainingCard(self, selector, card) != nullptr)
        send<"_activateOrUpdateCardItem:animated:">(self, card, NO);
}

void deactivateCard(Controller* self, SEL selector, SBSCardItem* card)
{
    if (SBAwayCardListItem* const item = listItemContainingCard(self, selector, card))
        send<"_updateModelAndViewForRemovalOfItem:">(self, item);
}

void activateCard(Controller* self, SEL, SBSCardItem* card, BOOL isAnimated)
{
    send<"_activateOrUpdateCardItem:animated:">(self, card, isAnimated);
}

// Alerts

SBAwaySystemAlertItem* listItemContainingAlert(Controller* self, SEL, SBAlertItem* alert)
{
    return firstItem<SBAwaySystemAlertItem, "SBAwaySystemAlertItem">(
        self, [alert](SBAwaySystemAlertItem* item) { return send<"currentAlert", SBAlertItem*>(item) == alert; });
}

/// Says whether the list takes it, as it does any that is not in it.
template <class... IsAnimated>
BOOL activateAlert(Controller* self, SEL selector, SBAlertItem* alert, IsAnimated...)
{
    if (listItemContainingAlert(self, selector, alert) != nullptr)
        return NO;
    self->_updateModelAndViewForAdditionOfItem(listItemOf(alert));
    return YES;
}

template <class... IsAnimated>
void deactivateAlert(Controller* self, SEL selector, SBAlertItem* alert, IsAnimated...)
{
    if (SBAwaySystemAlertItem* const item = listItemContainingAlert(self, selector, alert))
        send<"_updateModelAndViewForRemovalOfItem:">(self, item);
}

} // namespace

void addCards(Class controller)
{
    addMethod<"_listItemContainingCardItem:">(controller, &listItemContainingCard);
    addMethod<"_activateOrUpdateCardItem:animated:">(controller, &activateOrUpdateCard);
    addMethod<"activateCardItem:animated:">(controller, &activateCard);
    addMethod<"updateCardItem:">(controller, &updateCard);
    addMethod<"deactivateCardItem:">(controller, &deactivateCard);
}

void addAlerts(Class controller)
{
    addMethod<"_listItemContainingSystemAlert:">(controller, &listItemContainingAlert);
    if (phoneSystem() < System::v8_1) {
        addMethod<"activateAlertItem:">(controller, &activateAlert<>);
        addMethod<"deactivateAlertItem:">(controller, &deactivateAlert<>);
    } else {
        addMethod<"activateAlertItem:animated:">(controller, &activateAlert<BOOL>);
        addMethod<"deactivateAlertItem:animated:">(controller, &deactivateAlert<BOOL>);
    }
}

} // namespace simulator
