#pragma once

namespace simulator {

/// Notes that something on the screen has changed, so that it must be drawn again.
void damageScreen();

/// Whether anything has changed since the last call.
bool takeScreenDamage();

} // namespace simulator
