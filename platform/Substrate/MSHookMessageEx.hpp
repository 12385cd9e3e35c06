#pragma once

#include "platform/runtime/types.hpp"

/// Replaces an instance method and stores the implementation that was in force in `*previous`.
extern "C" [[gnu::visibility("default")]] void MSHookMessageEx(Class cls, SEL selector, IMP replacement, IMP* previous);
