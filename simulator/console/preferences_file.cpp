#include "simulator/console/preferences_file.hpp"

#include "platform/Foundation/NSDictionary.hpp"
#include "simulator/foundation/phone_root.hpp"
#include "simulator/foundation/property_lists.hpp"
#include "simulator/foundation/strings.hpp"

namespace simulator {

void writePreferredName(const std::optional<std::string>& name)
{
    const auto file = onThisMachine(preferencesFile);
    const auto settings = adopt(NSMutableDictionary::alloc()->init());
    if (NSDictionary* const present = readPropertyListToChange(file))
        settings->setDictionary(present);
    if (name)
        settings->setObject_forKey(toNSString(*name), constantString<"Name">());
    else
        settings->removeObjectForKey(constantString<"Name">());
    writePropertyList(settings, file);
}

} // namespace simulator
