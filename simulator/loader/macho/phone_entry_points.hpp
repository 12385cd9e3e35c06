#pragma once

#include <string_view>

/// The entry points of the phone's runtime that this machine does not have, or has in another form.
///
/// A library built for the phone sends through `objc_msgSend` and its siblings ("Objective-C Runtime", Apple), and it follows
/// the phone's calling convention ("Writing ARM64 code for Apple platforms"), which differs from this machine's in that
/// - a result of less than 32 bits comes back extended, so the entry points extend what they hand back;
/// - on arm64 an argument of less than 32 bits is extended by the caller, so a method or hook of the library that takes one
///   gets it through a few instructions that extend it;
/// - on arm64 the variable arguments of a call all lie on the stack, so `stringWithFormat:` and `NSLog` find them there;
/// - on armv7 ("iOS ABI Function Call Guide", Apple) a number of 64 bits is aligned like one of 32, the stack too, and r9 need
///   not be kept, so every call between the library and this machine goes through a frame that sees to all three.
namespace simulator::macho {

/// The entry point of that name (a C name, without the underscore that symbols have); null when the machine's own will do.
void* phoneEntryPoint(std::string_view name);

} // namespace simulator::macho
