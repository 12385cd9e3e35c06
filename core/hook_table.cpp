#include "core/hook_table.hpp"

#include "lockscreen/hooks.hpp"
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

template <class Signature>
Hook replaced(const char* className, const char* selectorName, hooks::Replacement<Signature>& hook)
{
    return {className, selectorName, reinterpret_cast<IMP>(hook.implementation), reinterpret_cast<IMP*>(&hook.previous)};
}

Hook added(const char* className, const char* selectorName, void (*implementation)(hooks::ListView*, SEL))
{
    return {className, selectorName, reinterpret_cast<IMP>(implementation), nullptr};
}

} // namespace

void installHookTable()
{
    constexpr const char* listView = "SBLockScreenNotificationListView";
    constexpr const char* listController = "SBLockScreenNotificationListController";
    constexpr const char* lockScreenView = "SBLockScreenView";
    constexpr const char* artView = "_NowPlayingArtView";

    const Hook table[] = {
        replaced(listView, "layoutSubviews", hooks::layoutSubviews),
        added(listView, "cornerRadiusHook", hooks::cornerRadiusHook),
        added(listView, "normalizePrevTap", hooks::normalizePrevTap),
        added(listView, "imgCalenderTapped", hooks::imgCalenderTapped),
        added(listView, "imgNotificationsTapped", hooks::imgNotificationsTapped),
        replaced(listView, "initWithFrame:", hooks::initListView),
        replaced(listController, "_updateModelAndViewForAdditionOfItem:", hooks::updateModelAndViewForAdditionOfItem),
        replaced(listController, "prepareForTeardown", hooks::prepareForTeardown),
        replaced(listController, "clearItemsForNotificationCenter", hooks::clearItemsForNotificationCenter),
        replaced(listController, "setInScreenOffMode:", hooks::setInScreenOffMode),
        replaced(lockScreenView, "_addLockContentUnderlayWithRequester:", hooks::addLockContentUnderlayWithRequester),
        replaced(artView, "initWithFrame:", hooks::initNowPlayingArtView),
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
