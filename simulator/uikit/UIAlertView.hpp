#pragma once

#include <string_view>
#include <vector>

#include "platform/UIKit/UIAlertView.hpp"
#include "platform/UIKit/UIButton.hpp"
#include "platform/runtime/Owned.hpp"

namespace simulator {

/// The alerts on the screen, the oldest first.
const std::vector<Owned<UIAlertView>>& shownAlerts();

/// Its buttons, in the order in which they were added.
const std::vector<Owned<UIButton>>& buttonsOf(UIAlertView* alert);

} // namespace simulator
