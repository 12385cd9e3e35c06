#pragma once

#include "platform/UIKit/UIImageView.hpp"
#include "platform/UIKit/UILabel.hpp"
#include "platform/runtime/Owned.hpp"

namespace simulator {

/// A label in white over nothing, as the lock screen's texts are.
Owned<UILabel> whiteLabel(CGRect frame, UIFont* font);

/// The page on which the passcode is typed.
Owned<UIView> passcodePage(CGRect frame);

} // namespace simulator
