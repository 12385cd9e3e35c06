#include "simulator/preferences/stock_preferences.hpp"

#include <map>
#include <string>

#include "platform/Foundation/NSDictionary.hpp"
#include "platform/runtime/Owned.hpp"
#include "simulator/foundation/phone_root.hpp"
#include "simulator/foundation/phone_system.hpp"
#include "simulator/foundation/property_lists.hpp"
#include "simulator/foundation/strings.hpp"

namespace simulator {

namespace {

using Domains = std::map<std::string, Owned<NSMutableDictionary>>;

/// What the daemon has not written yet, whole, by domain.
Domains& unwritten()
{
    static auto& domains = *new Domains;
    return domains;
}

std::filesystem::path fileOf(const std::string& domain)
{
    return onThisMachine("/User/Library/Preferences/" + domain + ".plist");
}

} // namespace

NSObject* stockPreference(NSString* domain, NSString* key)
{
    const auto kept = unwritten().find(toUTF8(domain));
    if (kept != unwritten().end())
        return kept->second->objectForKey(key);
    return readPropertyList(fileOf(toUTF8(domain)))->objectForKey(key);
}

void setStockPreference(NSString* domain, NSString* key, NSObject* value)
{
    auto& settings = unwritten()[toUTF8(domain)];
    if (settings == nullptr) {
        settings = adopt(NSMutableDictionary::alloc()->init());
        if (NSDictionary* const present = readPropertyList(fileOf(toUTF8(domain))))
            settings->setDictionary(present);
    }
    if (value == nullptr)
        settings->removeObjectForKey(key);
    else
        settings->setObject_forKey(value, key);
    if (phoneSystem() < System::v8_1)
        flushStockPreferences();
}

void flushStockPreferences()
{
    for (const auto& [domain, settings] : unwritten())
        writePropertyList(settings, fileOf(domain));
    unwritten().clear();
}

} // namespace simulator
