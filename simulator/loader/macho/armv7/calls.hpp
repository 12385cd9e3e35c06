#pragma once

#include "platform/Foundation/CFNotificationCenter.hpp"
#include "platform/runtime/types.hpp"

/// Calls between a library of the phone and this machine. Each goes through a frame, in assembly, that arranges the arguments.
namespace simulator::macho::armv7 {

void* callableByThePhone(void* function);
void* callableByThisMachine(void* function);
const void* implementationBehind(const void* code);

/// The entry points that take functions of the library: what they pass on is what this machine may call.
BOOL addMethod(Class cls, SEL selector, IMP implementation, const char* types);
void hookMessage(Class cls, SEL selector, IMP replacement, IMP* previous);
void addObserver(CFNotificationCenterRef center, const void* observer, CFNotificationCallback callback, NSString* name,
                 const void* object, CFNotificationSuspensionBehavior suspensionBehavior);

} // namespace simulator::macho::armv7

/// NSLog for the phone's variable arguments.
extern "C" [[gnu::visibility("hidden")]] void phoneLog();
