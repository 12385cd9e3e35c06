#include "tests/support/panel.hpp"

#include "platform/UIKit/UIWindow.hpp"
#include "simulator/uikit/touch_input.hpp"

void panel::layOut()
{
    simulator::listView()->setNeedsLayout();
    simulator::listView()->layoutIfNeeded();
}

Owned<UIView> panel::newListView(CGRect frame)
{
    return adopt(send<"alloc", UIView*>(objc_getClass("SBLockScreenNotificationListView"))->initWithFrame(frame));
}

void panel::tap(UIView* view, int times)
{
    const CGRect bounds = view->bounds();
    const CGPoint middle{CGRectGetMidX(bounds), CGRectGetMidY(bounds)};
    UIWindow* const window = simulator::springBoardWindow();
    simulator::tap(window, view->convertPoint_toView(middle, window), times);
}
