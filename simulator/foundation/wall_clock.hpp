#pragma once

#include <cstdint>
#include <functional>

namespace simulator {

/// How far a zone's clocks are ahead of universal time at a moment, in seconds. Moments are in seconds since
/// 1970-01-01T00:00:00Z.
using OffsetAt = std::function<std::int64_t(std::int64_t moment)>;

/// The moments at which a zone's clocks show a time, which is in seconds since they showed 1970-01-01T00:00:00: two of them
/// when the clocks are set back over it.
struct WallClockMoments {
    /// By the offset before a clock change, where there is one nearby, and by the one after it.
    std::int64_t before;
    std::int64_t after;
    /// Whether the clocks do show the time at that moment. They show a time that they skip at neither.
    bool isShownBefore;
    bool isShownAfter;

    /// The first of the moments; a skipped time is read by the offset before the change (RFC 5545, 3.3.5).
    std::int64_t first() const { return isShownBefore || !isShownAfter ? before : after; }
    /// The last of them; a skipped time as above.
    std::int64_t last() const { return isShownAfter ? after : before; }
};

WallClockMoments momentsOfWallClock(std::int64_t shown, const OffsetAt& offsetAt);

} // namespace simulator
