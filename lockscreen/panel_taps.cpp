#include "lockscreen/hooks.hpp"
#include "lockscreen/panel.hpp"
#include "platform/QuartzCore/CAShapeLayer.hpp"
#include "platform/UIKit/UIBezierPath.hpp"

namespace hooks {

namespace {

/// From 10 points around the icon down into the pane.
CGRect tabFrameFor(const Strong<UIImageView>& icon)
{
    constexpr CGFloat margin = 10;
    constexpr CGFloat height = 150;
    return {{icon->frame().origin.x - margin, icon->frame().origin.y - margin}, {icon->frame().size.width + 2 * margin, height}};
}

/// Everything is closed first, so the toggles always end in "shown" and the tab always takes its place at the icon: a tap
/// on an icon whose pane is open leaves it open. This is meant.
void openPane(ListView* self, const Strong<UIView>& pane, const Strong<UIImageView>& icon)
{
    send<"normalizePrevTap">(self);
    pane->setHidden(!pane->isHidden());
    tabView->setHidden(!tabView->isHidden());
    tabView->setFrame(tabView->frame() == CGRectZero ? tabFrameFor(icon) : CGRectZero);
    topPocketView(self)->setAlpha(pane->isHidden() ? 0 : 1);
}

} // namespace

void cornerRadiusHook(ListView*, SEL)
{
    constexpr CGSize radii{5, 5};
    CAShapeLayer* const shape = CAShapeLayer::layer();
    UIBezierPath* const outline = UIBezierPath::bezierPathWithRoundedRect_byRoundingCorners_cornerRadii(
        tabView->bounds(), UIRectCornerTopLeft | UIRectCornerTopRight, radii);
    shape->setPath(outline->CGPath());
    tabView->layer()->setMask(shape);
}

void normalizePrevTap(ListView* self, SEL)
{
    calendarPaneView->setHidden(true);
    notificationPaneView->setHidden(true);
    tabView->setHidden(true);
    tabView->setFrame(CGRectZero);
    topPocketView(self)->setAlpha(0);
}

void imgCalenderTapped(ListView* self, SEL)
{
    openPane(self, calendarPaneView, calendarIconView);
    send<"cornerRadiusHook">(self);
}

/// The notifications have been seen: the weather comes back and the strip is emptied. The calendar's tap does neither.
void imgNotificationsTapped(ListView* self, SEL)
{
    openPane(self, notificationPaneView, notificationIconView);
    showWeather();
    appsView->clearAll();
    send<"cornerRadiusHook">(self);
}

} // namespace hooks
