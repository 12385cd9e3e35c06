#pragma once

#include "platform/runtime/objc.hpp"

/// The private instance variable of `object` that holds an object, found by name at each call. The variable must exist: a
/// missing one is a fatal fault, since the runtime would give the object's class in its place.
template <class T>
inline T*& instanceVariable(id object, const char* name)
{
    const Ivar ivar = class_getInstanceVariable(object_getClass(object), name);
    if (ivar == nullptr)
        __builtin_trap();
    return *reinterpret_cast<T**>(reinterpret_cast<char*>(object) + ivar_getOffset(ivar));
}
