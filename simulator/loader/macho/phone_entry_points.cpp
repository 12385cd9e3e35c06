#include "simulator/loader/macho/phone_entry_points.hpp"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <unordered_map>
#include <utility>

#include "platform/runtime/objc.hpp"
#include "platform/runtime/send.hpp"
#include "simulator/loader/macho/made_code.hpp"
#if defined(__aarch64__)
#include "simulator/loader/macho/arm64_arguments.hpp"
#elif defined(__arm__)
#include "simulator/loader/macho/armv7_calls.hpp"
#include "simulator/loader/macho/armv7_exceptions.hpp"
#endif

#if !defined(__arm__)

extern "C" const char* objc_skip_type_qualifiers(const char* type);

namespace {

/// How a result of less than 32 bits is to be extended; the assembly knows the numbers.
enum class Extension : std::uintptr_t { none, unsigned8, signed8, unsigned16, signed16 };

Extension extensionFor(const char* resultType)
{
    switch (*objc_skip_type_qualifiers(resultType)) {
    case 'B':
    case 'C':
        return Extension::unsigned8;
    case 'c':
        return Extension::signed8;
    case 'S':
        return Extension::unsigned16;
    case 's':
        return Extension::signed16;
    default:
        return Extension::none;
    }
}

/// What a send is to call.
struct Target {
    IMP implementation;
    Extension extension;
};

/// Compilers fold functions of the same code into one, so an implementation may be that of methods with other types.
using MethodKey = std::pair<IMP, SEL>;

struct MethodHash {
    std::size_t operator()(const MethodKey& key) const { return std::hash<IMP>()(key.first) * 31 + std::hash<SEL>()(key.second); }
};

Target targetFor(IMP implementation, Class cls, SEL selector)
{
    // Never destroyed: objects are let go of, with sends, while their thread comes to its end.
    thread_local auto& known = *new std::unordered_map<MethodKey, Extension, MethodHash>;
    const auto found = known.find({implementation, selector});
    if (found != known.end())
        return {implementation, found->second};
    const Method method = class_getInstanceMethod(cls, selector);
    // One implementation forwards all the messages that have no method; what it hands back stays as it is.
    if (method == nullptr)
        return {implementation, Extension::none};
    const Extension extension = extensionFor(method_getTypeEncoding(method));
    known.emplace(MethodKey(implementation, selector), extension);
    return {implementation, extension};
}

} // namespace

// For the assembly.
extern "C" {
[[gnu::visibility("hidden")]] Target phoneSendTarget(id receiver, SEL selector)
{
#if defined(__aarch64__)
    if (const IMP bridge = simulator::variadicBridge(selector))
        return {bridge, Extension::none};
#endif
    const IMP implementation = objc_msg_lookup(receiver, selector);
    return targetFor(implementation, object_getClass(receiver), selector);
}

[[gnu::visibility("hidden")]] Target phoneSuperSendTarget(objc_super* receiver, SEL selector)
{
    return targetFor(objc_msg_lookup_super(receiver, selector), receiver->superclass, selector);
}
}

#endif

extern "C" {
[[gnu::visibility("hidden")]] void phone_objc_msgSend();
[[gnu::visibility("hidden")]] void phone_objc_msgSendSuper();
#if !defined(__aarch64__)
[[gnu::visibility("hidden")]] void phone_objc_msgSend_stret();
[[gnu::visibility("hidden")]] void phone_objc_msgSendSuper_stret();
#endif
}

namespace simulator {

namespace {

std::uintptr_t stackGuard = 0x0a0dff00;

[[noreturn]] void stackWasSmashed()
{
    std::fputs("springboard: a library of the phone wrote beyond its stack frame\n", stderr);
    std::abort();
}

[[noreturn]] void bindLazily()
{
    std::fputs("springboard: a library of the phone calls a function that was not bound\n", stderr);
    std::abort();
}

struct EntryPoint {
    std::string_view name;
    void* address;
};

template <class Function>
EntryPoint entryPoint(std::string_view name, Function* function)
{
    return {name, reinterpret_cast<void*>(function)};
}

/// For a function that follows this machine's convention.
template <class Function>
EntryPoint forThePhone(std::string_view name, Function* function)
{
    return {name, callableByThePhone(reinterpret_cast<void*>(function))};
}

} // namespace

void* phoneEntryPoint(std::string_view name)
{
    static const EntryPoint entryPoints[] = {
        entryPoint("objc_msgSend", &phone_objc_msgSend),
        entryPoint("objc_msgSendSuper", &phone_objc_msgSendSuper),
#if defined(__aarch64__)
        entryPoint("NSLog", &phoneLog),
        entryPoint("class_addMethod", &addMethodOfThePhone),
        entryPoint("MSHookMessageEx", &hookMessageForThePhone),
#else
        entryPoint("objc_msgSend_stret", &phone_objc_msgSend_stret),
        entryPoint("objc_msgSendSuper_stret", &phone_objc_msgSendSuper_stret),
#endif
#if defined(__arm__)
        entryPoint("NSLog", &phoneLog),
        forThePhone("class_addMethod", &addMethodOfThePhone),
        forThePhone("MSHookMessageEx", &hookMessageForThePhone),
        forThePhone("CFNotificationCenterAddObserver", &addObserverOfThePhone),
        entryPoint("_Unwind_SjLj_Register", &enterFunctionWithCleanUps),
        entryPoint("_Unwind_SjLj_Unregister", &leaveFunctionWithCleanUps),
        entryPoint("_Unwind_SjLj_Resume", &_Unwind_Resume),
        entryPoint("__gxx_personality_sj0", &unwindPhoneFrame),
#endif
        entryPoint("__stack_chk_guard", &stackGuard),
        entryPoint("__stack_chk_fail", &stackWasSmashed),
        // The loader binds every symbol at once.
        entryPoint("dyld_stub_binder", &bindLazily),
    };
    for (const auto& [known, address] : entryPoints) {
        if (known == name)
            return address;
    }
    return nullptr;
}

#if !defined(__arm__)

void* callableByThePhone(void* function)
{
    return function;
}

void* callableByThisMachine(void* function)
{
    return function;
}

const void* implementationBehind(const void* code)
{
    return functionBehind(code);
}

#endif

} // namespace simulator
