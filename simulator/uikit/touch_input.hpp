#pragma once

#include "platform/CoreGraphics/CGGeometry.hpp"

class UIWindow;

/// A finger on the screen. Points are in the window's coordinates; every touch goes through hit-testing, recognisers and
/// the views' own touch methods. There is one finger.
namespace simulator {

enum class Direction { left, right, up, down };

/// How long the finger rests before it does something, in seconds: long enough for two gestures not to count as one, and
/// short enough for the steps of one.
inline constexpr double pauseBetweenGestures = 1.0;
inline constexpr double pauseInGesture = 0.02;
/// How long a finger moves that is in no hurry and does not linger, in seconds.
inline constexpr double strokeTime = 0.2;

/// A finger that is already down is lifted first. The pause tells a double tap from two single ones, a stroke from a drag.
void touchDown(UIWindow* window, CGPoint point, double pause = pauseBetweenGestures);
/// Without a finger down, nothing.
void touchMove(CGPoint point, double pause = pauseInGesture);
/// Straight to the point, in steps over so many seconds; without a finger down, nothing.
void touchMoveSteadily(CGPoint point, double seconds = strokeTime);
/// Lifts the finger at the point; without a finger down, nothing.
void touchUp(CGPoint point, double pause = pauseInGesture);
/// Lifts the finger where it is.
void touchUp();
bool fingerIsDown();
/// The finger stays where it is, on the screen or off it.
void passFingerTime(double seconds);

/// Taps in quick succession, so that `times` of them count as one multiple tap.
void tap(UIWindow* window, CGPoint point, int times);

/// A quick stroke of 160 points that starts at the point.
void swipe(UIWindow* window, CGPoint point, Direction direction);

} // namespace simulator
