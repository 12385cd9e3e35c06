#pragma once

#include "platform/runtime/Encoding.hpp"
#include "platform/runtime/encodings_agree.hpp"
#include "platform/runtime/objc.hpp"

/// In a checked build (SOLVANE_CHECKED_SENDS) each send is compared with the method that it reaches, whenever it meets another
/// class than the last time. Elsewhere nothing of this is compiled.

#if defined(SOLVANE_CHECKED_SENDS)
inline constexpr bool sendsAreChecked = true;
#else
inline constexpr bool sendsAreChecked = false;
#endif

/// A send whose types are not those that the method declares.
struct SendMismatch {
    /// Where the method was looked for: the receiver's class, the class's own class, or the superclass of a send to super.
    Class cls;
    SEL selector;
    const char* sent;
    const char* declared;
};

/// What is done about it; the process that hosts a checked build defines it.
extern "C" [[gnu::visibility("default")]] void sendMismatched(const SendMismatch& mismatch);

/// Compares a send with the class's method. A message that no method answers is not compared: it is forwarded, or raises.
inline void checkSend(Class cls, SEL selector, const char* sent)
{
    const Method method = class_getInstanceMethod(cls, selector);
    if (method == nullptr)
        return;
    const char* const declared = method_getTypeEncoding(method);
    if (!encodingsAgree(sent, declared))
        sendMismatched({cls, selector, sent, declared});
}

/// The same, once for as long as a send of these types meets the same class. Nil is no class.
template <FixedString Name, class Result, class... Arguments>
inline void checkSendTo(Class cls, SEL selector)
{
    static constinit Class compared = nullptr;
    if (cls == nullptr || __atomic_load_n(&compared, __ATOMIC_RELAXED) == cls)
        return;
    checkSend(cls, selector, methodEncoding<Result, Arguments...>.text);
    __atomic_store_n(&compared, cls, __ATOMIC_RELAXED);
}
