#include "simulator/foundation/wall_clock.hpp"

namespace simulator {

WallClockMoments momentsOfWallClock(std::int64_t shown, const OffsetAt& offsetAt)
{
    // No zone is a day away from universal time, so the moment lies between these two.
    constexpr std::int64_t day = 86400;
    const std::int64_t before = shown - offsetAt(shown - day);
    const std::int64_t after = shown - offsetAt(shown + day);
    return {
        .before = before,
        .after = after,
        .isShownBefore = before + offsetAt(before) == shown,
        .isShownAfter = after + offsetAt(after) == shown,
    };
}

} // namespace simulator
