#include "core/hook_table.hpp"

#include "lockscreen/lock_screen_view.hpp"
#include "lockscreen/notification_list_controller.hpp"
#include "lockscreen/now_playing_art_view.hpp"
#include "lockscreen/panel_construction.hpp"
#include "lockscreen/panel_layout.hpp"
#include "lockscreen/panel_taps.hpp"
#include "platform/Substrate/MSHookMessageEx.hpp"
#include "platform/runtime/objc.hpp"

namespace {

/// One row: a method that is replaced, with the slot that keeps the previous implementation, or one that is added.
struct Hook {
    const char* className;
    const char* selectorName;
    IMP implementation;
    IMP* previous;

    bool isAdded() const { return previous == nullptr; }
};

template <class Result, class Self, class... Arguments>
Hook replaced(const char* className, const char* selectorName, Result (*replacement)(Self*, SEL, Arguments...),
              Result (*&previous)(Self*, SEL, Arguments...))
{
    return {className, selectorName, reinterpret_cast<IMP>(replacement), reinterpret_cast<IMP*>(&previous)};
}

template <class Self>
Hook added(const char* className, const char* selectorName, void (*implementation)(Self*, SEL))
{
    return {className, selectorName, reinterpret_cast<IMP>(implementation), nullptr};
}

} // namespace

void installHookTable()
{
    constexpr const char* listView = "SBLockScreenNotificationListView";
    constexpr const char* listController = "SBLockScreenNotificationListController";

    const Hook table[] = {
        replaced(listView, "layoutSubviews", layoutSubviews, previousLayoutSubviews),
        added(listView, "cornerRadiusHook", cornerRadiusHook),
        added(listView, "normalizePrevTap", normalizePrevTap),
        added(listView, "imgCalenderTapped", imgCalenderTapped),
        added(listView, "imgNotificationsTapped", imgNotificationsTapped),
        replaced(listView, "initWithFrame:", initWithFrame, previousInitWithFrame),
        replaced(listController, "_updateModelAndViewForAdditionOfItem:", updateModelAndViewForAdditionOfItem,
                 previousUpdateModelAndViewForAdditionOfItem),
        replaced(listController, "prepareForTeardown", prepareForTeardown, previousPrepareForTeardown),
        replaced(listController, "clearItemsForNotificationCenter", clearItemsForNotificationCenter,
                 previousClearItemsForNotificationCenter),
        replaced(listController, "setInScreenOffMode:", setInScreenOffMode, previousSetInScreenOffMode),
        replaced("SBLockScreenView", "_addLockContentUnderlayWithRequester:", addLockContentUnderlayWithRequester,
                 previousAddLockContentUnderlayWithRequester),
        replaced("_NowPlayingArtView", "initWithFrame:", initNowPlayingArtViewWithFrame, previousInitNowPlayingArtViewWithFrame),
    };

    for (const Hook& hook : table) {
        const Class cls = objc_getClass(hook.className);
        const SEL selector = sel_registerName(hook.selectorName);
        if (hook.isAdded())
            class_addMethod(cls, selector, hook.implementation, "v@:");
        else
            MSHookMessageEx(cls, selector, hook.implementation, hook.previous);
    }
}
