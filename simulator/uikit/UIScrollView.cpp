#include "platform/UIKit/UIScrollView.hpp"

#include <cmath>

#include "platform/UIKit/UIScreen.hpp"
#include "simulator/uikit/UIView.hpp"
#include "simulator/uikit/motion.hpp"
#include "simulator/uikit/scroll_glide.hpp"
#include "simulator/uikit/scroll_indicators.hpp"
#include "simulator/uikit/uikit.hpp"

/// A view whose bounds move over its contents: with the finger that drags, and on by themselves when it has let go.

namespace simulator {

namespace {

struct ScrollViewState {
    CGSize contentSize{};
    UIEdgeInsets contentInset{};
    CGFloat decelerationRate = UIScrollViewDecelerationRateNormal;
    bool bounces = true;
    bool alwaysBounceHorizontal = false;
    bool alwaysBounceVertical = false;
    bool showsHorizontalScrollIndicator = true;
    bool showsVerticalScrollIndicator = true;
    Owned<UIPanGestureRecognizer> pan;
    bool dragging = false;
    bool decelerating = false;
    /// Where the finger that drags would have the contents if it had not moved and nothing held them back.
    CGPoint drawn{};
    ScrollGlide glideAcross;
    ScrollGlide glideDown;
    ScrollIndicators indicators;
};

/// One of the two directions.
struct Axis {
    CGFloat CGPoint::* coordinate;
    CGFloat CGSize::* length;
    CGFloat UIEdgeInsets::* before;
    CGFloat UIEdgeInsets::* after;
    bool ScrollViewState::* alwaysBounces;
    ScrollGlide ScrollViewState::* glide;
};

constexpr Axis axes[] = {
    {&CGPoint::x, &CGSize::width, &UIEdgeInsets::left, &UIEdgeInsets::right, &ScrollViewState::alwaysBounceHorizontal,
     &ScrollViewState::glideAcross},
    {&CGPoint::y, &CGSize::height, &UIEdgeInsets::top, &UIEdgeInsets::bottom, &ScrollViewState::alwaysBounceVertical,
     &ScrollViewState::glideDown},
};

OffsetRange rangeOf(UIScrollView* self, const Axis& axis)
{
    const auto& scroll = ivarsOf<ScrollViewState>(self);
    const CGFloat least = -(scroll.contentInset.*axis.before);
    const CGFloat most = scroll.contentSize.*axis.length + scroll.contentInset.*axis.after - self->bounds().size.*axis.length;
    return {least, std::max(least, most)};
}

/// Contents that are to be seen as a whole stand still.
bool canMove(UIScrollView* self, const Axis& axis)
{
    const auto& scroll = ivarsOf<ScrollViewState>(self);
    const OffsetRange range = rangeOf(self, axis);
    return range.most > range.least || (scroll.bounces && scroll.*axis.alwaysBounces);
}

UIScrollView* initWithFrame(UIScrollView* self, SEL, CGRect frame)
{
    superOf<ScrollViewState, "initWithFrame:", UIScrollView*>(self, frame);
    self->setClipsToBounds(true);
    auto& scroll = ivarsOf<ScrollViewState>(self);
    auto* const pan = send<"alloc", UIPanGestureRecognizer*>(classNamed<"UIScrollViewPanGestureRecognizer">());
    scroll.pan = adopt(pan->initWithTarget_action(self, selector<"simulator_handlePan:">()));
    self->addGestureRecognizer(scroll.pan);
    return self;
}

CGPoint contentOffset(UIScrollView* self, SEL)
{
    return self->bounds().origin;
}

void moveTo(UIScrollView* self, CGPoint offset)
{
    self->setBounds({offset, self->bounds().size});
    self->setNeedsLayout();
    placeScrollIndicators(self, ivarsOf<ScrollViewState>(self).indicators);
}

/// Contents that were moving on stand there, even out of their range.
void setContentOffset(UIScrollView* self, SEL, CGPoint offset)
{
    ivarsOf<ScrollViewState>(self).decelerating = false;
    moveTo(self, offset);
}

/// What the offset may be has changed. A finger that holds the contents, and what draws them back, see to it themselves.
void comeBackIntoRange(NSObject* view)
{
    auto* const self = static_cast<UIScrollView*>(view);
    const auto& scroll = ivarsOf<ScrollViewState>(self);
    if (scroll.dragging || scroll.decelerating)
        return;
    CGPoint offset = self->contentOffset();
    for (const Axis& axis : axes)
        offset.*axis.coordinate = static_cast<CGFloat>(rangeOf(self, axis).nearest(offset.*axis.coordinate));
    if (offset != self->contentOffset())
        moveTo(self, offset);
}

template <FixedString Setter>
void setRect(UIScrollView* self, SEL, CGRect rect)
{
    const CGSize before = self->bounds().size;
    superOf<ScrollViewState, Setter>(self, rect);
    if (self->bounds().size != before)
        comeBackIntoRange(self);
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

BOOL isScrollEnabled(UIScrollView* self, SEL)
{
    return BOOL{ivarsOf<ScrollViewState>(self).pan->isEnabled()};
}

void setScrollEnabled(UIScrollView* self, SEL, BOOL enabled)
{
    ivarsOf<ScrollViewState>(self).pan->setEnabled(enabled != NO);
}

// The finger

void beginDrag(UIScrollView* self)
{
    auto& scroll = ivarsOf<ScrollViewState>(self);
    scroll.dragging = true;
    scroll.decelerating = false;
    scroll.indicators.opacity = 1;
    const auto [offset, visible] = self->bounds();
    for (const Axis& axis : axes) {
        scroll.drawn.*axis.coordinate =
            static_cast<CGFloat>(drawnTo(offset.*axis.coordinate, rangeOf(self, axis), visible.*axis.length));
    }
}

/// Contents in motion stand on whole pixels, but for the ends of their range.
CGFloat onPixel(double offset, OffsetRange range)
{
    const double scale = UIScreen::mainScreen()->scale();
    const bool isEnd = offset == range.least || offset == range.most;
    return static_cast<CGFloat>(isEnd ? offset : std::round(offset * scale) / scale);
}

void drag(UIScrollView* self, CGPoint translation)
{
    const auto& scroll = ivarsOf<ScrollViewState>(self);
    auto [offset, visible] = self->bounds();
    for (const Axis& axis : axes) {
        if (!canMove(self, axis))
            continue;
        const OffsetRange range = rangeOf(self, axis);
        const double wanted = scroll.drawn.*axis.coordinate - translation.*axis.coordinate;
        const double shown = scroll.bounces ? rubberBanded(wanted, range, visible.*axis.length) : range.nearest(wanted);
        offset.*axis.coordinate = onPixel(shown, range);
    }
    moveTo(self, offset);
}

void glide(UIScrollView* self, double seconds)
{
    auto& scroll = ivarsOf<ScrollViewState>(self);
    // At a rate of 1 nothing would ever stop.
    const ScrollGlide::Manner manner{std::clamp(static_cast<double>(scroll.decelerationRate), 0.0, 0.9999), scroll.bounces};
    CGPoint offset = self->contentOffset();
    scroll.decelerating = false;
    for (const Axis& axis : axes) {
        const OffsetRange range = rangeOf(self, axis);
        ScrollGlide& glide = scroll.*axis.glide;
        glide.advance(seconds, range, manner);
        offset.*axis.coordinate = onPixel(glide.offset, range);
        scroll.decelerating = scroll.decelerating || !glide.isAtRest(range);
    }
    moveTo(self, offset);
}

/// The bars are seen as long as the contents move, and fade then.
bool moveOn(UIView* view, double seconds)
{
    constexpr double fadingTime = 0.25;
    auto* const self = static_cast<UIScrollView*>(view);
    auto& scroll = ivarsOf<ScrollViewState>(self);
    if (scroll.dragging)
        return false;
    if (scroll.decelerating)
        glide(self, seconds);
    else
        scroll.indicators.opacity -= seconds / fadingTime;
    placeScrollIndicators(self, scroll.indicators);
    return scroll.decelerating || scroll.indicators.opacity > 0;
}

/// The contents go on as fast as the finger has moved them.
void letGo(UIScrollView* self, CGPoint velocity)
{
    auto& scroll = ivarsOf<ScrollViewState>(self);
    scroll.dragging = false;
    scroll.decelerating = true;
    const auto [offset, visible] = self->bounds();
    for (const Axis& axis : axes) {
        const double place = offset.*axis.coordinate;
        const double speed = followingSpeed(place, rangeOf(self, axis), visible.*axis.length);
        scroll.*axis.glide = {place, canMove(self, axis) ? -(velocity.*axis.coordinate) * speed : 0};
    }
    startMotion(self, moveOn);
}

void handlePan(UIScrollView* self, SEL, UIPanGestureRecognizer* pan)
{
    if (pan->state() == UIGestureRecognizerStateBegan)
        beginDrag(self);
    drag(self, pan->translationInView(self));
    if (pan->state() == UIGestureRecognizerStateEnded)
        letGo(self, pan->velocityInView(self));
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
        .property<&ScrollViewState::decelerationRate>("decelerationRate")
        .property<&ScrollViewState::bounces>("bounces")
        .property<&ScrollViewState::alwaysBounceHorizontal>("alwaysBounceHorizontal")
        .property<&ScrollViewState::alwaysBounceVertical>("alwaysBounceVertical")
        .method<"isScrollEnabled">(isScrollEnabled)
        .method<"setScrollEnabled:">(setScrollEnabled)
        .readOnlyFlag<&ScrollViewState::dragging>("dragging")
        .readOnlyFlag<&ScrollViewState::decelerating>("decelerating")
        .property<&ScrollViewState::showsVerticalScrollIndicator>("showsVerticalScrollIndicator")
        .property<&ScrollViewState::showsHorizontalScrollIndicator>("showsHorizontalScrollIndicator")
        .readOnly<&ScrollViewState::pan>("panGestureRecognizer")
        .method<"simulator_handlePan:">(handlePan)
        .registerClass();
}

} // namespace simulator
