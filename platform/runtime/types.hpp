#pragma once

#include <cstddef>
#include <cstdint>

/// The words of the object runtime and of Foundation, at the platform's own sizes.

class NSObject;
struct objc_class;
struct objc_selector;
struct objc_ivar;
struct objc_method;
struct objc_protocol;
struct objc_property;

using id = NSObject*;
using Class = objc_class*;
using SEL = objc_selector*;
using Ivar = objc_ivar*;
using Method = objc_method*;

/// A method's implementation. It is called through a pointer of its real type, never through this one.
using IMP = void (*)();

#if defined(__LP64__)
using BOOL = bool;
#else
using BOOL = signed char;
#endif

inline constexpr BOOL YES{true};
inline constexpr BOOL NO{false};

#if defined(__LP64__)
using NSInteger = long;
using NSUInteger = unsigned long;
using CGFloat = double;
#else
using NSInteger = int;
using NSUInteger = unsigned int;
using CGFloat = float;
#endif

using NSTimeInterval = double;
using unichar = std::uint16_t;

inline constexpr NSInteger NSNotFound = static_cast<NSInteger>(~NSUInteger{0} >> 1);

struct NSRange {
    NSUInteger location;
    NSUInteger length;
};
