#pragma once

#include <concepts>
#include <cstdarg>
#include <cstdio>
#include <deque>
#include <string>
#include <type_traits>
#include <vector>

#include "platform/CoreGraphics/CGGeometry.hpp"
#include "platform/Foundation/NSString.hpp"
#include "platform/runtime/types.hpp"

/// What is noted of a call, at the moment it is made.
namespace recording {

/// An argument, a receiver or a result.
struct Value {
    /// What it reads as; of an object without a text of its own, its class.
    std::string text;
    /// The object, for one that is called by its role.
    const void* object = nullptr;
    /// Of a list, what is in it.
    std::vector<Value> items = {};
};

struct Call {
    /// Nothing for a function.
    Value receiver;
    /// "super" or "previous", or nothing.
    std::string manner;
    /// A selector, or the name of a function.
    std::string name;
    bool isMessage = true;
    std::vector<Value> arguments;
    Value result;
};

/// Whether calls are noted now.
bool isOn();
void start();
/// Gives what was noted.
std::deque<Call> stop();

/// Notes a call; its result is filled in when there is one. A reference stays good until stop().
Call& note(Call call);

/// Objects that the library is given stay until the program ends, so that no two in a transcript share an address.
id keep(id object);

/// Whether a method is being installed by a hook: the runtime's calls for it are not the library's own.
bool isHooking();
void setHooking(bool hooking);

/// Whether the caller at that address is the library.
bool isLibrary(const void* returnAddress);

/// The library's own function behind what this machine calls for it.
const void* functionOfLibrary(const void* code);

Value describe(id object);
/// The same of one that may not be initialised yet: the receiver and the result of a message with that selector.
Value describeReceiver(id object, SEL selector);
Value describeResult(id object, SEL selector);
Value describe(Class cls);
Value describe(SEL selector);
/// Room that the library lends for a result.
Value describe(void* room);
Value describe(const char* text);
/// A pointer to something that is no object.
Value describeAddress(const void* address, const std::string& text);
Value describe(CGPoint point);
Value describe(CGSize size);
Value describe(CGRect rect);
Value describe(NSRange range);

std::string number(double value);

/// The text that a format and its arguments make; the caller owns it.
NSString* formattedText(NSString* format, std::va_list arguments);

template <class T>
    requires std::is_arithmetic_v<T>
Value describe(T value)
{
    if constexpr (sizeof(T) == 1)
        return {value != 0 ? "YES" : "NO"};
    else if constexpr (std::is_floating_point_v<T>)
        return {number(value)};
    else
        return {std::to_string(value)};
}

} // namespace recording
