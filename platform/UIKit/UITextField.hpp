#pragma once

#include "platform/Foundation/NSString.hpp"
#include "platform/UIKit/UIControl.hpp"

enum UITextAutocapitalizationType : NSInteger {
    UITextAutocapitalizationTypeNone = 0,
    UITextAutocapitalizationTypeWords = 1,
};

enum UITextAutocorrectionType : NSInteger {
    UITextAutocorrectionTypeDefault = 0,
    UITextAutocorrectionTypeNo = 1,
};

/// A line of text that can be edited.
class UITextField : public UIControl {
public:
    static UITextField* alloc() { return send<"alloc", UITextField*>(classNamed<"UITextField">()); }
    UITextField* initWithFrame(CGRect frame) { return send<"initWithFrame:", UITextField*>(this, frame); }

    NSString* text() const { return send<"text", NSString*>(this); }
    void setText(NSString* text) { send<"setText:">(this, text); }
    /// What is shown in place of no text.
    void setPlaceholder(NSString* text) { send<"setPlaceholder:">(this, text); }
    UITextAutocapitalizationType autocapitalizationType() const
    {
        return send<"autocapitalizationType", UITextAutocapitalizationType>(this);
    }
    void setAutocapitalizationType(UITextAutocapitalizationType type) { send<"setAutocapitalizationType:">(this, type); }
    void setAutocorrectionType(UITextAutocorrectionType type) { send<"setAutocorrectionType:">(this, type); }
    bool becomeFirstResponder() { return send<"becomeFirstResponder", BOOL>(this) != NO; }
    bool resignFirstResponder() { return send<"resignFirstResponder", BOOL>(this) != NO; }
    void insertText(NSString* text) { send<"insertText:">(this, text); }
    void deleteBackward() { send<"deleteBackward">(this); }
};
