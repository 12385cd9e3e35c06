#include "platform/Foundation/CFNotificationCenter.hpp"
#include "platform/Foundation/NSLog.hpp"
#include "platform/Foundation/NSString.hpp"

/// An extension that writes each notification of one name into the system log.

namespace {

void tell(CFNotificationCenterRef, void*, NSString* name, const void*, NSDictionary*)
{
    NSLog(constantString<"%@">(), name);
}

[[gnu::constructor]] void observe()
{
    CFNotificationCenterAddObserver(CFNotificationCenterGetDarwinNotifyCenter(), nullptr, &tell,
                                    constantString<"org.solvane.soak">(), nullptr, CFNotificationSuspensionBehaviorNone);
}

} // namespace
