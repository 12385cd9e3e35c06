#pragma once

#include <string_view>

class UIView;

namespace simulator {

/// Brings the keyboard over the lower end of the key window, for the field that is being edited, and takes it away.
void showKeyboard();
void hideKeyboard();

/// The key that bears that text ("a", "space", "delete", "return"); nil when there is none on the screen.
UIView* keyBearing(std::string_view text);

} // namespace simulator
