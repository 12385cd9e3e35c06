#pragma once

#include "platform/UIKit/UIView.hpp"

/// The view at the root of all that is on the screen.
class UIWindow : public UIView {
public:
    static UIWindow* alloc() { return send<"alloc", UIWindow*>(classNamed<"UIWindow">()); }
    UIWindow* initWithFrame(CGRect frame) { return send<"initWithFrame:", UIWindow*>(this, frame); }
};
