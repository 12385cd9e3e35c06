#include "platform/Foundation/NSLog.hpp"
#include "platform/Foundation/NSString.hpp"
#include "platform/runtime/AutoreleasePool.hpp"
#include "platform/runtime/objc.hpp"
#include "settings/SVSettingsController.hpp"

/// What happens when the Settings load the bundle.

namespace {

[[gnu::constructor]] void load()
{
    const AutoreleasePool pool;
    if (objc_getClass("PSListController") == nullptr)
        NSLog(constantString<"Solvane's page stands aside: these are not the Settings">());
    else if (objc_getClass("SVSettingsController") != nullptr)
        NSLog(constantString<"Solvane's page stands aside: there is a class SVSettingsController already">());
    else
        registerSVSettingsController();
}

} // namespace
