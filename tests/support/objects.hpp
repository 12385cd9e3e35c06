#pragma once

#include <string>
#include <vector>

#include "platform/UIKit/UIView.hpp"
#include "platform/runtime/objc.hpp"

/// Objects as everybody in the process sees them.

/// What an object reads as, in UTF-8; "nil" for nil.
std::string textOf(NSObject* object);

NSString* text(const std::string& utf8);

/// The name of an object's class; "nil" for nil.
std::string classNameOf(NSObject* object);

/// What `new` gives: the caller owns it.
NSObject* newObject(const char* className);

NSUInteger retainCount(NSObject* object);

/// An instance variable, in the object's own memory. The class must have one of that name.
template <class T = NSInteger>
T& variable(NSObject* object, const char* name)
{
    const Ivar ivar = class_getInstanceVariable(object_getClass(object), name);
    return *reinterpret_cast<T*>(reinterpret_cast<char*>(object) + ivar_getOffset(ivar));
}

/// Back to front.
std::vector<UIView*> subviewsOf(UIView* view);
