#include "lockscreen/hooks.hpp"
#include "lockscreen/panel.hpp"
#include "text/greeting.hpp"

namespace hooks {

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
    showWeather();
    appsView->clearAll();
}

} // namespace

constinit Replacement<void(ListController*, id)> updateModelAndViewForAdditionOfItem{
    [](ListController* self, SEL selector, id item) {
        updateModelAndViewForAdditionOfItem.previous(self, selector, item);
        showAwayText();
        appsView->setItems(instanceVariable<NSMutableArray>(self, "_listItems"));
        // The strip counts the application's items itself.
        appsView->addIconFor_andBadgeCount(item, 0);
        appsView->showIcons();
    }};

constinit Replacement<void(ListController*)> prepareForTeardown{[](ListController* self, SEL selector) {
    prepareForTeardown.previous(self, selector);
    showWeatherAndEmptyStrip();
}};

constinit Replacement<void(ListController*)> clearItemsForNotificationCenter{[](ListController* self, SEL selector) {
    clearItemsForNotificationCenter.previous(self, selector);
    showWeatherAndEmptyStrip();
}};

constinit Replacement<void(ListController*, BOOL)> setInScreenOffMode{[](ListController* self, SEL selector, BOOL isOff) {
    setInScreenOffMode.previous(self, selector, isOff);
    showGreeting();
    showWeather();
}};

} // namespace hooks
