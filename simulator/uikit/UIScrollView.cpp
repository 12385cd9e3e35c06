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

CGPoint inRange(UIScrollView* self, CGPoint wanted)
{
    const auto& scroll = ivarsOf<ScrollViewState>(self);
    const CGSize visible = self->bounds().size;
    const UIEdgeInsets& inset = scroll.contentInset;
    return {clamped(wanted.x, inset.left, scroll.contentSize.width, inset.right, visible.width),
            clamped(wanted.y, inset.top, scroll.contentSize.height, inset.bottom, visible.height)};
}

/// What the offset may be has changed.
void comeBackIntoRange(NSObject* self)
{
    auto* const view = static_cast<UIScrollView*>(self);
    const CGPoint offset = view->contentOffset();
    if (inRange(view, offset) != offset)
        view->setContentOffset(inRange(view, offset));
}

template <FixedString Setter>
void setRect(UIScrollView* self, SEL, CGRect rect)
{
    const CGSize before = self->bounds().size;
    superOf<ScrollViewState, Setter>(self, rect);
    if (self->bounds().size != before)
        comeBackIntoRange(self);
}

void _handlePan(UIScrollView* self, SEL, UIPanGestureRecognizer* pan)
{
    auto& scroll = ivarsOf<ScrollViewState>(self);
    if (!scroll.scrollEnabled)
        return;
    if (pan->state() == UIGestureRecognizerStateBegan)
        scroll.offsetAtStart = self->contentOffset();
    const CGPoint moved = pan->translationInView(self);
    self->setContentOffset(inRange(self, {scroll.offsetAtStart.x - moved.x, scroll.offsetAtStart.y - moved.y}));
}

/// Contents that stand at their beginning stay there when the inset changes.
void setContentInset(UIScrollView* self, SEL, UIEdgeInsets inset)
{
    auto& present = ivarsOf<ScrollViewState>(self).contentInset;
    const CGPoint offset = self->contentOffset();
    const bool standAtBeginning = offset.x == -present.left && offset.y == -present.top;
    present = inset;
    if (standAtBeginning)
        self->setContentOffset({-inset.left, -inset.top});
    comeBackIntoRange(self);
}

} // namespace

void registerUIScrollView()
{
    SimulatedClass<ScrollViewState>("UIScrollView", "UIView")
        .method<"initWithFrame:">(initWithFrame)
        .method<"setFrame:">(setRect<"setFrame:">)
        .method<"setBounds:">(setRect<"setBounds:">)
        .property<&ScrollViewState::contentSize, comeBackIntoRange>("contentSize")
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
