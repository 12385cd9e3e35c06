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

/// A view onto contents that may be larger than it is.
class UIScrollView : public UIView {
public:
    static UIScrollView* alloc() { return send<"alloc", UIScrollView*>(classNamed<"UIScrollView">()); }
    UIScrollView* initWithFrame(CGRect frame) { return send<"initWithFrame:", UIScrollView*>(this, frame); }

    void setScrollEnabled(bool enabled) { send<"setScrollEnabled:">(this, BOOL{enabled}); }
    void setShowsVerticalScrollIndicator(bool shows) { send<"setShowsVerticalScrollIndicator:">(this, BOOL{shows}); }
    void setShowsHorizontalScrollIndicator(bool shows) { send<"setShowsHorizontalScrollIndicator:">(this, BOOL{shows}); }
    CGSize contentSize() const { return send<"contentSize", CGSize>(this); }
    void setContentSize(CGSize size) { send<"setContentSize:">(this, size); }
    CGPoint contentOffset() const { return send<"contentOffset", CGPoint>(this); }
    void setContentOffset(CGPoint offset) { send<"setContentOffset:">(this, offset); }
    UIEdgeInsets contentInset() const { return send<"contentInset", UIEdgeInsets>(this); }
    void setContentInset(UIEdgeInsets inset) { send<"setContentInset:">(this, inset); }
};
