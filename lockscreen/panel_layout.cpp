#include "lockscreen/hooks.hpp"
#include "lockscreen/panel.hpp"

namespace hooks {

namespace {

constexpr CGFloat paneTop = 130;

/// From under the icons to where SpringBoard's own layout lets the table end.
CGRect paneFrame(ListView* self)
{
    const CGSize table = tableView(self)->frame().size;
    return CGRect::make(0, paneTop, table.width, table.height - paneTop);
}

CGFloat containerWidth(ListView* self)
{
    return containerView(self)->frame().size.width;
}

} // namespace

constinit Replacement<void(ListView*)> layoutSubviews{[](ListView* self, SEL selector) {
    layoutSubviews.previous(self, selector);
    self->setAlpha(1.0);
    headlineLabel->setFrame(CGRect::make(0, 0, containerWidth(self), 100));
    subtitleLabel->setFrame(CGRect::make(0, 65, containerWidth(self), 50));
    topPocketView(self)->setFrame({{0, paneTop}, topPocketView(self)->frame().size});
    calendarIconView->setFrame(calendarIconFrame);
    calendarPaneView->setFrame(paneFrame(self));
    notificationIconView->setFrame(notificationIconFrame(containerWidth(self)));
    // Both panes are measured by the table before it is fitted into its own.
    notificationPaneView->setFrame(paneFrame(self));
    tableView(self)->setFrame(notificationPaneView->bounds());
    appsView->setFrame(appsViewFrame(containerWidth(self)));
    widgetView->setFrame(calendarPaneView->bounds());
    widgetView->showCalendar();
    showGreeting();
    showWeather();
}};

} // namespace hooks
