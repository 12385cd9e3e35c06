#pragma once

#include "platform/CoreGraphics/CGGeometry.hpp"
#include "simulator/console/inspector.hpp"

/// Numbers and geometry as JSON.
namespace simulator {

/// A whole number has no fraction; what is no number at all is null.
Json number(double value);

Json point(CGPoint value);
Json size(CGSize value);
Json rectangle(CGRect value);

} // namespace simulator
