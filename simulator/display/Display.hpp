#pragma once

#include <cstdint>
#include <optional>

namespace simulator {

/// A picture in a window of the desk, with mouse and keys.
class Display {
public:
    enum class Happening { closed, uncovered, key, pressed, moved, released };

    struct Event {
        Happening what;
        /// The character that the key stands for.
        int character = 0;
        /// Where the mouse is, in the picture's pixels.
        int x = 0;
        int y = 0;
        /// When it happened, as time() tells it.
        std::uint32_t time = 0;
    };

    Display() = default;
    Display(const Display&) = delete;
    Display& operator=(const Display&) = delete;
    virtual ~Display() = default;

    /// What has happened and has not been given yet, the oldest first; none when that is all.
    virtual std::optional<Event> next() = 0;

    /// Waits until something happens, the descriptor is readable or the milliseconds are over; it may be earlier.
    virtual void wait(int descriptor, int milliseconds) = 0;

    /// Milliseconds; they begin anew after 49 days.
    virtual std::uint32_t time() const = 0;

    /// Shows the picture: rows of 0xAARRGGBB, which begin `stride` bytes from each other. Its size is that of the display.
    virtual void show(const unsigned char* pixels, int stride) = 0;
};

/// What the module `display.so` beside the program has under the name openDisplay: it opens a window for pictures of that size in
/// pixels. The window's library comes with the module, so that it is only loaded for a window. The caller owns it. Throws
/// std::runtime_error where there is no display.
using OpenDisplay = Display*(int width, int height);

} // namespace simulator
