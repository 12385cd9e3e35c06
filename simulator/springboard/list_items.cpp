#include "platform/SpringBoard/SBApplication.hpp"
#include "platform/SpringBoard/SBAwayListItem.hpp"
#include "platform/UIKit/UIScreen.hpp"
#include "simulator/runtime/SimulatedClass.hpp"
#include "simulator/springboard/SpringBoard.hpp"
#include "simulator/springboard/applications.hpp"
#include "simulator/springboard/springboard_classes.hpp"

/// What can stand in the lock screen's list. Beside what each kind answers on the phone, all answer what the stock list
/// shows of them: rowTitle, rowMessage and rowImage.

namespace simulator {

namespace {

struct BulletinState {
    Owned<NSString> sectionID;
    Owned<NSString> title;
    Owned<NSString> message;
};

struct ListItemState {};

struct BulletinListItemState {
    Owned<BBBulletin> activeBulletin;
    Owned<UIImage> iconImage;
};

struct CardState {
    Owned<NSString> identifier;
    Owned<NSString> title;
};

struct CardListItemState {
    Owned<NSObject> cardItem;
    Owned<UIImage> cardThumbnail;
};

struct SystemAlertState {
    Owned<NSString> title;
    Owned<NSString> message;
    Owned<UIImage> iconImage;
};

UIImage* smallIcon(NSString* bundleIdentifier)
{
    return applicationIcon(bundleIdentifier, 0, UIScreen::mainScreen()->scale());
}

NSString* noTitle(NSObject*, SEL)
{
    return constantString<"Notification">();
}

NSString* noMessage(NSObject*, SEL)
{
    return nullptr;
}

UIImage* genericImage(NSObject*, SEL)
{
    return smallIcon(nullptr);
}

/// Without a title of its own, a notification bears its application's name.
NSString* bulletinTitle(SBAwayBulletinListItem* self, SEL)
{
    BBBulletin* const bulletin = self->activeBulletin();
    if (bulletin->title() != nullptr)
        return bulletin->title();
    SBApplication* const application = installedApplication(bulletin->sectionID());
    return application != nullptr ? application->displayName() : bulletin->sectionID();
}

NSString* bulletinMessage(SBAwayBulletinListItem* self, SEL)
{
    return self->activeBulletin()->message();
}

NSString* cardTitle(NSObject* self, SEL)
{
    return send<"title", NSString*>(ivarsOf<CardListItemState>(self).cardItem.get());
}

template <class State>
Owned<NSObject> made(Class cls, State state)
{
    Owned<NSObject> object = adopt(send<"new", NSObject*>(cls));
    ivarsOf<State>(object.get()) = std::move(state);
    return object;
}

} // namespace

Owned<NSObject> bulletinItem(NSString* bundleIdentifier, NSString* title, NSString* message)
{
    const auto bulletin = made<BulletinState>(classNamed<"BBBulletin">(), {bundleIdentifier, title, message});
    return made<BulletinListItemState>(classNamed<"SBAwayBulletinListItem">(),
                                       {static_cast<BBBulletin*>(bulletin.get()), smallIcon(bundleIdentifier)});
}

Owned<NSObject> cardItem(NSString* identifier, NSString* title)
{
    const auto card = made<CardState>(classNamed<"SBCardItem">(), {identifier, title});
    return made<CardListItemState>(classNamed<"SBAwayCardListItem">(), {card, smallIcon(nullptr)});
}

Owned<NSObject> systemAlertItem(NSString* title, NSString* message)
{
    return made<SystemAlertState>(classNamed<"SBAwaySystemAlertItem">(), {title, message, smallIcon(nullptr)});
}

Owned<NSObject> unknownItem()
{
    return made<ListItemState>(classNamed<"SBAwayListItem">(), {});
}

void registerListItems()
{
    SimulatedClass<BulletinState>("BBBulletin", "NSObject")
        .readOnly<&BulletinState::sectionID>("sectionID")
        .readOnly<&BulletinState::title>("title")
        .readOnly<&BulletinState::message>("message")
        .registerClass();
    SimulatedClass<ListItemState>("SBAwayListItem", "NSObject")
        .method<"rowTitle">(noTitle)
        .method<"rowMessage">(noMessage)
        .method<"rowImage">(genericImage)
        .registerClass();
    SimulatedClass<BulletinListItemState>("SBAwayBulletinListItem", "SBAwayListItem")
        .readOnly<&BulletinListItemState::activeBulletin>("activeBulletin")
        .readOnly<&BulletinListItemState::iconImage>("iconImage")
        .method<"rowTitle">(bulletinTitle)
        .method<"rowMessage">(bulletinMessage)
        .readOnly<&BulletinListItemState::iconImage>("rowImage")
        .registerClass();
    SimulatedClass<CardState>("SBCardItem", "NSObject")
        .readOnly<&CardState::identifier>("identifier")
        .readOnly<&CardState::title>("title")
        .registerClass();
    SimulatedClass<CardListItemState>("SBAwayCardListItem", "SBAwayListItem")
        .readOnly<&CardListItemState::cardItem>("cardItem")
        .readOnly<&CardListItemState::cardThumbnail>("cardThumbnail")
        .method<"rowTitle">(cardTitle)
        .readOnly<&CardListItemState::cardThumbnail>("rowImage")
        .registerClass();
    SimulatedClass<SystemAlertState>("SBAwaySystemAlertItem", "SBAwayListItem")
        .readOnly<&SystemAlertState::title>("title")
        .readOnly<&SystemAlertState::iconImage>("iconImage")
        .readOnly<&SystemAlertState::title>("rowTitle")
        .readOnly<&SystemAlertState::message>("rowMessage")
        .readOnly<&SystemAlertState::iconImage>("rowImage")
        .registerClass();
}

} // namespace simulator
