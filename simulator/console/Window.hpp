#pragma once

#include <memory>

#include "simulator/console/commands.hpp"

namespace simulator {

/// The phone's screen in a window on the desk: the mouse is the finger, and keys stand for what befalls a phone. A strip at
/// the foot names the most important ones; a sheet of help lists them all.
class Window {
public:
    /// Throws std::runtime_error where there is no display. The console must outlive it.
    explicit Window(Console& console);
    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;
    ~Window();

    /// Shows the screen and takes input until the window is closed or the console has quit.
    void run();

private:
    struct Parts;
    std::unique_ptr<Parts> parts_;
};

/// Whether there is a display to open a window on.
bool hasDisplay();

} // namespace simulator
