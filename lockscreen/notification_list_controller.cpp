#include "lockscreen/notification_list_controller.hpp"

#include "lockscreen/panel.hpp"
#include "text/greeting.hpp"
#include "text/weather_sentence.hpp"

void (*previousUpdateModelAndViewForAdditionOfItem)(SBLockScreenNotificationListController*, SEL, id) = nullptr;
void (*previousPrepareForTeardown)(SBLockScreenNotificationListController*, SEL) = nullptr;
void (*previousClearItemsForNotificationCenter)(SBLockScreenNotificationListController*, SEL) = nullptr;
void (*previousSetInScreenOffMode)(SBLockScreenNotificationListController*, SEL, BOOL) = nullptr;

namespace {

struct AwayText {
    NSInteger timeOfDay;
    NSString* (*text)();
};

constexpr AwayText awayTexts[] = {
    {0, constantString<"While you were gone...">},
    {1, constantString<"While you were gone...">},
    {2, constantString<"While you were gone...">},
    {3, constantString<"While you were asleep...">},
};

/// Each row asks for the time of day anew. A time of day that is in no row leaves the line as it is.
void showAwayText()
{
    for (const AwayText& away : awayTexts) {
        if (dateStatus() == away.timeOfDay) {
            subtitleLabel->setText(away.text());
            return;
        }
    }
}

void showWeatherAndEmptyStrip()
{
    subtitleLabel->setText(getTempString());
    appsView->clearAll();
}

} // namespace

void updateModelAndViewForAdditionOfItem(SBLockScreenNotificationListController* self, SEL selector, id item)
{
    previousUpdateModelAndViewForAdditionOfItem(self, selector, item);
    showAwayText();
    appsView->setItems(instanceVariable<NSMutableArray>(self, "_listItems"));
    // The strip counts the application's items itself.
    appsView->addIconFor_andBadgeCount(item, 0);
    appsView->showIcons();
}

void prepareForTeardown(SBLockScreenNotificationListController* self, SEL selector)
{
    previousPrepareForTeardown(self, selector);
    showWeatherAndEmptyStrip();
}

void clearItemsForNotificationCenter(SBLockScreenNotificationListController* self, SEL selector)
{
    previousClearItemsForNotificationCenter(self, selector);
    showWeatherAndEmptyStrip();
}

void setInScreenOffMode(SBLockScreenNotificationListController* self, SEL selector, BOOL isOff)
{
    previousSetInScreenOffMode(self, selector, isOff);
    headlineLabel->setText(dateStatusString());
    subtitleLabel->setText(getTempString());
}
