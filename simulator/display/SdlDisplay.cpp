#include <SDL.h>
#include <SDL_syswm.h>
#include <algorithm>
#include <array>
#include <memory>
#include <poll.h>
#include <stdexcept>
#include <string>

#include "simulator/display/Display.hpp"
#include "simulator/display/MouseTimes.hpp"

/// The module: a window by SDL.

namespace simulator {

namespace {

template <class T, void (*Close)(T*)>
struct Closer {
    void operator()(T* object) const { Close(object); }
};

template <class T, void (*Close)(T*)>
using SdlPointer = std::unique_ptr<T, Closer<T, Close>>;

[[noreturn]] void fail()
{
    throw std::runtime_error(std::string("cannot open a window: ") + SDL_GetError());
}

/// Starts SDL's video, which ends with the process. SDL wakes itself up by a message over a second connection to X; where that
/// arrives after the window has gone, SDL_Quit would find the complaint, and X's library end the process with status 1.
struct Video {
    Video()
    {
        if (SDL_Init(SDL_INIT_VIDEO) != 0)
            fail();
    }
};

class SdlDisplay : public Display {
public:
    SdlDisplay(int width, int height)
    {
        const double zoom = zoomThatFits(width, height);
        SDL_SetHint(SDL_HINT_RENDER_SCALE_QUALITY, "linear");
        window_.reset(SDL_CreateWindow("Solvane", SDL_WINDOWPOS_CENTERED, SDL_WINDOWPOS_CENTERED, static_cast<int>(width * zoom),
                                       static_cast<int>(height * zoom), SDL_WINDOW_RESIZABLE));
        renderer_.reset(SDL_CreateRenderer(window_.get(), -1, 0));
        if (renderer_ == nullptr)
            fail();
        // Keeps the picture's proportions in a window of any size, and gives the mouse in the picture's pixels.
        SDL_RenderSetLogicalSize(renderer_.get(), width, height);
        texture_.reset(SDL_CreateTexture(renderer_.get(), SDL_PIXELFORMAT_ARGB8888, SDL_TEXTUREACCESS_STREAMING, width, height));
    }

    std::optional<Event> next() override
    {
        SDL_Event event;
        while (SDL_PollEvent(&event) != 0) {
            if (const auto translated = translate(event))
                return translated;
        }
        return std::nullopt;
    }

    void wait(int descriptor, int milliseconds) override
    {
        const int connection = connectionToX();
        if (connection < 0) {
            // Nothing tells when something happens on such a display, so it is asked now and then.
            constexpr int patience = 30;
            SDL_WaitEventTimeout(nullptr, std::min(milliseconds, patience));
            return;
        }
        std::array<pollfd, 2> waited{pollfd{connection, POLLIN, 0}, pollfd{descriptor, POLLIN, 0}};
        ::poll(waited.data(), waited.size(), milliseconds);
    }

    std::uint32_t time() const override { return SDL_GetTicks(); }

    void show(const unsigned char* pixels, int stride) override
    {
        SDL_UpdateTexture(texture_.get(), nullptr, pixels, stride);
        SDL_RenderClear(renderer_.get());
        SDL_RenderCopy(renderer_.get(), texture_.get(), nullptr, nullptr);
        SDL_RenderPresent(renderer_.get());
    }

private:
    static double zoomThatFits(int width, int height)
    {
        constexpr double share = 0.9;
        SDL_Rect desk;
        if (SDL_GetDisplayUsableBounds(0, &desk) != 0)
            return 1;
        return std::min({1.0, desk.w * share / width, desk.h * share / height});
    }

    static std::optional<Event> translate(const SDL_Event& event)
    {
        switch (event.type) {
        case SDL_QUIT:
            return Event{Happening::closed};
        case SDL_WINDOWEVENT:
            return Event{Happening::uncovered};
        case SDL_KEYDOWN:
            return Event{.what = Happening::key, .character = event.key.keysym.sym};
        case SDL_MOUSEBUTTONDOWN:
        case SDL_MOUSEBUTTONUP:
            if (event.button.button == SDL_BUTTON_LEFT)
                return Event{.what = event.type == SDL_MOUSEBUTTONDOWN ? Happening::pressed : Happening::released,
                             .x = event.button.x,
                             .y = event.button.y,
                             .time = event.common.timestamp};
            return std::nullopt;
        case SDL_MOUSEMOTION:
            return Event{.what = Happening::moved, .x = event.motion.x, .y = event.motion.y, .time = event.common.timestamp};
        default:
            return std::nullopt;
        }
    }

    /// The descriptor that becomes readable when something happens; negative when the display is none of X.
    int connectionToX() const
    {
        SDL_SysWMinfo info;
        SDL_VERSION(&info.version);
        if (SDL_GetWindowWMInfo(window_.get(), &info) != SDL_TRUE || info.subsystem != SDL_SYSWM_X11)
            return -1;
        return ConnectionNumber(info.info.x11.display);
    }

    Video video_;
    MouseTimes mouseTimes_;
    SdlPointer<SDL_Window, SDL_DestroyWindow> window_;
    SdlPointer<SDL_Renderer, SDL_DestroyRenderer> renderer_;
    SdlPointer<SDL_Texture, SDL_DestroyTexture> texture_;
};

} // namespace

} // namespace simulator

extern "C" [[gnu::visibility("default")]] simulator::OpenDisplay openDisplay;

simulator::Display* openDisplay(int width, int height)
{
    return std::make_unique<simulator::SdlDisplay>(width, height).release();
}
