#pragma once

#include "platform/CoreGraphics/CGColor.hpp"
#include "platform/CoreGraphics/CGGeometry.hpp"
#include "platform/Foundation/NSArray.hpp"

/// A rectangle that draws itself and its sublayers.
class CALayer : public NSObject {
public:
    static CALayer* layer() { return send<"layer", CALayer*>(classNamed<"CALayer">()); }

    CGRect frame() const { return send<"frame", CGRect>(this); }
    void setFrame(CGRect frame) { send<"setFrame:">(this, frame); }
    CGRect bounds() const { return send<"bounds", CGRect>(this); }
    void setBounds(CGRect bounds) { send<"setBounds:">(this, bounds); }
    CGPoint position() const { return send<"position", CGPoint>(this); }
    void setPosition(CGPoint position) { send<"setPosition:">(this, position); }
    void addSublayer(CALayer* layer) { send<"addSublayer:">(this, layer); }
    void insertSublayer_atIndex(CALayer* layer, unsigned int index) { send<"insertSublayer:atIndex:">(this, layer, index); }
    void removeFromSuperlayer() { send<"removeFromSuperlayer">(this); }
    NSArray* sublayers() const { return send<"sublayers", NSArray*>(this); }
    void setMask(CALayer* mask) { send<"setMask:">(this, mask); }
    void setCornerRadius(CGFloat radius) { send<"setCornerRadius:">(this, radius); }
    void setMasksToBounds(bool masks) { send<"setMasksToBounds:">(this, BOOL{masks}); }
    void setBackgroundColor(CGColorRef color) { send<"setBackgroundColor:">(this, color); }
    void setBorderColor(CGColorRef color) { send<"setBorderColor:">(this, color); }
    void setBorderWidth(CGFloat width) { send<"setBorderWidth:">(this, width); }
    void setOpacity(float opacity) { send<"setOpacity:">(this, opacity); }
    void setHidden(bool hidden) { send<"setHidden:">(this, BOOL{hidden}); }
    id compositingFilter() const { return send<"compositingFilter", id>(this); }
    void setCompositingFilter(id filter) { send<"setCompositingFilter:">(this, filter); }
    void setDelegate(id delegate) { send<"setDelegate:">(this, delegate); }
    bool isHidden() const { return send<"isHidden", BOOL>(this) != NO; }
    float opacity() const { return send<"opacity", float>(this); }
    /// Draws what the layer itself shows; the context is one of Core Graphics.
    void drawInContext(void* context) { send<"drawInContext:">(this, context); }
    void setNeedsDisplay() { send<"setNeedsDisplay">(this); }
};
