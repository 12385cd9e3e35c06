#include "platform/UIKit/UIScrollView.hpp"

#include <algorithm>

#include "simulator/quartzcore/damage.hpp"
#include "simulator/uikit/ViewState.hpp"
#include "simulator/uikit/uikit.hpp"

namespace simulator {

namespace {

struct ScrollState {
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
    superOf<ScrollState, "initWithFrame:", UIScrollView*>(self, frame);
    self->setClipsToBounds(true);
    auto& scroll = ivarsOf<ScrollState>(self);
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

void handlePan(UIScrollView* self, SEL, UIPanGestureRecognizer* pan)
{
    auto& scroll = ivarsOf<ScrollState>(self);
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
    auto& present = ivarsOf<ScrollState>(self).contentInset;
    const CGPoint offset = self->contentOffset();
    if (offset.x == -present.left && offset.y == -present.top)
        self->setContentOffset({-inset.left, -inset.top});
    present = inset;
}

} // namespace

void registerUIScrollView()
{
    SimulatedClass<ScrollState>("UIScrollView", "UIView")
        .method<"initWithFrame:">(initWithFrame)
        .property<&ScrollState::contentSize, redraw>("contentSize")
        .method<"contentOffset">(contentOffset)
        .method<"setContentOffset:">(setContentOffset)
        .readOnly<&ScrollState::contentInset>("contentInset")
        .method<"setContentInset:">(setContentInset)
        .flag<&ScrollState::scrollEnabled>("scrollEnabled")
        .property<&ScrollState::showsVerticalScrollIndicator>("showsVerticalScrollIndicator")
        .property<&ScrollState::showsHorizontalScrollIndicator>("showsHorizontalScrollIndicator")
        .readOnly<&ScrollState::pan>("panGestureRecognizer")
        .method<"_handlePan:">(handlePan)
        .registerClass();
}

} // namespace simulator
