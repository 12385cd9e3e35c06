#pragma once

#include "platform/runtime/types.hpp"

/// Where the phone's calling convention on arm64 passes arguments otherwise than this machine's.
namespace simulator {

/// For a variadic method, an implementation that finds the variable arguments on the stack; null for any other selector.
IMP variadicBridge(SEL selector);

/// class_addMethod and MSHookMessageEx for implementations that expect arguments of less than 32 bits to be extended.
BOOL addMethodOfThePhone(Class cls, SEL selector, IMP implementation, const char* types);
void hookMessageForThePhone(Class cls, SEL selector, IMP replacement, IMP* previous);

} // namespace simulator

/// NSLog with the variable arguments on the stack.
extern "C" [[gnu::visibility("hidden")]] void phoneLog();
