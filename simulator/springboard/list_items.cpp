#include "simulator/springboard/list_items.hpp"

#include "platform/UIKit/UIScreen.hpp"
#include "simulator/runtime/SimulatedClass.hpp"
#include "simulator/springboard/SpringBoard.hpp"
#include "simulator/springboard/applications.hpp"
#include "simulator/springboard/springboard_classes.hpp"

/// What else than notifications can stand in the lock screen's list.

namespace simulator {

namespace {

struct CardIvars {
    Strong<NSString> _identifier;
    Strong<NSString> _title;
    Strong<NSString> _body;
};

struct CardItemIvars {
    Strong<SBSCardItem> _cardItem;
    Strong<UIImage> _cardThumbnail;
};

struct AlertState {
    Owned<NSString> title;
    Owned<NSString> message;
};

struct AlertItemIvars {
    Strong<SBAlertItem> _currentAlert;
    Strong<NSString> _title;
    Strong<UIImage> _appImage;
    Strong<NSString> _message;
};

/// The getter of an instance variable.
template <class Ivars, auto Member>
auto* object(NSObject* self, SEL)
{
    return (ivarsOf<Ivars>(self).*Member).get();
}

SBSCardItem* initCard(SBSCardItem* self, SEL, NSString* identifier, NSObject*, NSString* title, NSString* body, BOOL, NSString*,
                      NSObject*)
{
    auto& card = ivarsOf<CardIvars>(self);
    card._identifier = identifier;
    card._title = title;
    card._body = body;
    return self;
}

NSString* cardTitle(NSObject* self, SEL)
{
    return send<"title", NSString*>(ivarsOf<CardItemIvars>(self)._cardItem.get());
}

NSString* cardBody(NSObject* self, SEL)
{
    return send<"body", NSString*>(ivarsOf<CardItemIvars>(self)._cardItem.get());
}

void setCardItem(NSObject* self, SEL, SBSCardItem* card)
{
    ivarsOf<CardItemIvars>(self)._cardItem = card;
}

void setCardThumbnail(NSObject* self, SEL, UIImage* thumbnail)
{
    ivarsOf<CardItemIvars>(self)._cardThumbnail = thumbnail;
}

NSObject* initWithSystemAlert(NSObject* self, SEL, SBAlertItem* alert)
{
    auto& item = ivarsOf<AlertItemIvars>(self);
    item._currentAlert = alert;
    item._title = send<"simulator_title", NSString*>(alert);
    item._message = send<"simulator_message", NSString*>(alert);
    item._appImage = rowIcon(nullptr);
    return self;
}

ListItemRow rowOfCard(NSObject* item)
{
    return {cardTitle(item, nullptr), cardBody(item, nullptr), ivarsOf<CardItemIvars>(item)._cardThumbnail};
}

ListItemRow rowOfAlert(NSObject* item)
{
    const auto& alert = ivarsOf<AlertItemIvars>(item);
    return {alert._title, alert._message, alert._appImage};
}

ListItemRow rowOfUnknown(NSObject*)
{
    return {constantString<"Notification">(), nullptr, rowIcon(nullptr)};
}

/// Without asking the item, which belongs to whoever made its class.
bool isOfKind(NSObject* item, Class kind)
{
    Class cls = object_getClass(item);
    while (cls != nullptr && cls != kind)
        cls = class_getSuperclass(cls);
    return cls != nullptr;
}

struct Kind {
    Class (*cls)();
    ListItemRow (*row)(NSObject* item);
};

/// The first kind that an item is of tells what its row shows.
constexpr Kind kinds[] = {
    {classNamed<"SBAwayBulletinListItem">, rowOfBulletins},
    {classNamed<"SBAwayCardListItem">, rowOfCard},
    {classNamed<"SBAwaySystemAlertItem">, rowOfAlert},
    {classNamed<"SBAwayListItem">, rowOfUnknown},
};

} // namespace

ListItemRow rowOf(NSObject* item)
{
    for (const Kind& kind : kinds) {
        if (isOfKind(item, kind.cls()))
            return kind.row(item);
    }
    return {};
}

UIImage* rowIcon(NSString* bundleIdentifier)
{
    return applicationIcon(bundleIdentifier, 0, UIScreen::mainScreen()->scale());
}

Owned<NSObject> newListItem(Class cls)
{
    Owned<NSObject> item = adopt(send<"new", NSObject*>(cls));
    ivarsOf<ListItemIvars>(item.get())._timestamp = NSDate::date();
    return item;
}

Owned<SBSCardItem> newCard(NSString* identifier, NSString* title)
{
    const NSString* const none = nullptr;
    return adopt(send<"initWithIdentifier:iconData:title:body:requiresPasscode:bundleName:userInfo:", SBSCardItem*>(
        send<"alloc", id>(classNamed<"SBSCardItem">()), identifier, id{}, title, none, NO, none, id{}));
}

Owned<SBAlertItem> newAlert(NSString* title, NSString* message)
{
    Owned<SBAlertItem> alert = adopt(send<"new", SBAlertItem*>(classNamed<"SBAlertItem">()));
    ivarsOf<AlertState>(alert.get()) = {title, message};
    return alert;
}

Owned<NSObject> listItemOf(SBSCardItem* card)
{
    Owned<NSObject> item = newListItem(classNamed<"SBAwayCardListItem">());
    send<"setCardItem:">(item.get(), card);
    send<"setCardThumbnail:">(item.get(), rowIcon(nullptr));
    return item;
}

Owned<NSObject> listItemOf(SBAlertItem* alert)
{
    Owned<NSObject> item = newListItem(classNamed<"SBAwaySystemAlertItem">());
    send<"initWithSystemAlert:", id>(item.get(), alert);
    return item;
}

Owned<NSObject> cardItem(NSString* identifier, NSString* title)
{
    return listItemOf(newCard(identifier, title));
}

Owned<NSObject> systemAlertItem(NSString* title, NSString* message)
{
    return listItemOf(newAlert(title, message));
}

Owned<NSObject> unknownItem()
{
    return newListItem(classNamed<"SBAwayListItem">());
}

void registerListItems()
{
    ClassBuilder<ListItemIvars>("SBAwayListItem", "NSObject")
        .ivar<&ListItemIvars::_timestamp>("_timestamp")
        .method<"timestamp">(object<ListItemIvars, &ListItemIvars::_timestamp>)
        .registerClass();
    registerBBBulletin();
    registerSBAwayBulletinListItem();
    ClassBuilder<CardIvars>("SBSCardItem", "NSObject")
        .ivar<&CardIvars::_identifier>("_identifier")
        .ivar<&CardIvars::_title>("_title")
        .ivar<&CardIvars::_body>("_body")
        .method<"initWithIdentifier:iconData:title:body:requiresPasscode:bundleName:userInfo:">(initCard)
        .method<"identifier">(object<CardIvars, &CardIvars::_identifier>)
        .method<"title">(object<CardIvars, &CardIvars::_title>)
        .method<"body">(object<CardIvars, &CardIvars::_body>)
        .registerClass();
    ClassBuilder<CardItemIvars>("SBAwayCardListItem", "SBAwayListItem")
        .ivar<&CardItemIvars::_cardItem>("_cardItem")
        .ivar<&CardItemIvars::_cardThumbnail>("_cardThumbnail")
        .method<"cardItem">(object<CardItemIvars, &CardItemIvars::_cardItem>)
        .method<"setCardItem:">(setCardItem)
        .method<"setCardThumbnail:">(setCardThumbnail)
        .method<"cardThumbnail">(object<CardItemIvars, &CardItemIvars::_cardThumbnail>)
        .method<"title">(cardTitle)
        .method<"body">(cardBody)
        .registerClass();
    // What its own methods are is in no table.
    SimulatedClass<AlertState>("SBAlertItem", "NSObject")
        .readOnly<&AlertState::title>("simulator_title")
        .readOnly<&AlertState::message>("simulator_message")
        .registerClass();
    ClassBuilder<AlertItemIvars>("SBAwaySystemAlertItem", "SBAwayListItem")
        .ivar<&AlertItemIvars::_currentAlert>("_currentAlert")
        .ivar<&AlertItemIvars::_title>("_title")
        .ivar<&AlertItemIvars::_appImage>("_appImage")
        .ivar<&AlertItemIvars::_message>("_message")
        .method<"initWithSystemAlert:">(initWithSystemAlert)
        .method<"currentAlert">(object<AlertItemIvars, &AlertItemIvars::_currentAlert>)
        .method<"title">(object<AlertItemIvars, &AlertItemIvars::_title>)
        .method<"message">(object<AlertItemIvars, &AlertItemIvars::_message>)
        .method<"iconImage">(object<AlertItemIvars, &AlertItemIvars::_appImage>)
        .registerClass();
}

} // namespace simulator
