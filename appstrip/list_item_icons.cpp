#include "appstrip/list_item_icons.hpp"

#include "platform/SpringBoard/SBApplication.hpp"
#include "platform/SpringBoard/SBAwayListItem.hpp"
#include "platform/UIKit/UIScreen.hpp"

namespace {

/// SpringBoard's image formats.
constexpr int formatOfBundleIcon = 0;
constexpr int formatOfApplicationIcon = 2;

template <class Item, FixedString ClassName>
Item* asKind(NSObject* item)
{
    return item->isKindOfClass(classNamed<ClassName>()) ? static_cast<Item*>(item) : nullptr;
}

SBAwayBulletinListItem* asBulletin(NSObject* item)
{
    return asKind<SBAwayBulletinListItem, "SBAwayBulletinListItem">(item);
}

SBAwayCardListItem* asCard(NSObject* item)
{
    return asKind<SBAwayCardListItem, "SBAwayCardListItem">(item);
}

SBAwaySystemAlertItem* asSystemAlert(NSObject* item)
{
    return asKind<SBAwaySystemAlertItem, "SBAwaySystemAlertItem">(item);
}

Owned<UIImage> bundleIcon(const Owned<NSString>& identifier)
{
    return SBApplicationIconImage::_applicationIconImageForBundleIdentifier_format_scale(identifier, formatOfBundleIcon,
                                                                                         UIScreen::mainScreen()->scale());
}

/// Systems differ in the name of the look-up; one that has neither knows no application, and is not asked for one.
SBApplication* applicationOf(SVAppsView* strip, SBAwayBulletinListItem* item)
{
    const Owned<SBApplicationController> controller(SBApplicationController::sharedInstance());
    if (controller->respondsToSelector(selector<"applicationWithBundleIdentifier:">()))
        return controller->applicationWithBundleIdentifier(strip->identifierForListItem(item));
    if (controller->respondsToSelector(selector<"applicationWithDisplayIdentifier:">()))
        return controller->applicationWithDisplayIdentifier(strip->identifierForListItem(item));
    return nullptr;
}

/// The image outlives the icon that drew it, which may be its only owner.
Owned<UIImage> applicationIcon(const Owned<SBApplication>& application)
{
    const Owned<SBApplicationIcon> icon = adopt(SBApplicationIcon::alloc()->initWithApplication(application));
    return icon->generateIconImage(formatOfApplicationIcon);
}

Owned<UIImage> bulletinIcon(SVAppsView* strip, SBAwayBulletinListItem* item)
{
    // Calendar's icon shows the day: SpringBoard draws it for the bundle, not for the application.
    if (strip->identifierForListItem(item)->isEqualToString(constantString<"com.apple.mobilecal">()))
        return bundleIcon(strip->identifierForListItem(item));
    if (!strip->identifierForListItem(item)->isEqualToString(constantString<"noIdentifier">()))
        return applicationIcon(applicationOf(strip, item));
    return item->iconImage();
}

NSString* identifierForListItem(SVAppsView*, SEL, NSObject* item)
{
    if (SBAwayBulletinListItem* const bulletin = asBulletin(item))
        return bulletin->activeBulletin()->sectionID();
    if (SBAwayCardListItem* const card = asCard(item))
        return card->cardItem()->identifier();
    if (SBAwaySystemAlertItem* const alert = asSystemAlert(item))
        return alert->title();
    return constantString<"noIdentifier">();
}

Owned<UIImage> iconOf(SVAppsView* strip, NSObject* item)
{
    if (SBAwayBulletinListItem* const bulletin = asBulletin(item))
        return bulletinIcon(strip, bulletin);
    if (SBAwayCardListItem* const card = asCard(item))
        return card->cardThumbnail();
    if (SBAwaySystemAlertItem* const alert = asSystemAlert(item))
        return alert->iconImage();
    return bundleIcon(nullptr);
}

UIImage* iconForListItem(SVAppsView* self, SEL, NSObject* item)
{
    return iconOf(self, item).autorelease();
}

} // namespace

void addListItemIcons(ClassBuilder<SVAppsViewIvars>& strip)
{
    strip.method<"identifierForListItem:">(identifierForListItem).method<"iconForListItem:">(iconForListItem);
}
