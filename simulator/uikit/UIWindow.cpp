#include "simulator/uikit/UIWindow.hpp"

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

UIWindow*& namedWindow()
{
    static UIWindow* window = nullptr;
    return window;
}

} // namespace

UIWindow* keyWindow()
{
    return namedWindow();
}

void setKeyWindow(UIWindow* window)
{
    namedWindow() = window;
}

void registerUIWindow()
{
    SimulatedClass<WindowState>("UIWindow", "UIView").method<"window">(window).registerClass();
}

} // namespace simulator
