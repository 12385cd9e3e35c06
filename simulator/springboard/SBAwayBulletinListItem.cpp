#include <algorithm>

#include "platform/Foundation/NSArray.hpp"
#include "platform/SpringBoard/SBApplication.hpp"
#include "platform/runtime/ClassBuilder.hpp"
#include "platform/runtime/each.hpp"
#include "simulator/springboard/SpringBoard.hpp"
#include "simulator/springboard/applications.hpp"
#include "simulator/springboard/bulletins.hpp"
#include "simulator/springboard/list_items.hpp"
#include "simulator/springboard/springboard_classes.hpp"

/// A notification in the lock screen's list: one bulletin, or several of one application from one person, of which the latest
/// is the one that shows.

namespace simulator {

namespace {

using Item = SBAwayBulletinListItem;

struct BulletinItemIvars {
    Strong<NSMutableArray> _bulletins;
    Strong<UIImage> _listItemImage;
    Strong<BBBulletin> _activeBulletin;
};

/// Nil is the same as nil.
bool areEqual(NSString* one, NSString* other)
{
    return one == other || one->isEqualToString(other);
}

/// Its place among the item's bulletins, in whatever version; their number when it is not there.
NSUInteger placeOf(Item* self, BBBulletin* bulletin)
{
    NSUInteger place = 0;
    for (BBBulletin* own : each<BBBulletin>(ivarsOf<BulletinItemIvars>(self)._bulletins.get())) {
        if (areTheSame(own, bulletin))
            break;
        ++place;
    }
    return place;
}

void showLatest(Item* self)
{
    auto& item = ivarsOf<BulletinItemIvars>(self);
    const NSUInteger count = item._bulletins->count();
    item._activeBulletin = count == 0 ? nullptr : item._bulletins->objectAtIndex<BBBulletin>(count - 1);
}

void addBulletin(Item* self, SEL, BBBulletin* bulletin)
{
    ivarsOf<BulletinItemIvars>(self)._bulletins->addObject(bulletin);
    showLatest(self);
}

Item* initWithBulletin_andObserver(Item* self, SEL, BBBulletin* bulletin, NSObject*)
{
    auto& item = ivarsOf<BulletinItemIvars>(self);
    item._bulletins = adopt(NSMutableArray::alloc()->init());
    item._listItemImage = rowIcon(bulletin->sectionID());
    addBulletin(self, nullptr, bulletin);
    return self;
}

/// A bulletin that is not of the item changes nothing.
void modifyBulletin(Item* self, SEL, BBBulletin* bulletin)
{
    auto& item = ivarsOf<BulletinItemIvars>(self);
    const NSUInteger place = placeOf(self, bulletin);
    if (place == item._bulletins->count())
        return;
    send<"replaceObjectAtIndex:withObject:">(item._bulletins.get(), place, bulletin);
    showLatest(self);
}

void removeBulletin(Item* self, SEL, BBBulletin* bulletin)
{
    auto& item = ivarsOf<BulletinItemIvars>(self);
    const NSUInteger place = placeOf(self, bulletin);
    if (place == item._bulletins->count())
        return;
    send<"removeObjectAtIndex:">(item._bulletins.get(), place);
    showLatest(self);
}

NSArray* bulletins(Item* self, SEL)
{
    return ivarsOf<BulletinItemIvars>(self)._bulletins;
}

BBBulletin* activeBulletin(Item* self, SEL)
{
    return ivarsOf<BulletinItemIvars>(self)._activeBulletin;
}

/// A bulletin from nobody in particular is from nobody else's person.
BOOL hasSamePersonAsBulletin(Item* self, SEL, BBBulletin* bulletin)
{
    NSString* const person = personOf(bulletin);
    return BOOL{person != nullptr && areEqual(personOf(ivarsOf<BulletinItemIvars>(self)._activeBulletin), person)};
}

BOOL canCoalesceWithBulletin(Item* self, SEL selector, BBBulletin* bulletin)
{
    const auto& item = ivarsOf<BulletinItemIvars>(self);
    return BOOL{areEqual(item._activeBulletin->sectionID(), bulletin->sectionID()) &&
                hasSamePersonAsBulletin(self, selector, bulletin) != NO};
}

/// Without a title of its own, a notification bears its application's name.
NSString* title(Item* self, SEL)
{
    BBBulletin* const bulletin = ivarsOf<BulletinItemIvars>(self)._activeBulletin;
    if (bulletin->title() != nullptr)
        return bulletin->title();
    SBApplication* const application = installedApplication(bulletin->sectionID());
    return application != nullptr ? application->displayName() : bulletin->sectionID();
}

NSString* message(Item* self, SEL)
{
    return ivarsOf<BulletinItemIvars>(self)._activeBulletin->message();
}

UIImage* iconImage(Item* self, SEL)
{
    return ivarsOf<BulletinItemIvars>(self)._listItemImage;
}

} // namespace

ListItemRow rowOfBulletins(NSObject* item)
{
    auto* const self = static_cast<Item*>(item);
    return {title(self, nullptr), message(self, nullptr), iconImage(self, nullptr)};
}

Owned<NSObject> bulletinItem(NSString* bundleIdentifier, NSString* title, NSString* message)
{
    Owned<NSObject> item = newListItem(classNamed<"SBAwayBulletinListItem">());
    const Owned<BBBulletin> bulletin = newBulletin({bundleIdentifier, title, message, nullptr});
    initWithBulletin_andObserver(static_cast<Item*>(item.get()), nullptr, bulletin, nullptr);
    return item;
}

void registerSBAwayBulletinListItem()
{
    ClassBuilder<BulletinItemIvars>("SBAwayBulletinListItem", "SBAwayListItem")
        .ivar<&BulletinItemIvars::_bulletins>("_bulletins")
        .ivar<&BulletinItemIvars::_listItemImage>("_listItemImage")
        .ivar<&BulletinItemIvars::_activeBulletin>("_activeBulletin")
        .method<"initWithBulletin:andObserver:">(initWithBulletin_andObserver)
        .method<"addBulletin:">(addBulletin)
        .method<"modifyBulletin:">(modifyBulletin)
        .method<"removeBulletin:">(removeBulletin)
        .method<"bulletins">(bulletins)
        .method<"activeBulletin">(activeBulletin)
        .method<"hasSamePersonAsBulletin:">(hasSamePersonAsBulletin)
        .method<"canCoalesceWithBulletin:">(canCoalesceWithBulletin)
        .method<"title">(title)
        .method<"message">(message)
        .method<"iconImage">(iconImage)
        .registerClass();
}

} // namespace simulator
