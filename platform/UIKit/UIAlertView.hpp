#pragma once

#include "platform/Foundation/NSString.hpp"
#include "platform/UIKit/UIView.hpp"

/// A message over everything else, which waits for one of its buttons.
class UIAlertView : public UIView {
public:
    static UIAlertView* alloc() { return send<"alloc", UIAlertView*>(classNamed<"UIAlertView">()); }
    UIAlertView* init() { return send<"init", UIAlertView*>(this); }

    NSString* title() const { return send<"title", NSString*>(this); }
    void setTitle(NSString* title) { send<"setTitle:">(this, title); }
    NSString* message() const { return send<"message", NSString*>(this); }
    void setMessage(NSString* message) { send<"setMessage:">(this, message); }
    /// Not retained. It is sent alertView:clickedButtonAtIndex:, if it answers that.
    void setDelegate(id delegate) { send<"setDelegate:">(this, delegate); }
    /// Gives the button's index.
    NSInteger addButtonWithTitle(NSString* title) { return send<"addButtonWithTitle:", NSInteger>(this, title); }
    void show() { send<"show">(this); }
};
