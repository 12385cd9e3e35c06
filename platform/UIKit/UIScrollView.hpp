#pragma once

#include "platform/UIKit/UIView.hpp"

/// Distances inwards from the four edges, in points.
struct UIEdgeInsets {
    CGFloat top;
    CGFloat left;
    CGFloat bottom;
    CGFloat right;
};

template <>
struct StructEncoding<UIEdgeInsets> {
    static constexpr FixedString text = encodeStruct<"UIEdgeInsets", CGFloat, CGFloat, CGFloat, CGFloat>();
};

/// How much of its speed is left to contents that go on by themselves, after each millisecond.
inline constexpr CGFloat UIScrollViewDecelerationRateNormal = 0.998;
inline constexpr CGFloat UIScrollViewDecelerationRateFast = 0.99;

/// A view onto contents that may be larger than it is.
class UIScrollView : public UIView {
public:
    static UIScrollView* alloc() { return send<"alloc", UIScrollView*>(classNamed<"UIScrollView">()); }
    UIScrollView* initWithFrame(CGRect frame) { return send<"initWithFrame:", UIScrollView*>(this, frame); }

    void setScrollEnabled(bool enabled) { send<"setScrollEnabled:">(this, BOOL{enabled}); }
    bool showsVerticalScrollIndicator() const { return send<"showsVerticalScrollIndicator", BOOL>(this) != NO; }
    void setShowsVerticalScrollIndicator(bool shows) { send<"setShowsVerticalScrollIndicator:">(this, BOOL{shows}); }
    bool showsHorizontalScrollIndicator() const { return send<"showsHorizontalScrollIndicator", BOOL>(this) != NO; }
    void setShowsHorizontalScrollIndicator(bool shows) { send<"setShowsHorizontalScrollIndicator:">(this, BOOL{shows}); }
    CGSize contentSize() const { return send<"contentSize", CGSize>(this); }
    void setContentSize(CGSize size) { send<"setContentSize:">(this, size); }
    CGPoint contentOffset() const { return send<"contentOffset", CGPoint>(this); }
    void setContentOffset(CGPoint offset) { send<"setContentOffset:">(this, offset); }
    UIEdgeInsets contentInset() const { return send<"contentInset", UIEdgeInsets>(this); }
    void setContentInset(UIEdgeInsets inset) { send<"setContentInset:">(this, inset); }
    /// Whether a finger can draw the contents beyond their range, from where they come back.
    void setBounces(bool bounces) { send<"setBounces:">(this, BOOL{bounces}); }
    /// The same of contents that are no larger than the view.
    void setAlwaysBounceVertical(bool bounces) { send<"setAlwaysBounceVertical:">(this, BOOL{bounces}); }
    void setAlwaysBounceHorizontal(bool bounces) { send<"setAlwaysBounceHorizontal:">(this, BOOL{bounces}); }
    void setDecelerationRate(CGFloat rate) { send<"setDecelerationRate:">(this, rate); }
    /// Whether a finger draws the contents.
    bool isDragging() const { return send<"isDragging", BOOL>(this) != NO; }
    /// Whether the contents go on by themselves.
    bool isDecelerating() const { return send<"isDecelerating", BOOL>(this) != NO; }
};
