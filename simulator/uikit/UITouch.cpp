#include "platform/UIKit/UITouch.hpp"

#include "platform/UIKit/UIWindow.hpp"
#include "simulator/uikit/TouchState.hpp"
#include "simulator/uikit/uikit.hpp"

namespace simulator {

namespace {

CGPoint locationInView(UITouch* self, SEL, UIView* view)
{
    const TouchState& touch = stateOf(self);
    return touch.window->convertPoint_toView(touch.location, view);
}

} // namespace

void registerUITouch()
{
    SimulatedClass<TouchState>("UITouch", "NSObject")
        .readOnly<&TouchState::phase>("phase")
        .readOnly<&TouchState::timestamp>("timestamp")
        .readOnly<&TouchState::view>("view")
        .readOnly<&TouchState::window>("window")
        .method<"locationInView:">(locationInView)
        .registerClass();
}

} // namespace simulator
