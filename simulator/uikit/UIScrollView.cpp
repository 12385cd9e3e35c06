#include "platform/UIKit/UIScrollView.hpp"

#include <algorithm>

#include "simulator/uikit/UIView.hpp"
#include "simulator/uikit/uikit.hpp"

/// A view whose bounds move over its contents with the finger that drags.

namespace simulator {

namespace {

struct ScrollViewState {
    CGSize contentSize{};
    UIEdgeInsets contentInset{};
    bool scrollEnabled = true;
    bool showsVerticalScrollIndicator = true;
    bool showsHorizontalScrollIndicator = true;
    Owned<UIPanGestureRecognizer> pan;
    CGPoint offsetAtStart{};
};

UIScrollView* initWithFrame(UIScrollView* self, SEL, CGRect frame)
{
    superOf<ScrollViewState, "initWithFrame:", UIScrollView*>(self, frame);
    self->setClipsToBounds(true);
    auto& scroll = ivarsOf<ScrollViewState>(self);
    scroll.pan = adopt(UIPanGestureRecognizer::alloc()->initWithTarget_action(self, selector<"_handlePan:">()));
    self->addGestureRecognizer(scroll.pan);
    return self;
}

CGPoint contentOffset(UIScrollView* self, SEL)
{
    return self->bounds().origin;
}

void setContentOffset(UIScrollView* self, SEL, CGPoint offset)
{
    self->setBounds({offset, self->bounds().size});
    self->setNeedsLayout();
}

/// The offset nearest to the wanted one that shows no more than the insets beyond the contents.
CGFloat clamped(CGFloat wanted, CGFloat before, CGFloat length, CGFloat after, CGFloat visible)
{
    const CGFloat least = -before;
    return std::clamp(wanted, least, std::max(least, length + after - visible));
}

void _handlePan(UIScrollView* self, SEL, UIPanGestureRecognizer* pan)
{
    auto& scroll = ivarsOf<ScrollViewState>(self);
    if (!scroll.scrollEnabled)
        return;
    if (pan->state() == UIGestureRecognizerStateBegan)
        scroll.offsetAtStart = self->contentOffset();
    const CGPoint moved = pan->translationInView(self);
    const CGSize visible = self->bounds().size;
    const UIEdgeInsets& inset = scroll.contentInset;
    self->setContentOffset(
        {clamped(scroll.offsetAtStart.x - moved.x, inset.left, scroll.contentSize.width, inset.right, visible.width),
         clamped(scroll.offsetAtStart.y - moved.y, inset.top, scroll.contentSize.height, inset.bottom, visible.height)});
}

/// Contents that stand at their beginning stay there when the inset changes.
void setContentInset(UIScrollView* self, SEL, UIEdgeInsets inset)
{
    auto& present = ivarsOf<ScrollViewState>(self).contentInset;
    const CGPoint offset = self->contentOffset();
    if (offset.x == -present.left && offset.y == -present.top)
        self->setContentOffset({-inset.left, -inset.top});
    present = inset;
}

} // namespace

void registerUIScrollView()
{
    SimulatedClass<ScrollViewState>("UIScrollView", "UIView")
        .method<"initWithFrame:">(initWithFrame)
        .property<&ScrollViewState::contentSize, redraw>("contentSize")
        .method<"contentOffset">(contentOffset)
        .method<"setContentOffset:">(setContentOffset)
        .readOnly<&ScrollViewState::contentInset>("contentInset")
        .method<"setContentInset:">(setContentInset)
        .flag<&ScrollViewState::scrollEnabled>("scrollEnabled")
        .property<&ScrollViewState::showsVerticalScrollIndicator>("showsVerticalScrollIndicator")
        .property<&ScrollViewState::showsHorizontalScrollIndicator>("showsHorizontalScrollIndicator")
        .readOnly<&ScrollViewState::pan>("panGestureRecognizer")
        .method<"_handlePan:">(_handlePan)
        .registerClass();
}

} // namespace simulator
