#include "appstrip/SVAppsView.hpp"

#include "appstrip/list_item_icons.hpp"
#include "platform/runtime/each.hpp"
#include "text/text_drawing.hpp"

namespace {

/// Sizes in points, derived from the strip's height at each use.
CGFloat stripHeight(SVAppsView* self)
{
    return self->frame().size.height;
}

CGFloat iconSide(SVAppsView* self)
{
    return stripHeight(self) + stripHeight(self) * -0.5;
}

CGFloat badgeSide(SVAppsView* self)
{
    return stripHeight(self) * 0.25;
}

constexpr CGFloat iconTop = 22;
constexpr CGFloat gap = 10;

SVAppsView* initWithFrame(SVAppsView* self, SEL, CGRect frame)
{
    self = superOf<SVAppsViewIvars, "initWithFrame:", SVAppsView*>(self, frame);
    if (self == nullptr)
        return nullptr;
    ivarsOf(self)._iconImgViews = adopt(NSMutableDictionary::alloc()->init());
    self->setShowsVerticalScrollIndicator(false);
    self->setShowsHorizontalScrollIndicator(false);
    self->setScrollEnabled(true);
    self->setUserInteractionEnabled(true);
    return self;
}

long countOfItems(SVAppsView* self, NSString* identifier)
{
    long count = 0;
    for (NSObject* item : each<NSObject>(self->items())) {
        if (self->identifierForListItem(item)->isEqualToString(identifier))
            ++count;
    }
    return count;
}

Owned<UIImageView> squareView(SVAppsView* self, CGFloat (*side)(SVAppsView*))
{
    return adopt(UIImageView::alloc()->initWithFrame({{0, 0}, {side(self), side(self)}}));
}

/// Hangs half outside the icon, up and to the right.
void addBadge(SVAppsView* self, UIImageView* icon, long count)
{
    const Owned<UIImageView> badge = squareView(self, badgeSide);
    NSString* const digits = NSString::stringWithFormat(constantString<"%ld">(), count);
    UIImage* const background =
        UIImage::imageWithContentsOfFile(constantString<"/Library/Application Support/Solvane/Badge.png">());
    badge->setImage(drawTextInImage2(digits, background, {12.5, 7.5}));
    badge->setCenter({CGRectGetMaxX(icon->frame()), CGRectGetMinY(icon->frame())});
    icon->addSubview(badge);
}

/// An icon that is there already is thrown away with its badge, not updated.
void addIconFor_andBadgeCount(SVAppsView* self, SEL, NSObject* item, long count)
{
    const Owned<NSString> identifier(self->identifierForListItem(item));
    count += countOfItems(self, identifier);

    if (self->iconImgViews()->objectForKey(identifier) != nullptr) {
        self->iconImgViews()->objectForKey<UIView>(identifier)->removeFromSuperview();
        self->iconImgViews()->removeObjectForKey(identifier);
    }

    const Owned<UIImageView> icon = squareView(self, iconSide);
    icon->setImage(self->iconForListItem(item));
    addBadge(self, icon, count);
    // A notification that names no application, a card without an identifier and an alert without a title have nothing to be
    // kept under, and show no icon: a nil key would end SpringBoard. This is meant.
    if (identifier != nullptr)
        self->iconImgViews()->setObject_forKey(icon, identifier);
}

/// The row's width has a gap after the last icon too, so a centred row stands half a gap to the left. This is meant.
void showIcons(SVAppsView* self, SEL)
{
    const auto count = static_cast<CGFloat>(self->iconImgViews()->allKeys()->count());
    const CGFloat rowWidth = count * (iconSide(self) + gap);
    self->setContentSize({rowWidth, stripHeight(self)});

    CGFloat x = (CGRectGetWidth(self->frame()) - rowWidth) * 0.5;
    if (x < 0)
        x = 0;
    for (UIView* icon : each<UIView>(self->iconImgViews()->allValues())) {
        icon->setFrame(CGRect::make(x, iconTop, iconSide(self), iconSide(self)));
        self->addSubview(icon);
        x += iconSide(self) + gap;
    }
}

void clearAll(SVAppsView* self, SEL)
{
    for (UIView* icon : each<UIView>(self->iconImgViews()->allValues()))
        icon->removeFromSuperview();
    self->iconImgViews()->removeAllObjects();
    self->showIcons();
}

} // namespace

void registerSVAppsView()
{
    ClassBuilder<SVAppsViewIvars> strip("SVAppsView", "UIScrollView");
    strip.ivar<&SVAppsViewIvars::_items>("_items")
        .ivar<&SVAppsViewIvars::_iconImgViews>("_iconImgViews")
        .property<&SVAppsViewIvars::_items, "items", "NSMutableArray">()
        .property<&SVAppsViewIvars::_iconImgViews, "iconImgViews", "NSMutableDictionary">()
        .method<"initWithFrame:">(initWithFrame);
    addListItemIcons(strip);
    strip.method<"addIconFor:andBadgeCount:">(addIconFor_andBadgeCount)
        .method<"showIcons">(showIcons)
        .method<"clearAll">(clearAll)
        .registerClass();
}
