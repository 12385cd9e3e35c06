#pragma once

#include "platform/Foundation/CFNotificationCenter.hpp"
#include "platform/runtime/types.hpp"

/// The entry points that take functions of a library of the phone, on armv7: what they pass on is what this machine may call.
namespace simulator {

BOOL addMethodOfThePhone(Class cls, SEL selector, IMP implementation, const char* types);
void hookMessageForThePhone(Class cls, SEL selector, IMP replacement, IMP* previous);
void addObserverOfThePhone(CFNotificationCenterRef center, const void* observer, CFNotificationCallback callback, NSString* name,
                           const void* object, CFNotificationSuspensionBehavior suspensionBehavior);

} // namespace simulator

extern "C" [[gnu::visibility("hidden")]] void phoneLog();
