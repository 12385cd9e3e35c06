#pragma once

#include <cstdint>

#include "platform/runtime/send.hpp"

/// What the assembly of the 64-bit processors' message sends asks for.
namespace simulator::macho {

/// How a result of less than 32 bits is to be extended; the assembly knows the numbers.
enum class Extension : std::uintptr_t { none, unsigned8, signed8, unsigned16, signed16 };

/// What a send is to call.
struct Target {
    IMP implementation;
    Extension extension;
};

} // namespace simulator::macho

extern "C" {
[[gnu::visibility("hidden")]] simulator::macho::Target phoneSendTarget(id receiver, SEL selector);
[[gnu::visibility("hidden")]] simulator::macho::Target phoneSuperSendTarget(objc_super* receiver, SEL selector);
}
