#pragma once

#include <cairo.h>

namespace simulator {

/// Blurs an image surface (ARGB32 or RGB24) in place by a Gaussian of that radius in pixels, close to it by three boxes.
/// Beyond its edges the picture goes on as at them.
void blur(cairo_surface_t* image, double radius);

/// How many pixels away a pixel may lie and still show in a blurred one.
int blurReach(double radius);

} // namespace simulator
