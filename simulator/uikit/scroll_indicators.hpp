#pragma once

#include "platform/QuartzCore/CALayer.hpp"
#include "platform/UIKit/UIScrollView.hpp"
#include "platform/runtime/Owned.hpp"

namespace simulator {

/// The bars at a scroll view's edges that tell which part of its contents is to be seen. They are layers over all that is in the
/// view, and only there while they are seen.
struct ScrollIndicators {
    Owned<CALayer> horizontal;
    Owned<CALayer> vertical;
    /// From 0 to 1.
    double opacity = 0;
};

/// Puts the bars where the view's offset says; takes those away that have nothing to tell.
void placeScrollIndicators(UIScrollView* view, ScrollIndicators& indicators);

} // namespace simulator
