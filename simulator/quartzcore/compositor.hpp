#pragma once

#include "platform/QuartzCore/CALayer.hpp"
#include "simulator/graphics/cairo_pointers.hpp"

namespace simulator {

/// Draws a layer and all below it. The context's coordinates are those of the superlayer, in points.
void drawLayerTree(cairo_t* cairo, CALayer* layer);

} // namespace simulator
