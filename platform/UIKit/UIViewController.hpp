#pragma once

#include "platform/UIKit/UIView.hpp"

/// Keeps a view, which it makes when it is first asked for it.
class UIViewController : public UIResponder {
public:
    UIViewController* initWithNibName_bundle(NSString* name, NSObject* bundle)
    {
        return send<"initWithNibName:bundle:", UIViewController*>(this, name, bundle);
    }
    UIView* view() const { return send<"view", UIView*>(this); }
    void setView(UIView* view) { send<"setView:">(this, view); }
};
