#pragma once

#include <type_traits>

#include "platform/runtime/checked_send.hpp"
#include "platform/runtime/selector.hpp"

/// One message send, typed. This file alone knows how each runtime dispatches and how a result comes back.

struct objc_super {
    id receiver;
    Class superclass;
};

extern "C" {
#if defined(__APPLE__)
void objc_msgSend();
void objc_msgSendSuper();
#if !defined(__arm64__)
void objc_msgSend_stret();
void objc_msgSendSuper_stret();
#endif
#else
IMP objc_msg_lookup(id receiver, SEL selector);
IMP objc_msg_lookup_super(objc_super* receiver, SEL selector);
#endif
}

namespace dispatch {

/// What can be sent: an owner would go as a copy whose lifetime the method does not know. A list of variable arguments can,
/// though gcc for ARM does not call it trivially copyable.
template <class... Arguments>
inline constexpr bool arePlainValues = std::conjunction_v<std::is_trivially_copy_constructible<Arguments>...>;

/// A method that changes nothing may be sent to a const receiver; the runtime knows no const.
template <class Receiver>
inline id objectOf(const Receiver* receiver)
{
    return reinterpret_cast<id>(const_cast<Receiver*>(receiver));
}

template <class Result, class... Arguments>
using Implementation = Result (*)(id, SEL, Arguments...);

template <class Result, class... Arguments>
using SuperImplementation = Result (*)(objc_super*, SEL, Arguments...);

#if defined(__arm__)
inline constexpr std::size_t largestResultInRegisters = 4;
#else
inline constexpr std::size_t largestResultInRegisters = 16;
#endif

/// Whether a structure of that encoding holds nothing but floating-point numbers.
template <std::size_t Size>
consteval bool isOfFloatingPoint(const FixedString<Size>& encoding)
{
    bool inName = false;
    for (std::size_t i = 0; i + 1 < Size; ++i) {
        const char character = encoding.text[i];
        inName = character == '{' || (inName && character != '=');
        if (!inName && character != '=' && character != '}' && character != 'd' && character != 'f')
            return false;
    }
    return true;
}

template <class Result>
consteval bool returnsThroughMemory()
{
    if constexpr (!std::is_class_v<Result>)
        return false;
#if defined(__arm64__)
    else if constexpr (sizeof(Result) <= 4 * sizeof(double) && isOfFloatingPoint(encode<Result>()))
        return false;
#endif
    else
        return sizeof(Result) > largestResultInRegisters;
}

/// Results that a runtime does not promise to make zero when the receiver is nil.
#if defined(__APPLE__)
template <class Result>
inline constexpr bool needsNilCheck = returnsThroughMemory<Result>();
#else
template <class Result>
inline constexpr bool needsNilCheck = std::is_class_v<Result> || std::is_floating_point_v<Result>;
#endif

template <class Result>
inline IMP lookUp([[maybe_unused]] id receiver, [[maybe_unused]] SEL name)
{
#if !defined(__APPLE__)
    return objc_msg_lookup(receiver, name);
#elif defined(__arm64__)
    return objc_msgSend;
#else
    return returnsThroughMemory<Result>() ? objc_msgSend_stret : objc_msgSend;
#endif
}

} // namespace dispatch

/// Sends the message `Name` to `receiver`, an object or a class. A send to nil gives zero of the result type.
/// The arguments' types must be those that the method declares: widths are not converted.
template <FixedString Name, class Result = void, class Receiver, class... Arguments>
inline Result send(Receiver* receiver, Arguments... arguments)
{
    static_assert(dispatch::arePlainValues<Arguments...>, "only plain values are sent");
    const auto object = dispatch::objectOf(receiver);
    if constexpr (dispatch::needsNilCheck<Result>) {
        if (object == nullptr)
            return Result{};
    }
    const SEL name = selector<Name>();
    if constexpr (sendsAreChecked)
        checkSendTo<Name, Result, Arguments...>(object_getClass(object), name);
    const IMP implementation = dispatch::lookUp<Result>(object, name);
    return reinterpret_cast<dispatch::Implementation<Result, Arguments...>>(implementation)(object, name, arguments...);
}

/// Sends a message whose arguments after the first are variadic, such as stringWithFormat:.
template <FixedString Name, class Result, class Receiver, class First, class... Rest>
inline Result sendVariadic(Receiver* receiver, First first, Rest... rest)
{
    static_assert(dispatch::arePlainValues<First, Rest...>, "only plain values are sent");
    static_assert(!dispatch::needsNilCheck<Result>);
    const auto object = dispatch::objectOf(receiver);
    const SEL name = selector<Name>();
    if constexpr (sendsAreChecked)
        checkSendTo<Name, Result, First>(object_getClass(object), name);
    const IMP implementation = dispatch::lookUp<Result>(object, name);
    return reinterpret_cast<Result (*)(id, SEL, First, ...)>(implementation)(object, name, first, rest...);
}

/// Sends the message `Name` to `receiver`, starting the search for the method at `superclass`.
template <FixedString Name, class Result = void, class Receiver, class... Arguments>
inline Result sendSuper(Class superclass, Receiver* receiver, Arguments... arguments)
{
    static_assert(dispatch::arePlainValues<Arguments...>, "only plain values are sent");
    const auto object = dispatch::objectOf(receiver);
    if constexpr (dispatch::needsNilCheck<Result>) {
        if (object == nullptr)
            return Result{};
    }
    objc_super target{object, superclass};
    const SEL name = selector<Name>();
    if constexpr (sendsAreChecked)
        checkSendTo<Name, Result, Arguments...>(superclass, name);
#if !defined(__APPLE__)
    const IMP implementation = objc_msg_lookup_super(&target, name);
    return reinterpret_cast<dispatch::Implementation<Result, Arguments...>>(implementation)(object, name, arguments...);
#else
#if defined(__arm64__)
    const IMP implementation = objc_msgSendSuper;
#else
    const IMP implementation = dispatch::returnsThroughMemory<Result>() ? objc_msgSendSuper_stret : objc_msgSendSuper;
#endif
    return reinterpret_cast<dispatch::SuperImplementation<Result, Arguments...>>(implementation)(&target, name, arguments...);
#endif
}
