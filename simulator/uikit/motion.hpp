#pragma once

class UIView;

/// What moves on by itself once the finger has let go. Its time is not the machine's: it passes frame by frame in a window, and
/// at once where a script is not to wait for it.
namespace simulator {

/// Moves a view on by so many seconds; gives whether there is more to come.
using Movement = bool (*)(UIView* view, double seconds);

/// The view is kept until the movement is over, and has one movement at a time.
void startMotion(UIView* view, Movement movement);

bool isInMotion();
void advanceMotion(double seconds);
/// Goes on, by frames of a sixtieth of a second, until all is at rest.
void finishMotion();

} // namespace simulator
