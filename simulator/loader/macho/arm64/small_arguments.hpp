#pragma once

#include "platform/runtime/types.hpp"

namespace simulator::macho::arm64 {

/// class_addMethod and MSHookMessageEx for implementations that expect arguments of less than 32 bits to be extended.
BOOL addMethod(Class cls, SEL selector, IMP implementation, const char* types);
void hookMessage(Class cls, SEL selector, IMP replacement, IMP* previous);

} // namespace simulator::macho::arm64
