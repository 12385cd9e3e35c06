#pragma once

#include "platform/CoreGraphics/CGPath.hpp"
#include "platform/runtime/Owned.hpp"
#include "simulator/graphics/Outline.hpp"

namespace simulator {

/// A path of Core Graphics is an object here.
Owned<CGPath> makePath(Outline outline);

/// Nil gives an empty outline.
const Outline& outlineOf(CGPathRef path);

void registerCGPath();

} // namespace simulator
