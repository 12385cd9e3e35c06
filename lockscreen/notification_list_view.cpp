#include "lockscreen/notification_list_view.hpp"

SBLockScreenNotificationListView* (*previousInitListViewWithFrame)(SBLockScreenNotificationListView*, SEL, CGRect) = nullptr;
void (*previousLayoutSubviews)(SBLockScreenNotificationListView*, SEL) = nullptr;

SBLockScreenNotificationListView* initListViewWithFrame(SBLockScreenNotificationListView* self, SEL selector, CGRect frame)
{
    return previousInitListViewWithFrame(self, selector, frame);
}

void layoutSubviews(SBLockScreenNotificationListView* self, SEL selector)
{
    previousLayoutSubviews(self, selector);
}

void cornerRadiusHook(SBLockScreenNotificationListView*, SEL)
{
}

void normalizePrevTap(SBLockScreenNotificationListView*, SEL)
{
}

void imgCalenderTapped(SBLockScreenNotificationListView* self, SEL)
{
    self->normalizePrevTap();
    self->cornerRadiusHook();
}

void imgNotificationsTapped(SBLockScreenNotificationListView* self, SEL)
{
    self->normalizePrevTap();
    self->cornerRadiusHook();
}
