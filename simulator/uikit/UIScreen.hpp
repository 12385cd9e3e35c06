#pragma once

#include "platform/UIKit/UIScreen.hpp"

namespace simulator {

/// The size in points and the pixels per point of the phone's screen.
void setMainScreen(CGSize size, CGFloat scale);

} // namespace simulator
