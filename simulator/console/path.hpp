#pragma once

#include <map>
#include <string>

#include "platform/runtime/Owned.hpp"
#include "simulator/console/value.hpp"

namespace simulator {

/// The objects that `let` keeps, by their names; nil is kept too.
using KeptObjects = std::map<std::string, Owned<NSObject>>;

/// What a path leads to: a root, then steps `.name`, `[n]` and `["key"]` from one object to the next. The root is one of the
/// fixed names, a kept object, an exported variable, an exported function with `()` behind it, or a class, in this order. A
/// step from nil gives nil. Throws BadLine for a path that is not well formed or leads nowhere.
Value valueAtPath(const std::string& path, const KeptObjects& kept);

/// The object that a path leads to. Throws BadLine when it leads to another kind of value.
id objectAtPath(const std::string& path, const KeptObjects& kept);

/// Whether `let` may keep an object under that name: an identifier that is none of the fixed names.
bool canBeKeptAs(const std::string& name);

} // namespace simulator
