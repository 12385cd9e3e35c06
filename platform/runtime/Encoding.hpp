#pragma once

#include <type_traits>

#include "platform/runtime/FixedString.hpp"
#include "platform/runtime/types.hpp"

/// Type encodings ("Type Encodings", Objective-C Runtime Programming Guide) made from C++ types at compile time.

template <class T>
class Strong;
template <class T>
class Weak;

/// The encoding of a struct; specialised beside each struct that a method takes or gives.
template <class T>
struct StructEncoding;

template <class T>
consteval auto encode()
{
    if constexpr (std::is_void_v<T>)
        return FixedString("v");
    else if constexpr (std::is_enum_v<T>)
        return encode<std::underlying_type_t<T>>();
    else if constexpr (std::is_same_v<T, bool>)
        return FixedString("B");
    else if constexpr (std::is_same_v<T, float>)
        return FixedString("f");
    else if constexpr (std::is_same_v<T, double>)
        return FixedString("d");
    else if constexpr (std::is_integral_v<T>) {
        constexpr bool isSigned = std::is_signed_v<T>;
        if constexpr (sizeof(T) == 1)
            return isSigned ? FixedString("c") : FixedString("C");
        else if constexpr (sizeof(T) == 2)
            return isSigned ? FixedString("s") : FixedString("S");
        else if constexpr (sizeof(T) == 4)
            return isSigned ? FixedString("i") : FixedString("I");
        else
            return isSigned ? FixedString("q") : FixedString("Q");
    } else if constexpr (std::is_same_v<T, Class>)
        return FixedString("#");
    else if constexpr (std::is_same_v<T, SEL>)
        return FixedString(":");
    else if constexpr (std::is_same_v<T, const char*>)
        return FixedString("*");
    else if constexpr (std::is_pointer_v<T> && std::is_class_v<std::remove_pointer_t<T>>)
        return FixedString("@");
    else if constexpr (std::is_pointer_v<T>)
        return FixedString("^v");
    else
        return StructEncoding<T>::text;
}

template <class... Members>
consteval auto encodeAll()
{
    return (FixedString("") + ... + encode<Members>());
}

template <FixedString Name, class... Members>
consteval auto encodeStruct()
{
    return FixedString("{") + Name + FixedString("=") + encodeAll<Members...>() + FixedString("}");
}

template <class T>
struct StructEncoding<Strong<T>> {
    static constexpr FixedString text = "@";
};
template <class T>
struct StructEncoding<Weak<T>> {
    static constexpr FixedString text = "@";
};
template <>
struct StructEncoding<NSRange> {
    static constexpr FixedString text = encodeStruct<"_NSRange", NSUInteger, NSUInteger>();
};

/// The encoding of a method: its result, its receiver and selector, its arguments.
template <class Result, class... Arguments>
inline constexpr FixedString methodEncoding = encode<Result>() + FixedString("@:") + encodeAll<Arguments...>();
