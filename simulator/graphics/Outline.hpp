#pragma once

#include <array>
#include <vector>

#include <cairo.h>

#include "platform/CoreGraphics/CGGeometry.hpp"

namespace simulator {

/// A path, kept apart from any drawing context.
class Outline {
public:
    void moveTo(CGPoint point) { segments_.push_back({Kind::move, {point}}); }
    void lineTo(CGPoint point) { segments_.push_back({Kind::line, {point}}); }
    void curveTo(CGPoint control1, CGPoint control2, CGPoint end)
    {
        segments_.push_back({Kind::curve, {control1, control2, end}});
    }
    void close() { segments_.push_back({Kind::close, {}}); }

    void addTo(cairo_t* cairo) const;

private:
    enum class Kind { move, line, curve, close };
    struct Segment {
        Kind kind;
        std::array<CGPoint, 3> points;
    };
    std::vector<Segment> segments_;
};

} // namespace simulator
