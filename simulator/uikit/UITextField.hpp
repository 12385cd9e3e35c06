#pragma once

#include "platform/UIKit/UITextField.hpp"

namespace simulator {

/// The field that is being edited; nil when there is none.
UITextField* editedField();

} // namespace simulator
