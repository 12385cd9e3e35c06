#include "lockscreen/hooks.hpp"
#include "lockscreen/panel.hpp"
#include "platform/Foundation/NSCalendar.hpp"
#include "platform/UIKit/UIGestureRecognizer.hpp"
#include "text/text_drawing.hpp"

namespace hooks {

namespace {

CGFloat widthOf(UIView* container)
{
    return container->frame().size.width;
}

// Each view is in the record before it is set up: whoever looks at the record meanwhile finds the newer panel.

/// A line of white text that shrinks, down to 16 points, until it fits. It is not in the container yet.
void makeLine(Strong<UILabel>& label, CGRect frame, CGFloat fontSize)
{
    constexpr CGFloat smallestFontSize = 16;
    label = adopt(UILabel::alloc()->initWithFrame(frame));
    label->setFont(UIFont::fontWithName_size(constantString<".HelveticaNeueInterface-UltraLightP2">(), fontSize));
    label->setBackgroundColor(UIColor::clearColor());
    label->setTextColor(UIColor::whiteColor());
    label->setNumberOfLines(1);
    label->setMinimumScaleFactor(smallestFontSize / label->font()->pointSize());
    label->setAdjustsFontSizeToFitWidth(true);
    label->setTextAlignment(NSTextAlignmentCenter);
    label->sizeToFit();
}

void addLines(UIView* container)
{
    makeLine(headlineLabel, CGRect::make(0, 0, widthOf(container), 50), 37.5);
    container->addSubview(headlineLabel);
    makeLine(subtitleLabel, CGRect::make(0, 65, widthOf(container), 50), 17.5);
    showWeather();
    container->addSubview(subtitleLabel);
}

NSString* dayOfMonth()
{
    NSDateComponents* const today = NSCalendar::currentCalendar()->components_fromDate(NSCalendarUnitDay, NSDate::date());
    return NSString::stringWithFormat(constantString<"%ld">(), today->day());
}

/// An icon that blends with what lies behind it as SpringBoard's own pocket does.
void addIcon(ListView* self, UIView* container, Strong<UIImageView>& icon, CGRect frame, NSString* text, NSString* imageFile)
{
    icon = adopt(UIImageView::alloc()->initWithFrame(frame));
    icon->setImage(drawTextInImage(text, UIImage::imageWithContentsOfFile(imageFile), {10, 11}));
    icon->layer()->setCompositingFilter(topPocketView(self)->layer()->compositingFilter());
    container->addSubview(icon);
}

void addIcons(ListView* self, UIView* container)
{
    addIcon(self, container, calendarIconView, calendarIconFrame, dayOfMonth(),
            constantString<"/Library/Application Support/Solvane/Calendar.png">());
    addIcon(self, container, notificationIconView, notificationIconFrame(widthOf(container)), constantString<"">(),
            constantString<"/Library/Application Support/Solvane/Notification.png">());
}

void addTapRecognizer(ListView* self, UIView* icon, SEL action, NSUInteger taps)
{
    const Owned<UITapGestureRecognizer> recognizer = adopt(UITapGestureRecognizer::alloc()->initWithTarget_action(self, action));
    recognizer->setNumberOfTapsRequired(taps);
    icon->addGestureRecognizer(recognizer);
}

/// No tap waits for another to fail: a double tap is a single tap first.
void makeIconsTappable(ListView* self)
{
    calendarIconView->setUserInteractionEnabled(true);
    addTapRecognizer(self, calendarIconView, selector<"imgCalenderTapped">(), 1);
    addTapRecognizer(self, calendarIconView, selector<"normalizePrevTap">(), 2);
    notificationIconView->setUserInteractionEnabled(true);
    addTapRecognizer(self, notificationIconView, selector<"imgNotificationsTapped">(), 1);
    addTapRecognizer(self, notificationIconView, selector<"normalizePrevTap">(), 2);
}

/// Puts a dark blur behind everything that is in the view. `backdrop` keeps it.
void addBackdrop(const Strong<UIView>& view, auto& backdrop)
{
    constexpr NSInteger style = 1;
    constexpr NSInteger hardEdges = 2;
    backdrop = adopt(_UIBackdropView::alloc()->initWithStyle(style));
    backdrop->inputSettings()->setColorTint(UIColor::blackColor());
    backdrop->inputSettings()->setColorTintAlpha(0.4);
    backdrop->setBlurRadiusSetOnce(true);
    backdrop->setBlurRadius(4.0);
    backdrop->setBlurHardEdges(hardEdges);
    backdrop->setBlursWithHardEdges(true);
    backdrop->setBlurQuality(constantString<"default">());
    view->insertSubview_atIndex(backdrop, 0);
}

/// A hidden view behind everything that is in the container.
void addHiddenView(UIView* container, Strong<UIView>& view, CGRect frame)
{
    view = adopt(UIView::alloc()->initWithFrame(frame));
    view->setHidden(true);
    container->insertSubview_atIndex(view, 0);
}

void addCalendarPane(ListView* self, UIView* container)
{
    addHiddenView(container, calendarPaneView, tableView(self)->frame());
    addBackdrop(calendarPaneView, calendarPaneBackdrop);
    widgetView = adopt(SVWidget::alloc()->initWithFrame(calendarPaneView->bounds()));
    calendarPaneView->addSubview(widgetView);
}

/// SpringBoard's table moves in.
void addNotificationPane(ListView* self, UIView* container)
{
    addHiddenView(container, notificationPaneView, tableView(self)->frame());
    addBackdrop(notificationPaneView, notificationPaneBackdrop);
    notificationPaneView->addSubview(tableView(self));
}

void addTab(UIView* container)
{
    addHiddenView(container, tabView, CGRectZero);
    Owned<_UIBackdropView> backdrop;
    addBackdrop(tabView, backdrop);
}

void addStrip(UIView* container)
{
    appsView = adopt(SVAppsView::alloc()->initWithFrame(appsViewFrame(widthOf(container))));
    container->insertSubview_atIndex(appsView, 0);
}

} // namespace

constinit Replacement<ListView*(ListView*, CGRect)> initListView{[](ListView* self, SEL selector, CGRect frame) {
    ListView* const built = initListView.previous(self, selector, frame);
    const Owned<UIView> container(containerView(built));
    bottomPocketView(self)->removeFromSuperview();
    addLines(container);
    addIcons(self, container);
    makeIconsTappable(self);
    addCalendarPane(self, container);
    addNotificationPane(self, container);
    addTab(container);
    addStrip(container);
    return built;
}};

} // namespace hooks
