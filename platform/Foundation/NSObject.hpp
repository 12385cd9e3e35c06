#pragma once

#include "platform/runtime/send.hpp"

class NSString;

/// The root class. Its objects, and those of all platform classes, are made by the runtime (`alloc`, ...) and handled by
/// pointers: C++ makes none, copies none and destroys none.
class NSObject {
public:
    NSObject() = delete;
    NSObject(const NSObject&) = delete;
    NSObject& operator=(const NSObject&) = delete;
    ~NSObject() = delete;

    NSObject* init() { return send<"init", NSObject*>(this); }
    bool isKindOfClass(Class cls) const { return send<"isKindOfClass:", BOOL>(this, cls) != NO; }
    bool respondsToSelector(SEL selector) const { return send<"respondsToSelector:", BOOL>(this, selector) != NO; }
    /// An action that takes no argument passes it over.
    void performSelector_withObject(SEL selector, NSObject* object)
    {
        send<"performSelector:withObject:", id>(this, selector, object);
    }
    bool isEqual(NSObject* other) const { return send<"isEqual:", BOOL>(this, other) != NO; }
    NSUInteger hash() const { return send<"hash", NSUInteger>(this); }
    NSString* description() const { return send<"description", NSString*>(this); }
};
