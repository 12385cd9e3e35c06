#pragma once

#include "platform/Foundation/NSString.hpp"
#include "platform/UIKit/UIFont.hpp"
#include "platform/UIKit/UIView.hpp"

enum NSTextAlignment : NSInteger {
    NSTextAlignmentLeft = 0,
    NSTextAlignmentCenter = 1,
    NSTextAlignmentRight = 2,
};

/// What of a shrunk text stays where it was at its full size.
enum UIBaselineAdjustment : NSInteger {
    UIBaselineAdjustmentAlignBaselines = 0,
    UIBaselineAdjustmentAlignCenters = 1,
    /// The top of its line.
    UIBaselineAdjustmentNone = 2,
};

/// A view that shows one or more lines of text.
class UILabel : public UIView {
public:
    static UILabel* alloc() { return send<"alloc", UILabel*>(classNamed<"UILabel">()); }
    UILabel* initWithFrame(CGRect frame) { return send<"initWithFrame:", UILabel*>(this, frame); }

    NSString* text() const { return send<"text", NSString*>(this); }
    void setText(NSString* text) { send<"setText:">(this, text); }
    UIFont* font() const { return send<"font", UIFont*>(this); }
    void setFont(UIFont* font) { send<"setFont:">(this, font); }
    void setTextColor(UIColor* color) { send<"setTextColor:">(this, color); }
    void setTextAlignment(NSTextAlignment alignment) { send<"setTextAlignment:">(this, alignment); }
    /// 0 is as many as fit.
    void setNumberOfLines(NSInteger lines) { send<"setNumberOfLines:">(this, lines); }
    void setAdjustsFontSizeToFitWidth(bool adjusts) { send<"setAdjustsFontSizeToFitWidth:">(this, BOOL{adjusts}); }
    /// The smallest share of its size, from 0 to 1, to which the font shrinks so that the text fits; 0 keeps it from shrinking.
    void setMinimumScaleFactor(CGFloat factor) { send<"setMinimumScaleFactor:">(this, factor); }
    UIBaselineAdjustment baselineAdjustment() const { return send<"baselineAdjustment", UIBaselineAdjustment>(this); }
    void setBaselineAdjustment(UIBaselineAdjustment adjustment) { send<"setBaselineAdjustment:">(this, adjustment); }
};
