#pragma once

#include <algorithm>

/// How the contents of a scroll view go along one axis. Offsets and lengths are in points, times in seconds.
namespace simulator {

/// The offsets that show no more than the insets beyond the contents.
struct OffsetRange {
    double least;
    double most;

    double nearest(double offset) const { return std::clamp(offset, least, most); }
};

/// Where contents stand that a finger has drawn to an offset: beyond the range they follow the less, the farther they are, and
/// never by as much as `length`, the view's.
double rubberBanded(double drawn, OffsetRange range, double length);
/// Where the finger has drawn contents that stand at an offset.
double drawnTo(double offset, OffsetRange range, double length);
/// How fast contents that stand at an offset follow the finger: 1 within the range.
double followingSpeed(double offset, OffsetRange range, double length);

/// Contents that a finger has let go. Within their range they slow down; from beyond it a spring draws them back. The way is the
/// same in whatever steps of time it is gone.
struct ScrollGlide {
    struct Manner {
        /// How much of the speed is left after a millisecond, from 0 to below 1.
        double decelerationRate;
        /// Whether contents go beyond their range.
        bool bounces;
    };

    double offset = 0;
    /// In points a second.
    double velocity = 0;

    /// Goes on for so many seconds.
    void advance(double seconds, OffsetRange range, Manner manner);
    bool isAtRest(OffsetRange range) const;
};

} // namespace simulator
