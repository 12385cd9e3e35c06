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

    UILabel* titleLabel() { return send<"titleLabel", UILabel*>(this); }
    void setTitle_forState(NSString* title, UIControlState state) { send<"setTitle:forState:">(this, title, state); }
    void setTitleColor_forState(UIColor* color, UIControlState state) { send<"setTitleColor:forState:">(this, color, state); }
};
