#pragma once

#include "platform/CoreGraphics/CGColor.hpp"
#include "platform/runtime/Owned.hpp"
#include "simulator/graphics/Colour.hpp"

namespace simulator {

/// A colour of Core Graphics is an object here.
Owned<CGColor> makeColor(const Colour& colour);

/// Nil gives a clear colour.
Colour colourOf(CGColorRef color);

void registerCGColor();

} // namespace simulator
