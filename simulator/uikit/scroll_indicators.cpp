#include "simulator/uikit/scroll_indicators.hpp"

#include <algorithm>

#include "platform/UIKit/UIColor.hpp"

namespace simulator {

namespace {

constexpr CGFloat thickness = 2.5;
/// From the view's edges.
constexpr CGFloat margin = 3;
constexpr CGFloat shortest = 7;

/// What the bar of one direction tells: how far the view is into the contents, insets among them, how long these are, and how
/// much of them is seen.
struct Part {
    CGFloat offset;
    CGFloat contents;
    CGFloat visible;
};

/// Where a bar begins and how long it is, from the view's own beginning.
struct Bar {
    CGFloat start;
    CGFloat length;
};

/// A bar is to its way as what is seen is to the contents. Beyond the range it shrinks.
Bar barOf(Part part)
{
    const CGFloat way = part.visible - 2 * margin;
    const CGFloat most = part.contents - part.visible;
    const CGFloat beyond = std::max({-part.offset, part.offset - most, CGFloat{0}});
    const CGFloat length = std::max(way * part.visible / part.contents - beyond, shortest);
    return {margin + std::clamp(part.offset / most, CGFloat{0}, CGFloat{1}) * (way - length), length};
}

Owned<CALayer> newBar()
{
    Owned<CALayer> layer(CALayer::layer());
    layer->setBackgroundColor(UIColor::colorWithWhite_alpha(0, 0.5)->CGColor());
    layer->setBorderColor(UIColor::colorWithWhite_alpha(1, 0.3)->CGColor());
    layer->setBorderWidth(0.5);
    layer->setCornerRadius(thickness / 2);
    return layer;
}

template <class FrameOfBar>
void place(UIScrollView* view, Owned<CALayer>& layer, double opacity, Part part, FrameOfBar frameOfBar)
{
    if (opacity <= 0 || part.contents <= part.visible) {
        layer->removeFromSuperlayer();
        return;
    }
    if (layer == nullptr)
        layer = newBar();
    layer->setFrame(frameOfBar(barOf(part)));
    layer->setOpacity(static_cast<float>(opacity));
    // Last, so that it lies over what has come into the view meanwhile.
    view->layer()->addSublayer(layer);
}

} // namespace

void placeScrollIndicators(UIScrollView* view, ScrollIndicators& indicators)
{
    const auto [origin, size] = view->bounds();
    const CGSize contents = view->contentSize();
    const UIEdgeInsets inset = view->contentInset();
    place(view, indicators.horizontal, view->showsHorizontalScrollIndicator() ? indicators.opacity : 0,
          {origin.x + inset.left, inset.left + contents.width + inset.right, size.width}, [&](Bar bar) {
              return CGRect::make(origin.x + bar.start, origin.y + size.height - margin - thickness, bar.length, thickness);
          });
    place(view, indicators.vertical, view->showsVerticalScrollIndicator() ? indicators.opacity : 0,
          {origin.y + inset.top, inset.top + contents.height + inset.bottom, size.height}, [&](Bar bar) {
              return CGRect::make(origin.x + size.width - margin - thickness, origin.y + bar.start, thickness, bar.length);
          });
}

} // namespace simulator
