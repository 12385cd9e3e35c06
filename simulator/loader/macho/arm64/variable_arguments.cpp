#include "simulator/loader/macho/arm64/variable_arguments.hpp"

#include <cstdarg>

#include "platform/Foundation/NSString.hpp"
#include "platform/runtime/objc.hpp"
#include "simulator/loader/macho/64_bit/send_targets.hpp"

extern "C" {
void NSLogv(NSString* format, va_list arguments);

[[gnu::visibility("hidden")]] void phoneStringWithFormat();
}

namespace {

using simulator::macho::Extension;
using simulator::macho::Target;

/// The machine's list of variable arguments ("Procedure Call Standard for the Arm 64-bit Architecture"). With nothing left in
/// the areas of saved registers, every argument comes from the stack, in 8 bytes each: there the phone's callers put them.
struct ArgumentList {
    void* stack;
    void* generalTop = nullptr;
    void* vectorTop = nullptr;
    int generalOffset = 0;
    int vectorOffset = 0;
};

va_list& argumentsAt(ArgumentList& list)
{
    static_assert(sizeof(va_list) == sizeof(ArgumentList));
    return reinterpret_cast<va_list&>(list);
}

} // namespace

// For the assembly.
extern "C" {
[[gnu::visibility("hidden")]] NSString* phoneStringWithFormatArguments(Class cls, SEL, NSString* format, void* stack)
{
    ArgumentList list{stack};
    NSString* const text = send<"alloc", NSString*>(cls);
    return send<"autorelease", NSString*>(send<"initWithFormat:arguments:", NSString*>(text, format, argumentsAt(list)));
}

[[gnu::visibility("hidden")]] void phoneLogArguments(NSString* format, void* stack)
{
    ArgumentList list{stack};
    NSLogv(format, argumentsAt(list));
}

/// For the one variadic method, an implementation that finds the variable arguments on the stack.
[[gnu::visibility("hidden")]] Target phoneVariadicSendTarget(id receiver, SEL selector)
{
    static const SEL stringWithFormat = ::selector<"stringWithFormat:">();
    return selector == stringWithFormat ? Target{&phoneStringWithFormat, Extension::none} : phoneSendTarget(receiver, selector);
}
}
