#include "platform/UIKit/UIWindow.hpp"

#include "simulator/runtime/SimulatedClass.hpp"
#include "simulator/uikit/uikit.hpp"

/// The view at the root of the tree.

namespace simulator {

namespace {

struct WindowState {};

UIWindow* window(UIWindow* self, SEL)
{
    return self;
}

} // namespace

void registerUIWindow()
{
    SimulatedClass<WindowState>("UIWindow", "UIView").method<"window">(window).registerClass();
}

} // namespace simulator
