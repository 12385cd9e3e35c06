#include "simulator/uikit/touch_input.hpp"

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

#include "platform/Foundation/NSSet.hpp"
#include "platform/UIKit/UIGestureRecognizer.hpp"
#include "platform/UIKit/UIWindow.hpp"
#include "platform/runtime/each.hpp"
#include "simulator/uikit/UIGestureRecognizer.hpp"
#include "simulator/uikit/UITouch.hpp"

/// The way of a touch: to the view that it hits and to the recognisers around it, of which one wins.

namespace simulator {

namespace {

constexpr double pauseBetweenTaps = 0.1;

/// The finger's own clock, in seconds, so that what counts as quick does not hang on the machine's speed.
NSTimeInterval now = 0;

/// One touch with those who follow it: its view, and the recognisers of that view and of all above it, nearest first.
struct Finger {
    Owned<UITouch> touch;
    Owned<UIView> view;
    std::vector<Owned<UIGestureRecognizer>> recognizers;
    bool hasReachedView = false;
    bool isCancelledInView = false;
};

Finger& finger()
{
    static auto& one = *new Finger;
    return one;
}

NSUInteger tapsOf(UIGestureRecognizer* recognizer)
{
    return recognizer->respondsToSelector(selector<"numberOfTapsRequired">())
               ? static_cast<UITapGestureRecognizer*>(recognizer)->numberOfTapsRequired()
               : 0;
}

/// The recogniser that wins the touch: of several taps the one that counts most, else the nearest.
Owned<UIGestureRecognizer> winner()
{
    UIGestureRecognizer* best = nullptr;
    for (UIGestureRecognizer* recognizer : finger().recognizers) {
        if (ivarsOf<GestureState>(recognizer).hasNews && (best == nullptr || tapsOf(recognizer) > tapsOf(best)))
            best = recognizer;
    }
    return best;
}

void tellTargets(UIGestureRecognizer* recognizer)
{
    ivarsOf<GestureState>(recognizer).hasNews = false;
    // A copy, since an action may add another.
    for (const GestureState::Target& target : std::vector(ivarsOf<GestureState>(recognizer).targets))
        target.object->performSelector_withObject(target.action, recognizer);
}

void cancelInView(NSSet* touches)
{
    if (finger().hasReachedView && !finger().isCancelledInView)
        finger().view->touchesCancelled_withEvent(touches, nullptr);
    finger().isCancelledInView = true;
}

/// One recogniser wins and the others fail, but for a tap that waits for more taps than the one that has won.
void settleRecognizers(NSSet* touches)
{
    const Owned<UIGestureRecognizer> best = winner();
    if (best == nullptr)
        return;
    for (UIGestureRecognizer* other : finger().recognizers) {
        const bool waitsForMoreTaps = tapsOf(best) > 0 && tapsOf(other) > tapsOf(best);
        if (other != best && !waitsForMoreTaps)
            other->setState(UIGestureRecognizerStateFailed);
    }
    if (best->cancelsTouchesInView())
        cancelInView(touches);
    tellTargets(best);
}

bool follows(UIGestureRecognizer* recognizer)
{
    return recognizer->state() != UIGestureRecognizerStateFailed && recognizer->state() != UIGestureRecognizerStateEnded;
}

template <FixedString Name>
void deliver(UITouchPhase phase)
{
    auto& state = ivarsOf<TouchState>(finger().touch.get());
    state.phase = phase;
    state.timestamp = now;
    NSSet* const touches = NSSet::setWithObject(finger().touch.get());
    for (UIGestureRecognizer* recognizer : finger().recognizers) {
        if (follows(recognizer))
            send<Name>(recognizer, touches, static_cast<UIEvent*>(nullptr));
    }
    settleRecognizers(touches);
    if (finger().isCancelledInView)
        return;
    finger().hasReachedView = true;
    send<Name>(finger().view.get(), touches, static_cast<UIEvent*>(nullptr));
}

void gatherRecognizers(UIView* view)
{
    for (; view != nullptr; view = view->superview()) {
        for (UIGestureRecognizer* recognizer : each<UIGestureRecognizer>(view->gestureRecognizers())) {
            if (recognizer->isEnabled())
                finger().recognizers.emplace_back(recognizer);
        }
    }
}

void putDown(UIWindow* window, CGPoint point)
{
    window->layoutIfNeeded();
    UIView* const view = window->hitTest_withEvent(point, nullptr);
    if (view == nullptr)
        return;
    finger().touch = adopt(send<"new", UITouch*>(classNamed<"UITouch">()));
    finger().view = view;
    ivarsOf<TouchState>(finger().touch.get()) = {UITouchPhaseBegan, now, view, window, point};
    gatherRecognizers(view);
    deliver<"touchesBegan:withEvent:">(UITouchPhaseBegan);
}

} // namespace

void touchDown(UIWindow* window, CGPoint point, double pause)
{
    touchUp();
    now += pause;
    putDown(window, point);
}

void touchMove(CGPoint point, double pause)
{
    if (finger().touch == nullptr)
        return;
    now += pause;
    ivarsOf<TouchState>(finger().touch.get()).location = point;
    deliver<"touchesMoved:withEvent:">(UITouchPhaseMoved);
}

void touchMoveSteadily(CGPoint point, double seconds)
{
    if (finger().touch == nullptr)
        return;
    const CGPoint start = ivarsOf<TouchState>(finger().touch.get()).location;
    const long steps = std::max(1L, std::lround(seconds / pauseInGesture));
    for (long i = 1; i <= steps; ++i) {
        const auto share = static_cast<CGFloat>(i) / static_cast<CGFloat>(steps);
        touchMove({std::lerp(start.x, point.x, share), std::lerp(start.y, point.y, share)}, seconds / static_cast<double>(steps));
    }
}

void touchUp(CGPoint point, double pause)
{
    if (finger().touch == nullptr)
        return;
    now += pause;
    ivarsOf<TouchState>(finger().touch.get()).location = point;
    deliver<"touchesEnded:withEvent:">(UITouchPhaseEnded);
    const Finger lifted = std::exchange(finger(), {});
    for (UIGestureRecognizer* recognizer : lifted.recognizers)
        recognizer->reset();
}

void touchUp()
{
    if (finger().touch != nullptr)
        touchUp(ivarsOf<TouchState>(finger().touch.get()).location);
}

bool fingerIsDown()
{
    return finger().touch != nullptr;
}

void passFingerTime(double seconds)
{
    now += seconds;
}

void tap(UIWindow* window, CGPoint point, int times)
{
    touchDown(window, point);
    touchUp();
    for (int i = 1; i < times; ++i) {
        touchDown(window, point, pauseBetweenTaps);
        touchUp();
    }
}

void swipe(UIWindow* window, CGPoint point, Direction direction)
{
    constexpr CGFloat stroke = 160;
    struct Way {
        CGFloat x;
        CGFloat y;
    };
    constexpr Way ways[] = {{-1, 0}, {1, 0}, {0, -1}, {0, 1}};
    const Way way = ways[static_cast<int>(direction)];
    touchDown(window, point);
    touchMoveSteadily({point.x + way.x * stroke, point.y + way.y * stroke}, strokeTime);
    touchUp();
}

} // namespace simulator
