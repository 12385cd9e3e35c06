#pragma once

#include <span>
#include <string>

#include "simulator/console/value.hpp"

namespace simulator {

/// Sends a message that is known by its name only: the arguments are read by the method's types, and the result is
/// autoreleased. A nil receiver gives nil. Throws BadLine when the receiver has no such method, when an argument is missing,
/// too many or not of its type's form, or when a type is not understood; what the method raises passes through.
Value invoke(id receiver, const std::string& selectorName, std::span<const std::string> arguments,
             const ObjectAtPath& objectAtPath);

/// Sends a message without arguments.
Value invoke(id receiver, const std::string& selectorName);

/// How error messages call an object or a class.
std::string nameOf(id object);

} // namespace simulator
