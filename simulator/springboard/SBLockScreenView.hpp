#pragma once

#include "platform/SpringBoard/SBLockScreen.hpp"

namespace simulator {

/// Has the passcode's page slide in from the left, over an underlay that it requests, while everything else but the wallpaper
/// slides out; or back.
void showPasscodePage(SBLockScreenView* lockScreen, bool isShown);

} // namespace simulator
