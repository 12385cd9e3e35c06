#pragma once

#include "platform/CoreGraphics/CGGeometry.hpp"

class UIWindow;

/// A finger on the screen. Points are in the window's coordinates; every touch goes through hit-testing, recognisers and
/// the views' own touch methods. There is one finger.
namespace simulator {

enum class Direction { left, right, up, down };

/// A finger that is already down is lifted first.
void touchDown(UIWindow* window, CGPoint point);
/// Without a finger down, nothing.
void touchMove(CGPoint point);
/// Lifts the finger at the point; without a finger down, nothing.
void touchUp(CGPoint point);
/// Lifts the finger where it is.
void touchUp();
bool fingerIsDown();

/// Taps in quick succession, so that `times` of them count as one multiple tap.
void tap(UIWindow* window, CGPoint point, int times);

/// A quick stroke of 160 points that starts at the point.
void swipe(UIWindow* window, CGPoint point, Direction direction);

} // namespace simulator
