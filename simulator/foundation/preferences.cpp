#include "simulator/foundation/preferences.hpp"

#include "simulator/foundation/phone_root.hpp"
#include "simulator/foundation/property_lists.hpp"
#include "simulator/foundation/strings.hpp"

namespace simulator {

void writePreferredName(const std::optional<std::string>& name)
{
    const auto file = onThisMachine(preferencesFile);
    const id settings = send<"dictionary", id>(classNamed<"NSMutableDictionary">());
    if (NSDictionary* const present = readPropertyList(file))
        send<"setDictionary:">(settings, present);
    if (name)
        send<"setObject:forKey:">(settings, toNSString(*name), constantString<"Name">());
    else
        send<"removeObjectForKey:">(settings, constantString<"Name">());
    writePropertyList(static_cast<NSDictionary*>(settings), file);
}

} // namespace simulator
