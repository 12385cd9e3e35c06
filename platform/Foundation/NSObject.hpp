#pragma once

#include "platform/runtime/send.hpp"

class NSString;

/// The root class.
class NSObject {
public:
    NSObject* init() { return send<"init", NSObject*>(this); }
    bool isKindOfClass(Class cls) { return send<"isKindOfClass:", BOOL>(this, cls) != NO; }
    bool respondsToSelector(SEL selector) { return send<"respondsToSelector:", BOOL>(this, selector) != NO; }
    /// An action that takes no argument passes it over.
    void performSelector_withObject(SEL selector, NSObject* object)
    {
        send<"performSelector:withObject:">(this, selector, object);
    }
    bool isEqual(NSObject* other) { return send<"isEqual:", BOOL>(this, other) != NO; }
    NSUInteger hash() { return send<"hash", NSUInteger>(this); }
    NSString* description() { return send<"description", NSString*>(this); }
};
