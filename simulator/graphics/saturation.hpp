#pragma once

#include <cairo.h>

namespace simulator {

/// Moves every colour of an image surface (ARGB32), in place, that many times as far from the grey of its luminance as it was:
/// 1 leaves it as it is, 0 makes it grey; 4 at the most. A component that would leave its range ends there.
void saturate(cairo_surface_t* image, double factor);

} // namespace simulator
