#include <ranges>

#include "simulator/uikit/UIView.hpp"

/// Where a view is and how large, and what is at a point in it.

namespace simulator {

namespace {

CGRect frame(UIView* self, SEL)
{
    return self->layer()->frame();
}

void growWithSuperview(UIView* view, CGSize growth)
{
    const NSUInteger mask = ivarsOf<ViewState>(view).autoresizingMask;
    if (mask == 0)
        return;
    CGRect frame = view->frame();
    if ((mask & flexibleWidth) != 0)
        frame.size.width += growth.width;
    if ((mask & flexibleHeight) != 0)
        frame.size.height += growth.height;
    view->setFrame(frame);
}

/// A new size asks for a new layout of what is inside.
void sizeChanged(UIView* self, CGSize before)
{
    const CGSize size = self->layer()->bounds().size;
    if (size == before)
        return;
    self->setNeedsLayout();
    for (UIView* subview : ivarsOf<ViewState>(self).subviews)
        growWithSuperview(subview, {size.width - before.width, size.height - before.height});
}

void setFrame(UIView* self, SEL, CGRect frame)
{
    const CGSize before = self->layer()->bounds().size;
    self->layer()->setFrame(frame);
    sizeChanged(self, before);
}

CGRect bounds(UIView* self, SEL)
{
    return self->layer()->bounds();
}

void setBounds(UIView* self, SEL, CGRect bounds)
{
    const CGSize before = self->layer()->bounds().size;
    self->layer()->setBounds(bounds);
    sizeChanged(self, before);
}

CGPoint center(UIView* self, SEL)
{
    return self->layer()->position();
}

void setCenter(UIView* self, SEL, CGPoint center)
{
    self->layer()->setPosition(center);
}

CGSize sizeThatFits(UIView* self, SEL, CGSize)
{
    return self->bounds().size;
}

void sizeToFit(UIView* self, SEL)
{
    const CGRect frame = self->frame();
    self->setFrame({frame.origin, self->sizeThatFits(self->bounds().size)});
}

CGPoint toSuperview(UIView* view, CGPoint point)
{
    const CGRect frame = view->frame();
    const CGRect bounds = view->bounds();
    return {point.x - bounds.origin.x + frame.origin.x, point.y - bounds.origin.y + frame.origin.y};
}

CGPoint fromSuperview(UIView* view, CGPoint point)
{
    const CGRect frame = view->frame();
    const CGRect bounds = view->bounds();
    return {point.x - frame.origin.x + bounds.origin.x, point.y - frame.origin.y + bounds.origin.y};
}

CGPoint toRoot(UIView* view, CGPoint point)
{
    for (; view != nullptr && view->superview() != nullptr; view = view->superview())
        point = toSuperview(view, point);
    return point;
}

CGPoint fromRoot(UIView* view, CGPoint point)
{
    if (view == nullptr || view->superview() == nullptr)
        return point;
    return fromSuperview(view, fromRoot(view->superview(), point));
}

/// A nil view stands for the root of the tree.
CGPoint convertPoint_toView(UIView* self, SEL, CGPoint point, UIView* view)
{
    return fromRoot(view, toRoot(self, point));
}

CGPoint convertPoint_fromView(UIView* self, SEL, CGPoint point, UIView* view)
{
    return fromRoot(self, toRoot(view, point));
}

BOOL pointInside_withEvent(UIView* self, SEL, CGPoint point, UIEvent*)
{
    const CGRect bounds = self->bounds();
    return BOOL{point.x >= bounds.origin.x && point.x < bounds.origin.x + bounds.size.width && point.y >= bounds.origin.y &&
                point.y < bounds.origin.y + bounds.size.height};
}

/// Hidden and nearly transparent views, those that take no touches, and all below them are passed over.
UIView* hitTest_withEvent(UIView* self, SEL, CGPoint point, UIEvent* event)
{
    constexpr CGFloat leastAlpha = 0.01;
    if (self->isHidden() || self->alpha() < leastAlpha || !self->isUserInteractionEnabled() ||
        !self->pointInside_withEvent(point, event))
        return nullptr;
    const auto& all = ivarsOf<ViewState>(self).subviews;
    for (const auto& subview : all | std::views::reverse) {
        if (UIView* const hit = subview->hitTest_withEvent(fromSuperview(subview, point), event))
            return hit;
    }
    return self;
}

} // namespace

void addUIViewGeometry(SimulatedClass<ViewState>& view)
{
    view.method<"frame">(frame)
        .method<"setFrame:">(setFrame)
        .method<"bounds">(bounds)
        .method<"setBounds:">(setBounds)
        .method<"center">(center)
        .method<"setCenter:">(setCenter)
        .property<&ViewState::autoresizingMask>("autoresizingMask")
        .method<"sizeThatFits:">(sizeThatFits)
        .method<"sizeToFit">(sizeToFit)
        .method<"convertPoint:toView:">(convertPoint_toView)
        .method<"convertPoint:fromView:">(convertPoint_fromView)
        .method<"pointInside:withEvent:">(pointInside_withEvent)
        .method<"hitTest:withEvent:">(hitTest_withEvent);
}

} // namespace simulator
