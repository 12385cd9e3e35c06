#pragma once

#include "platform/Foundation/NSObject.hpp"

class NSSet;
class UIEvent;

/// An object that takes touches, or hands them on to the next in its chain.
class UIResponder : public NSObject {
public:
    UIResponder* nextResponder() const { return send<"nextResponder", UIResponder*>(this); }
    void touchesBegan_withEvent(NSSet* touches, UIEvent* event) { send<"touchesBegan:withEvent:">(this, touches, event); }
    void touchesMoved_withEvent(NSSet* touches, UIEvent* event) { send<"touchesMoved:withEvent:">(this, touches, event); }
    void touchesEnded_withEvent(NSSet* touches, UIEvent* event) { send<"touchesEnded:withEvent:">(this, touches, event); }
    void touchesCancelled_withEvent(NSSet* touches, UIEvent* event) { send<"touchesCancelled:withEvent:">(this, touches, event); }
};
