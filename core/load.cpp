#include "appstrip/SVAppsView.hpp"
#include "core/hook_table.hpp"
#include "core/settings.hpp"
#include "core/standing_aside.hpp"
#include "platform/runtime/AutoreleasePool.hpp"
#include "platform/runtime/dlopen.hpp"
#include "text/SVWidget.hpp"
#include "text/condition_words.hpp"
#include "text/greeting.hpp"

/// What happens when SpringBoard loads the library: two initialisers, which run in the order in which they stand here.

namespace {

/// Libraries that must be in place before any hook: the one that defines `_NowPlayingArtView`, and two other lock-screen
/// extensions. Whichever is not installed is done without.
constexpr const char* librariesLoadedFirst[] = {
    "/System/Library/SpringBoardPlugins/NowPlayingArtLockScreen.lockbundle/NowPlayingArtLockScreen",
    "/Library/MobileSubstrate/DynamicLibraries/Hushveil.dylib",
    "/Library/MobileSubstrate/DynamicLibraries/Dorrance.dylib",
};

void observeDarwinNotification(NSString* name, CFNotificationCallback callback)
{
    CFNotificationCenterAddObserver(CFNotificationCenterGetDarwinNotifyCenter(), nullptr, callback, name, nullptr,
                                    CFNotificationSuspensionBehaviorNone);
}

/// Set before anything else: neither initialiser does anything then.
constinit bool standsAside = false;

[[gnu::constructor]] void installHooks()
{
    standsAside = mustStandAside();
    if (standsAside)
        return;

    const AutoreleasePool pool;
    setConditionWords();
    palString = constantString<"Pal">();
    registerSVWidget();
    registerSVAppsView();

    for (const char* path : librariesLoadedFirst)
        dlopen(path, RTLD_NOW_MODE);

    observeDarwinNotification(constantString<"loadSolvaneS">(), loadSettings);
    observeDarwinNotification(constantString<"RespringSV">(), respring);
    loadSettings(nullptr, nullptr, nullptr, nullptr, nullptr);

    installHookTable();
}

/// Reads `userName`, which the initialiser above has set.
[[gnu::constructor]] void buildGreetings()
{
    if (standsAside)
        return;

    const AutoreleasePool pool;
    morningString = NSString::stringWithFormat(constantString<"Good morning, %@.">(), userName.get());
    afternoonString = NSString::stringWithFormat(constantString<"Good afternoon, %@.">(), userName.get());
    eveningString = NSString::stringWithFormat(constantString<"Good evening, %@.">(), userName.get());
    nightString = NSString::stringWithFormat(constantString<"Good night, %@.">(), userName.get());
}

} // namespace
