#include "platform/UIKit/UIGestureRecognizer.hpp"
#include "platform/UIKit/UIScrollView.hpp"
#include "simulator/runtime/SimulatedClass.hpp"
#include "simulator/uikit/uikit.hpp"

/// Recognises a drag of a scroll view's contents. A finger that comes down on contents in motion drags them from the beginning:
/// it stops them, and taps nothing in them.

namespace simulator {

namespace {

struct ScrollViewPanGestureState {};

void touchesBegan_withEvent(UIPanGestureRecognizer* self, SEL, NSSet* touches, UIEvent* event)
{
    superOf<ScrollViewPanGestureState, "touchesBegan:withEvent:">(self, touches, event);
    if (static_cast<UIScrollView*>(self->view())->isDecelerating())
        self->setState(UIGestureRecognizerStateBegan);
}

} // namespace

void registerUIScrollViewPanGestureRecognizer()
{
    SimulatedClass<ScrollViewPanGestureState>("UIScrollViewPanGestureRecognizer", "UIPanGestureRecognizer")
        .method<"touchesBegan:withEvent:">(touchesBegan_withEvent)
        .registerClass();
}

} // namespace simulator
