#pragma once

#include <string>

#include "platform/CoreGraphics/CGGeometry.hpp"

namespace simulator {

struct ScreenSize {
    /// In points.
    CGFloat width = 320;
    CGFloat height = 568;
    /// Pixels per point.
    double scale = 2;
};

/// A screen as a person writes it, "320x568@2" or "320x568". Throws std::invalid_argument, in words for the user, for what is
/// none.
ScreenSize parseScreenSize(const std::string& text);

} // namespace simulator
