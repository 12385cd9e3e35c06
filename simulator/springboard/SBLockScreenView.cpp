#include "simulator/springboard/SBLockScreenView.hpp"

#include <algorithm>
#include <cmath>

#include "platform/Foundation/NSArray.hpp"
#include "platform/Foundation/NSString.hpp"
#include "platform/UIKit/UIGestureRecognizer.hpp"
#include "platform/UIKit/UIImageView.hpp"
#include "platform/UIKit/UIScreen.hpp"
#include "platform/runtime/each.hpp"
#include "simulator/graphics/pictures.hpp"
#include "simulator/runtime/SimulatedClass.hpp"
#include "simulator/springboard/geometry.hpp"
#include "simulator/springboard/springboard_classes.hpp"
#include "simulator/springboard/views.hpp"
#include "simulator/uikit/UIImage.hpp"

/// The stock lock screen: wallpaper, clock, "slide to unlock", whatever its controllers put on top, and the passcode's page.

namespace simulator {

namespace {

struct AlertViewState {};

struct LockScreenIvars {
    Strong<UIView> _dateView;
    Strong<UIView> _slideToUnlockView;
    /// Who wants what lies behind to be dimmed.
    Strong<NSMutableArray> _contentUnderlayRequesters;
    Strong<UIImageView> wallpaper;
    Strong<UIView> underlay;
    /// Nil while it is not shown.
    Strong<UIView> passcodePage;
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
    const Fitting fitting{
        .size = bounds.size, .scale = UIScreen::mainScreen()->scale(), .rect = filling(picture->size(), bounds), .opaque = true};
    return imageWithBitmap(fitted(picture == nullptr ? nullptr : ivarsOf<ImageState>(picture).bitmap, fitting)).autorelease();
}

Owned<UILabel> slideToUnlockView(CGRect frame)
{
    constexpr CGFloat fontSize = 25;
    Owned<UILabel> label = whiteLabel(frame, UIFont::fontWithName_size(constantString<"HelveticaNeue-Light">(), fontSize));
    label->setText(constantString<"\u203A slide to unlock">());
    label->setTextAlignment(NSTextAlignmentCenter);
    return label;
}

SBLockScreenView* initWithFrame(SBLockScreenView* self, SEL, CGRect frame)
{
    superOf<LockScreenIvars, "initWithFrame:", SBLockScreenView*>(self, frame);
    auto& screen = ivarsOf<LockScreenIvars>(self);
    const CGRect bounds = self->bounds();

    screen._contentUnderlayRequesters = adopt(NSMutableArray::alloc()->init());
    screen.wallpaper = adopt(UIImageView::alloc()->initWithFrame(bounds));
    screen.wallpaper->setImage(wallpaperFor(bounds));
    self->setClipsToBounds(true);
    self->addSubview(screen.wallpaper);

    screen._dateView = adopt(send<"alloc", UIView*>(classNamed<"SBFLockScreenDateView">())->initWithFrame(geometry().dateView));
    self->addSubview(screen._dateView);
    if (const auto& frame = geometry().slideToUnlockView) {
        screen._slideToUnlockView = slideToUnlockView(*frame);
        self->addSubview(screen._slideToUnlockView);
        const auto finger = adopt(UIPanGestureRecognizer::alloc()->initWithTarget_action(self, selector<"simulator_slid:">()));
        self->addGestureRecognizer(finger);
    }
    return self;
}

/// Each pass reads the clock anew.
void layoutSubviews(SBLockScreenView* self, SEL)
{
    ivarsOf<LockScreenIvars>(self)._dateView->setNeedsLayout();
}

/// Dims what lies behind the lock screen's contents; once for any number of requesters.
void addLockContentUnderlay(SBLockScreenView* self, SEL, NSObject* requester)
{
    auto& screen = ivarsOf<LockScreenIvars>(self);
    send<"removeObjectIdenticalTo:">(screen._contentUnderlayRequesters.get(), requester);
    screen._contentUnderlayRequesters->addObject(requester);
    if (screen.underlay != nullptr)
        return;
    screen.underlay = adopt(UIView::alloc()->initWithFrame(self->bounds()));
    screen.underlay->setBackgroundColor(UIColor::colorWithWhite_alpha(0, 0.35));
    self->insertSubview_atIndex(screen.underlay, 1);
}

void removeLockContentUnderlay(SBLockScreenView* self, SEL, NSObject* requester)
{
    auto& screen = ivarsOf<LockScreenIvars>(self);
    send<"removeObjectIdenticalTo:">(screen._contentUnderlayRequesters.get(), requester);
    if (screen._contentUnderlayRequesters->count() > 0)
        return;
    screen.underlay->removeFromSuperview();
    screen.underlay = nullptr;
}

/// Everything but what lies behind.
void slide(SBLockScreenView* self, CGFloat distance)
{
    const auto& screen = ivarsOf<LockScreenIvars>(self);
    for (UIView* view : each<UIView>(self->subviews())) {
        if (view == screen.wallpaper || view == screen.underlay)
            continue;
        const CGRect frame = view->frame();
        view->setFrame({{frame.origin.x + distance, frame.origin.y}, frame.size});
    }
}

} // namespace

void showPasscodePage(SBLockScreenView* lockScreen, bool isShown)
{
    auto& page = ivarsOf<LockScreenIvars>(lockScreen).passcodePage;
    if (isShown == (page != nullptr))
        return;
    const CGRect bounds = lockScreen->bounds();
    if (isShown) {
        slide(lockScreen, bounds.size.width);
        page = passcodePage(bounds);
        lockScreen->addSubview(page);
        lockScreen->_addLockContentUnderlayWithRequester(page);
    } else {
        send<"_removeLockContentUnderlayWithRequester:">(lockScreen, page.get());
        page->removeFromSuperview();
        page = nullptr;
        slide(lockScreen, -bounds.size.width);
    }
}

namespace {

/// Anywhere on the lock screen: to the right brings the passcode's page in, to the left takes it away.
void slid(SBLockScreenView* self, SEL, UIPanGestureRecognizer* finger)
{
    constexpr CGFloat shortest = 80;
    const CGFloat distance = finger->translationInView(self).x;
    if (finger->state() == UIGestureRecognizerStateEnded && std::abs(distance) >= shortest)
        showPasscodePage(self, distance > 0);
}

} // namespace

void registerSBLockScreenView()
{
    SimulatedClass<AlertViewState>("SBAlertView", "UIView").registerClass();
    ClassBuilder<LockScreenIvars>("SBLockScreenView", "SBAlertView")
        .ivar<&LockScreenIvars::_dateView>("_dateView")
        .ivar<&LockScreenIvars::_slideToUnlockView>("_slideToUnlockView")
        .ivar<&LockScreenIvars::_contentUnderlayRequesters>("_contentUnderlayRequesters")
        .ivar<&LockScreenIvars::wallpaper>("simulator_wallpaper")
        .ivar<&LockScreenIvars::underlay>("simulator_underlay")
        .ivar<&LockScreenIvars::passcodePage>("simulator_passcodePage")
        .method<"initWithFrame:">(initWithFrame)
        .method<"layoutSubviews">(layoutSubviews)
        .method<"_addLockContentUnderlayWithRequester:">(addLockContentUnderlay)
        .method<"simulator_slid:">(slid)
        .method<"_removeLockContentUnderlayWithRequester:">(removeLockContentUnderlay)
        .registerClass();
}

} // namespace simulator
