#include "platform/SpringBoard/SBLockScreen.hpp"

#include <algorithm>

#include "platform/Foundation/NSString.hpp"
#include "platform/UIKit/UIGraphics.hpp"
#include "platform/UIKit/UIImageView.hpp"
#include "simulator/runtime/SimulatedClass.hpp"
#include "simulator/springboard/springboard_classes.hpp"

/// The stock lock screen: wallpaper, clock, and whatever its controllers put on top.

namespace simulator {

namespace {

struct AlertViewState {};

struct LockScreenState {
    Owned<UIImageView> wallpaper;
    Owned<UIView> underlay;
    Owned<UIView> dateView;
};

/// The largest rectangle of the image's proportions that leaves nothing of the bounds bare, centred.
CGRect filling(CGSize image, CGRect bounds)
{
    if (image.width <= 0 || image.height <= 0)
        return bounds;
    const CGFloat factor = std::max(bounds.size.width / image.width, bounds.size.height / image.height);
    const CGSize size{image.width * factor, image.height * factor};
    return {{(bounds.size.width - size.width) / 2, (bounds.size.height - size.height) / 2}, size};
}

/// The picture at the screen's own size and scale, so that drawing it is a plain copy.
UIImage* wallpaperFor(CGRect bounds)
{
    UIImage* const picture =
        UIImage::imageWithContentsOfFile(constantString<"/System/Library/CoreServices/SpringBoard.app/Wallpaper.png">());
    UIGraphicsBeginImageContextWithOptions(bounds.size, YES, 0);
    picture->drawInRect(filling(picture->size(), bounds));
    UIImage* const fitted = UIGraphicsGetImageFromCurrentImageContext();
    UIGraphicsEndImageContext();
    return fitted;
}

SBLockScreenView* initWithFrame(SBLockScreenView* self, SEL, CGRect frame)
{
    superOf<LockScreenState, "initWithFrame:", SBLockScreenView*>(self, frame);
    auto& screen = ivarsOf<LockScreenState>(self);
    const CGRect bounds = self->bounds();

    screen.wallpaper = adopt(UIImageView::alloc()->initWithFrame(bounds));
    screen.wallpaper->setImage(wallpaperFor(bounds));
    self->setClipsToBounds(true);
    self->addSubview(screen.wallpaper);

    constexpr CGFloat dateHeight = 108;
    constexpr CGFloat dateBottom = 56;
    screen.dateView =
        adopt(send<"alloc", UIView*>(classNamed<"SBFLockScreenDateView">())
                  ->initWithFrame(CGRect::make(0, bounds.size.height - dateHeight - dateBottom, bounds.size.width, dateHeight)));
    self->addSubview(screen.dateView);
    return self;
}

/// Each pass reads the clock anew.
void layoutSubviews(SBLockScreenView* self, SEL)
{
    ivarsOf<LockScreenState>(self).dateView->setNeedsLayout();
}

/// Dims what lies behind the lock screen's contents; once for any number of requesters.
void addLockContentUnderlay(SBLockScreenView* self, SEL, NSObject*)
{
    auto& screen = ivarsOf<LockScreenState>(self);
    if (screen.underlay != nullptr)
        return;
    screen.underlay = adopt(UIView::alloc()->initWithFrame(self->bounds()));
    screen.underlay->setBackgroundColor(UIColor::colorWithWhite_alpha(0, 0.35));
    self->insertSubview_atIndex(screen.underlay, 1);
}

} // namespace

void registerSBLockScreenView()
{
    SimulatedClass<AlertViewState>("SBAlertView", "UIView").registerClass();
    SimulatedClass<LockScreenState>("SBLockScreenView", "SBAlertView")
        .method<"initWithFrame:">(initWithFrame)
        .method<"layoutSubviews">(layoutSubviews)
        .method<"_addLockContentUnderlayWithRequester:">(addLockContentUnderlay)
        .registerClass();
}

} // namespace simulator
