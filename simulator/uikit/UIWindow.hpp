#pragma once

#include "platform/UIKit/UIWindow.hpp"

namespace simulator {

/// The window over which alerts and the keyboard appear; nil until one is named.
UIWindow* keyWindow();
void setKeyWindow(UIWindow* window);

} // namespace simulator
