#pragma once

#include <vector>

#include "platform/UIKit/UIGestureRecognizer.hpp"
#include "platform/UIKit/UIView.hpp"
#include "simulator/runtime/SimulatedClass.hpp"

namespace simulator {

/// The autoresizing mask of a view whose width and height grow with its superview's.
inline constexpr NSUInteger flexibleWidth = 1 << 1;
inline constexpr NSUInteger flexibleHeight = 1 << 4;
inline constexpr NSUInteger flexibleSize = flexibleWidth | flexibleHeight;

/// What one view holds ("UIView", UIKit). Its geometry and its looks are its layer's.
struct ViewState {
    Owned<CALayer> layer;
    std::vector<Owned<UIView>> subviews;
    UIView* superview = nullptr;
    std::vector<Owned<UIGestureRecognizer>> gestureRecognizers;
    Owned<UIColor> backgroundColor;
    NSInteger tag = 0;
    /// Of it, the width and the height are heeded; margins stay as they are.
    NSUInteger autoresizingMask = 0;
    bool userInteractionEnabled = true;
    bool needsLayout = true;

    ~ViewState();
};

/// Parts of the class that have files of their own.
void addUIViewGeometry(SimulatedClass<ViewState>& view);
void addUIViewHierarchy(SimulatedClass<ViewState>& view);

/// An immutable copy of a list of objects. Autoreleased.
template <class T>
NSArray* toNSArray(const std::vector<Owned<T>>& list)
{
    const std::vector<id> objects(list.begin(), list.end());
    return NSArray::arrayWithObjects_count(objects.data(), objects.size());
}

/// For properties whose change shows: draws the view again.
void redraw(NSObject* view);

} // namespace simulator
