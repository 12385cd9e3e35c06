#pragma once

#include "platform/CoreGraphics/CGGeometry.hpp"
#include "platform/Foundation/NSArray.hpp"
#include "platform/QuartzCore/CALayer.hpp"
#include "platform/UIKit/UIColor.hpp"
#include "platform/UIKit/UIResponder.hpp"

class UIEvent;
class UIGestureRecognizer;
class UIWindow;

/// A rectangle on the screen that draws, holds subviews and takes touches.
class UIView : public UIResponder {
public:
    static UIView* alloc() { return send<"alloc", UIView*>(classNamed<"UIView">()); }
    UIView* initWithFrame(CGRect frame) { return send<"initWithFrame:", UIView*>(this, frame); }

    CALayer* layer() const { return send<"layer", CALayer*>(this); }
    /// In the superview's coordinates.
    CGRect frame() const { return send<"frame", CGRect>(this); }
    void setFrame(CGRect frame) { send<"setFrame:">(this, frame); }
    CGRect bounds() const { return send<"bounds", CGRect>(this); }
    void setBounds(CGRect bounds) { send<"setBounds:">(this, bounds); }
    CGPoint center() const { return send<"center", CGPoint>(this); }
    void setCenter(CGPoint center) { send<"setCenter:">(this, center); }

    UIView* superview() const { return send<"superview", UIView*>(this); }
    UIWindow* window() const { return send<"window", UIWindow*>(this); }
    NSArray* subviews() const { return send<"subviews", NSArray*>(this); }
    void addSubview(UIView* view) { send<"addSubview:">(this, view); }
    void insertSubview_atIndex(UIView* view, NSInteger index) { send<"insertSubview:atIndex:">(this, view, index); }
    void didMoveToSuperview() { send<"didMoveToSuperview">(this); }
    void removeFromSuperview() { send<"removeFromSuperview">(this); }

    bool isHidden() const { return send<"isHidden", BOOL>(this) != NO; }
    void setHidden(bool hidden) { send<"setHidden:">(this, BOOL{hidden}); }
    CGFloat alpha() const { return send<"alpha", CGFloat>(this); }
    void setAlpha(CGFloat alpha) { send<"setAlpha:">(this, alpha); }
    void setBackgroundColor(UIColor* color) { send<"setBackgroundColor:">(this, color); }
    void setClipsToBounds(bool clips) { send<"setClipsToBounds:">(this, BOOL{clips}); }
    void setUserInteractionEnabled(bool enabled) { send<"setUserInteractionEnabled:">(this, BOOL{enabled}); }
    bool isUserInteractionEnabled() const { return send<"isUserInteractionEnabled", BOOL>(this) != NO; }
    NSInteger tag() const { return send<"tag", NSInteger>(this); }
    void setTag(NSInteger tag) { send<"setTag:">(this, tag); }

    void setAutoresizingMask(NSUInteger mask) { send<"setAutoresizingMask:">(this, mask); }
    void setNeedsLayout() { send<"setNeedsLayout">(this); }
    /// Lays out this view and every view below it that asked for it.
    void layoutIfNeeded() { send<"layoutIfNeeded">(this); }
    void layoutSubviews() { send<"layoutSubviews">(this); }
    void setNeedsDisplay() { send<"setNeedsDisplay">(this); }
    /// Draws what the view itself shows into the current graphics context.
    void drawRect(CGRect rect) { send<"drawRect:">(this, rect); }
    CGSize sizeThatFits(CGSize size) const { return send<"sizeThatFits:", CGSize>(this, size); }
    void sizeToFit() { send<"sizeToFit">(this); }

    bool pointInside_withEvent(CGPoint point, UIEvent* event) const
    {
        return send<"pointInside:withEvent:", BOOL>(this, point, event) != NO;
    }
    /// The deepest view that takes a touch at the point, which is in this view's coordinates; nil when none does.
    UIView* hitTest_withEvent(CGPoint point, UIEvent* event) const
    {
        return send<"hitTest:withEvent:", UIView*>(this, point, event);
    }
    CGPoint convertPoint_fromView(CGPoint point, UIView* view) const
    {
        return send<"convertPoint:fromView:", CGPoint>(this, point, view);
    }
    CGPoint convertPoint_toView(CGPoint point, UIView* view) const
    {
        return send<"convertPoint:toView:", CGPoint>(this, point, view);
    }
    void addGestureRecognizer(UIGestureRecognizer* recognizer) { send<"addGestureRecognizer:">(this, recognizer); }
    /// Ends the editing of a text field in it, which then tells of its text; `force` asks no delegate.
    bool endEditing(bool force) { return send<"endEditing:", BOOL>(this, BOOL{force}) != NO; }
    NSArray* gestureRecognizers() const { return send<"gestureRecognizers", NSArray*>(this); }
};
