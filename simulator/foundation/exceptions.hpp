#pragma once

#include "platform/Foundation/NSString.hpp"

namespace simulator {

/// Raises an exception, as the phone does where a program asks for what cannot be.
[[noreturn]] void raise(NSString* name, NSString* reason);

} // namespace simulator
