#include "simulator/springboard/list_items.hpp"

#include "platform/UIKit/UIScreen.hpp"
#include "platform/runtime/ClassBuilder.hpp"
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

struct AlertItemIvars {
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

Owned<NSObject> cardItem(NSString* identifier, NSString* title)
{
    Owned<NSObject> item = newListItem(classNamed<"SBAwayCardListItem">());
    auto& ivars = ivarsOf<CardItemIvars>(item.get());
    const NSString* const none = nullptr;
    ivars._cardItem = adopt(send<"initWithIdentifier:iconData:title:body:requiresPasscode:bundleName:userInfo:", SBSCardItem*>(
        send<"alloc", id>(classNamed<"SBSCardItem">()), identifier, id{}, title, none, NO, none, id{}));
    ivars._cardThumbnail = rowIcon(nullptr);
    return item;
}

Owned<NSObject> systemAlertItem(NSString* title, NSString* message)
{
    Owned<NSObject> item = newListItem(classNamed<"SBAwaySystemAlertItem">());
    auto& ivars = ivarsOf<AlertItemIvars>(item.get());
    ivars._title = title;
    ivars._message = message;
    ivars._appImage = rowIcon(nullptr);
    return item;
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
        .method<"cardThumbnail">(object<CardItemIvars, &CardItemIvars::_cardThumbnail>)
        .method<"title">(cardTitle)
        .method<"body">(cardBody)
        .registerClass();
    ClassBuilder<AlertItemIvars>("SBAwaySystemAlertItem", "SBAwayListItem")
        .ivar<&AlertItemIvars::_title>("_title")
        .ivar<&AlertItemIvars::_appImage>("_appImage")
        .ivar<&AlertItemIvars::_message>("_message")
        .method<"title">(object<AlertItemIvars, &AlertItemIvars::_title>)
        .method<"message">(object<AlertItemIvars, &AlertItemIvars::_message>)
        .method<"iconImage">(object<AlertItemIvars, &AlertItemIvars::_appImage>)
        .registerClass();
}

} // namespace simulator
