#pragma once

#include <cstdint>
#include <optional>

union SDL_Event;

namespace simulator {

/// Stamps the mouse's events with the times at which they were made, for as long as it lives; SDL must be running. SDL itself
/// stamps them when it takes them from the display, which is late while the phone or the machine is busy. The time of an event
/// stays `common.timestamp`, milliseconds since SDL's start. A display other than X does not tell, and SDL's stamp stays.
class MouseTimes {
public:
    MouseTimes();
    MouseTimes(const MouseTimes&) = delete;
    MouseTimes& operator=(const MouseTimes&) = delete;
    ~MouseTimes();

private:
    static int stamp(void* self, SDL_Event* event);

    /// When X says that the event which SDL is translating was made, by X's clock; empty when it is not the mouse's.
    std::optional<std::uint32_t> timeOfX_;
    /// How far SDL's clock is ahead of X's.
    std::optional<std::uint32_t> lead_;
};

} // namespace simulator
