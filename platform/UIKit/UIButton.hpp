#pragma once

#include "platform/UIKit/UIControl.hpp"
#include "platform/UIKit/UILabel.hpp"

enum UIButtonType : NSInteger {
    UIButtonTypeCustom = 0,
};

/// A control with a title.
class UIButton : public UIControl {
public:
    static UIButton* buttonWithType(UIButtonType type)
    {
        return send<"buttonWithType:", UIButton*>(classNamed<"UIButton">(), type);
    }

    UILabel* titleLabel() const { return send<"titleLabel", UILabel*>(this); }
    void setTitle_forState(NSString* title, UIControlState state) { send<"setTitle:forState:">(this, title, state); }
    void setTitleColor_forState(UIColor* color, UIControlState state) { send<"setTitleColor:forState:">(this, color, state); }
    /// What was set for the state, or else for the normal one.
    NSString* titleForState(UIControlState state) const { return send<"titleForState:", NSString*>(this, state); }
    UIColor* titleColorForState(UIControlState state) const { return send<"titleColorForState:", UIColor*>(this, state); }
    /// Those for the present state.
    NSString* currentTitle() const { return send<"currentTitle", NSString*>(this); }
    UIColor* currentTitleColor() const { return send<"currentTitleColor", UIColor*>(this); }
};
