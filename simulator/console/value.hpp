#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <variant>

#include "platform/CoreGraphics/CGGeometry.hpp"
#include "platform/Foundation/NSObject.hpp"

/// What messages take and give and instance variables hold, whatever its type.
namespace simulator {

/// The result of a message that has none.
struct Nothing {};

/// An object is not retained, and a C string not copied: a value is good until the innermost autorelease pool ends.
using Value =
    std::variant<Nothing, id, Class, long long, unsigned long long, double, bool, const char*, CGRect, CGPoint, CGSize, NSRange>;

/// The double with the fewest digits that is this float, so that 0.1f reads 0.1.
double shortestDouble(float value);

bool isClass(id object);

/// An object (nil included) or a class, according to what the pointer points to.
Value objectValue(id object);

/// The object or class that the value is. Throws BadLine, naming `source`, when it is another kind of value.
id objectIn(const Value& value, std::string_view source);

/// Finds the object of a path, for an argument that is written "@PATH". Throws BadLine when there is none.
using ObjectAtPath = std::function<id(const std::string& path)>;

/// How a value of one type lies in memory and how people write it.
struct ValueType {
    /// How the type's encoding begins ("Type Encodings", Objective-C Runtime Programming Guide).
    std::string_view encoding;
    std::size_t size;
    /// What an argument of the type looks like, for error messages.
    std::string form;
    Value (*read)(const void* storage);
    /// False when the text is not of the form. The storage is good as long as the text is and the autorelease pool lasts.
    bool (*write)(const std::string& text, void* storage, const ObjectAtPath& objectAtPath);
};

/// No larger value is understood, in bytes.
inline constexpr std::size_t largestValue = sizeof(CGRect);

/// The type of that encoding, type qualifiers passed over. Throws BadLine when it is none that is understood.
const ValueType& valueType(const char* encoding);

} // namespace simulator
