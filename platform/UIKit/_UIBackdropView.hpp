#pragma once

#include "platform/Foundation/NSString.hpp"
#include "platform/UIKit/UIView.hpp"

class _UIBackdropViewSettings : public NSObject {
public:
    void setColorTint(UIColor* color) { send<"setColorTint:">(this, color); }
    void setColorTintAlpha(CGFloat alpha) { send<"setColorTintAlpha:">(this, alpha); }
};

/// UIKit's private view that shows what lies behind it blurred and tinted. It keeps to its superview's bounds by itself.
class _UIBackdropView : public UIView {
public:
    static _UIBackdropView* alloc() { return send<"alloc", _UIBackdropView*>(classNamed<"_UIBackdropView">()); }
    _UIBackdropView* initWithStyle(NSInteger style) { return send<"initWithStyle:", _UIBackdropView*>(this, style); }

    _UIBackdropViewSettings* inputSettings() const { return send<"inputSettings", _UIBackdropViewSettings*>(this); }
    void setBlurRadiusSetOnce(bool setOnce) { send<"setBlurRadiusSetOnce:">(this, BOOL{setOnce}); }
    /// In points.
    void setBlurRadius(CGFloat radius) { send<"setBlurRadius:">(this, radius); }
    void setBlurHardEdges(NSInteger mode) { send<"setBlurHardEdges:">(this, mode); }
    void setBlursWithHardEdges(bool blurs) { send<"setBlursWithHardEdges:">(this, BOOL{blurs}); }
    void setBlurQuality(NSString* quality) { send<"setBlurQuality:">(this, quality); }
};
