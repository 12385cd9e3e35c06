#pragma once

#include "platform/runtime/objc.hpp"

/// The object that a private instance variable of `object` holds, found by name at each call. The variable must exist:
/// one that does not is a fatal fault, as a changed host must not be drawn upon by guesswork.
template <class T>
inline T* instanceVariable(id object, const char* name)
{
    const Ivar ivar = class_getInstanceVariable(object_getClass(object), name);
    return *reinterpret_cast<T**>(reinterpret_cast<char*>(object) + ivar_getOffset(ivar));
}
