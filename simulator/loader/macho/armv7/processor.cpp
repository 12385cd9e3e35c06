#include "simulator/loader/macho/Processor.hpp"
#include "simulator/loader/macho/armv7/calls.hpp"
#include "simulator/loader/macho/armv7/exceptions.hpp"
#include "simulator/loader/macho/message_sends.hpp"

/// armv7, the processor of the 32-bit phones.
namespace simulator::macho {

namespace {

/// For a function that follows this machine's convention.
template <class Function>
EntryPoint forThePhone(std::string_view name, Function* function)
{
    return {name, armv7::callableByThePhone(reinterpret_cast<void*>(function))};
}

std::vector<EntryPoint> entryPoints()
{
    return {
        entryPoint("objc_msgSend", &phone_objc_msgSend),
        entryPoint("objc_msgSendSuper", &phone_objc_msgSendSuper),
        entryPoint("objc_msgSend_stret", &phone_objc_msgSend_stret),
        entryPoint("objc_msgSendSuper_stret", &phone_objc_msgSendSuper_stret),
        entryPoint("NSLog", &phoneLog),
        forThePhone("class_addMethod", &armv7::addMethod),
        forThePhone("MSHookMessageEx", &armv7::hookMessage),
        forThePhone("CFNotificationCenterAddObserver", &armv7::addObserver),
        entryPoint("_Unwind_SjLj_Register", &armv7::enterFunctionWithCleanUps),
        entryPoint("_Unwind_SjLj_Unregister", &armv7::leaveFunctionWithCleanUps),
        entryPoint("_Unwind_SjLj_Resume", &_Unwind_Resume),
        entryPoint("__gxx_personality_sj0", &armv7::unwindPhoneFrame),
    };
}

} // namespace

constinit const Processor thisProcessor{
    .cputype = CPU_TYPE_ARM,
    .entryPoints = &entryPoints,
    .registerUnwindTables = &armv7::registerUnwindTables,
    .callableByThePhone = &armv7::callableByThePhone,
    .callableByThisMachine = &armv7::callableByThisMachine,
    .implementationBehind = &armv7::implementationBehind,
};

} // namespace simulator::macho
