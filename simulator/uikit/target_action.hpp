#pragma once

#include "platform/Foundation/NSObject.hpp"

namespace simulator {

/// Sends an action to its target with the sender; an action that takes no argument passes it over.
inline void perform(NSObject* target, SEL action, NSObject* sender)
{
    send<"performSelector:withObject:">(target, action, sender);
}

} // namespace simulator
