#include "simulator/foundation/phone_root.hpp"
#include "simulator/foundation/strings.hpp"
#include "simulator/preferences/PSSpecifier.hpp"
#include "simulator/preferences/preferences.hpp"
#include "simulator/preferences/stock_preferences.hpp"
#include "simulator/services/darwin_notifications.hpp"

/// A page that leaves its values to the Settings.

namespace simulator {

namespace {

struct PSViewControllerState {};

/// The specifier's domain has it, or else the specifier a default.
NSObject* readPreferenceValue(PSViewController*, SEL, PSSpecifier* specifier)
{
    auto* const domain = propertyOf<NSString, "defaults">(specifier);
    auto* const key = propertyOf<NSString, "key">(specifier);
    NSObject* const value = domain == nullptr || key == nullptr ? nullptr : stockPreference(domain, key);
    return value == nullptr ? specifier->propertyForKey(constantString<"default">()) : value;
}

/// Whoever waits for the specifier's notification is told at once, whenever the file is written.
void setPreferenceValue_specifier(PSViewController*, SEL, NSObject* value, PSSpecifier* specifier)
{
    auto* const domain = propertyOf<NSString, "defaults">(specifier);
    auto* const key = propertyOf<NSString, "key">(specifier);
    if (domain != nullptr && key != nullptr)
        setStockPreference(domain, key, value);
    if (auto* const notification = propertyOf<NSString, "PostNotification">(specifier))
        postDarwinNotification(phoneRoot(), toUTF8(notification));
}

} // namespace

void registerPSViewController()
{
    SimulatedClass<PSViewControllerState>("PSViewController", "UIViewController")
        .method<"readPreferenceValue:">(readPreferenceValue)
        .method<"setPreferenceValue:specifier:">(setPreferenceValue_specifier)
        .registerClass();
}

} // namespace simulator
