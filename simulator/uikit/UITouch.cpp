#include "simulator/uikit/UITouch.hpp"

#include "platform/UIKit/UIWindow.hpp"
#include "simulator/uikit/uikit.hpp"

/// One finger on the screen, as views and recognisers are told of it.

namespace simulator {

namespace {

CGPoint locationInView(UITouch* self, SEL, UIView* view)
{
    const auto& touch = ivarsOf<TouchState>(self);
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
