#include "simulator/loader/macho/arm64/small_arguments.hpp"

#include <bit>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string_view>
#include <vector>

#include "platform/Substrate/MSHookMessageEx.hpp"
#include "platform/runtime/objc.hpp"
#include "simulator/loader/macho/made_code.hpp"

extern "C" {
const char* objc_skip_argspec(const char* type);
const char* objc_skip_type_qualifiers(const char* type);
int objc_sizeof_type(const char* type);
}

namespace simulator::macho::arm64 {

namespace {

constexpr unsigned generalRegisters = 8;

/// The instruction that extends a general register as an argument of that type demands; 0 for a type that needs none.
std::uint32_t extending(char type, unsigned number)
{
    constexpr std::uint32_t unsigned8 = 0x53001c00;
    constexpr std::uint32_t unsigned16 = 0x53003c00;
    constexpr std::uint32_t signed8 = 0x13001c00;
    constexpr std::uint32_t signed16 = 0x13003c00;
    const std::uint32_t registers = number << 5 | number;
    switch (type) {
    case 'B':
    case 'C':
        return unsigned8 | registers;
    case 'c':
        return signed8 | registers;
    case 'S':
        return unsigned16 | registers;
    case 's':
        return signed16 | registers;
    default:
        return 0;
    }
}

/// How many general registers an argument takes; 0 for one in vector registers.
unsigned generalRegistersFor(const char* type)
{
    if (*type == 'f' || *type == 'd')
        return 0;
    if (*type != '{')
        return 1;
    const std::string_view whole(type, static_cast<std::size_t>(objc_skip_argspec(type) - type));
    const bool isOfFloatingPoint = whole.find_first_of("cCsSiIlLqQB@#:*^", whole.rfind('=')) == std::string_view::npos;
    const auto size = static_cast<unsigned>(objc_sizeof_type(type));
    if (isOfFloatingPoint && size <= 4 * sizeof(double))
        return 0;
    return size <= 8 || size > 16 ? 1 : 2;
}

/// The instructions that extend the arguments of a method of these types.
std::vector<std::uint32_t> extendingArguments(const char* types)
{
    std::vector<std::uint32_t> instructions;
    unsigned number = 0;
    for (const char* type = objc_skip_argspec(types); *type != '\0'; type = objc_skip_argspec(type)) {
        const char* const plain = objc_skip_type_qualifiers(type);
        if (const std::uint32_t instruction = extending(*plain, number)) {
            if (number >= generalRegisters) {
                std::fprintf(stderr, "springboard: a method of the phone takes a small argument on the stack (%s)\n", types);
                std::abort();
            }
            instructions.push_back(instruction);
        }
        number += generalRegistersFor(plain);
    }
    return instructions;
}

/// The implementation itself, or code that extends the small arguments and goes on in it.
IMP withExtendedArguments(IMP implementation, const char* types)
{
    std::vector<std::uint32_t> code = extendingArguments(types);
    if (code.empty() || implementation == nullptr)
        return implementation;
    constexpr std::uint32_t loadX16FromBehind = 0x58000050;
    constexpr std::uint32_t branchToX16 = 0xd61f0200;
    code.push_back(loadX16FromBehind);
    code.push_back(branchToX16);
    const auto address = std::bit_cast<std::uint64_t>(implementation);
    code.push_back(static_cast<std::uint32_t>(address));
    code.push_back(static_cast<std::uint32_t>(address >> 32));

    return reinterpret_cast<IMP>(makeCode(code, reinterpret_cast<const void*>(implementation)));
}

} // namespace

BOOL addMethod(Class cls, SEL selector, IMP implementation, const char* types)
{
    return class_addMethod(cls, selector, withExtendedArguments(implementation, types), types);
}

void hookMessage(Class cls, SEL selector, IMP replacement, IMP* previous)
{
    const Method method = cls == nullptr ? nullptr : class_getInstanceMethod(cls, selector);
    // What a missing method means is the hook's business.
    const IMP callable = method == nullptr ? replacement : withExtendedArguments(replacement, method_getTypeEncoding(method));
    MSHookMessageEx(cls, selector, callable, previous);
}

} // namespace simulator::macho::arm64
