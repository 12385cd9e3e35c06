#include "simulator/console/Window.hpp"

#include <SDL.h>
#include <algorithm>
#include <cstdlib>
#include <stdexcept>
#include <string>
#include <utility>

#include "platform/UIKit/UIScreen.hpp"
#include "platform/runtime/AutoreleasePool.hpp"
#include "simulator/console/Keys.hpp"
#include "simulator/console/MouseTimes.hpp"
#include "simulator/graphics/Bitmap.hpp"
#include "simulator/graphics/text.hpp"
#include "simulator/services/darwin_notifications.hpp"
#include "simulator/springboard/SpringBoard.hpp"
#include "simulator/uikit/motion.hpp"
#include "simulator/uikit/touch_input.hpp"

namespace simulator {

namespace {

template <class T, void (*Close)(T*)>
struct Closer {
    void operator()(T* object) const { Close(object); }
};

template <class T, void (*Close)(T*)>
using SdlPointer = std::unique_ptr<T, Closer<T, Close>>;

/// Starts SDL's video, which ends with the process. SDL wakes itself up by a message over a second connection to X; where that
/// arrives after the window has gone, SDL_Quit would find the complaint, and X's library end the process with status 1.
struct Video {
    Video()
    {
        if (SDL_Init(SDL_INIT_VIDEO) != 0)
            throw std::runtime_error(std::string("cannot open a window: ") + SDL_GetError());
    }
};

/// Tells how long it was from one time to the next, in milliseconds of SDL's: how long the finger rested, by the times of the
/// mouse's events, and how long a frame was to be seen.
class Stopwatch {
public:
    double secondsSinceLast(Uint32 time)
    {
        // The times begin anew after 49 days, and are never taken to go back.
        const auto passed = static_cast<Sint32>(time - std::exchange(last_, time));
        return std::max(passed, 0) / 1000.0;
    }

private:
    Uint32 last_ = 0;
};

constexpr CGFloat stripHeight = 26;
constexpr Colour stripColour{0.07, 0.07, 0.1, 1};
constexpr Colour stripTextColour{0.75, 0.75, 0.82, 1};

} // namespace

struct Window::Parts {
    explicit Parts(Console& usedConsole) : console(usedConsole), keys(usedConsole)
    {
        const CGRect bounds = UIScreen::mainScreen()->bounds();
        const double scale = UIScreen::mainScreen()->scale();
        canvas = Bitmap::make({bounds.size.width, bounds.size.height + stripHeight}, scale, true);
        const int width = cairo_image_surface_get_width(canvas->surface());
        const int height = cairo_image_surface_get_height(canvas->surface());
        const double zoom = zoomThatFits(width, height);
        SDL_SetHint(SDL_HINT_RENDER_SCALE_QUALITY, "linear");
        window.reset(SDL_CreateWindow("Solvane", SDL_WINDOWPOS_CENTERED, SDL_WINDOWPOS_CENTERED, static_cast<int>(width * zoom),
                                      static_cast<int>(height * zoom), SDL_WINDOW_RESIZABLE));
        renderer.reset(SDL_CreateRenderer(window.get(), -1, 0));
        if (renderer == nullptr)
            throw std::runtime_error(std::string("cannot open a window: ") + SDL_GetError());
        // Keeps the picture's proportions in a window of any size, and gives the mouse in the picture's pixels.
        SDL_RenderSetLogicalSize(renderer.get(), width, height);
        texture.reset(SDL_CreateTexture(renderer.get(), SDL_PIXELFORMAT_ARGB8888, SDL_TEXTUREACCESS_STREAMING, width, height));
    }

    static double zoomThatFits(int width, int height)
    {
        constexpr double share = 0.9;
        SDL_Rect desk;
        if (SDL_GetDisplayUsableBounds(0, &desk) != 0)
            return 1;
        return std::min({1.0, desk.w * share / width, desk.h * share / height});
    }

    void take(const SDL_Event& event)
    {
        switch (event.type) {
        case SDL_QUIT:
            isOpen = false;
            break;
        case SDL_WINDOWEVENT:
            needsDrawing = true;
            break;
        case SDL_KEYDOWN:
            needsDrawing |= keys.press(event.key.keysym.sym);
            break;
        case SDL_MOUSEBUTTONDOWN:
            if (event.button.button == SDL_BUTTON_LEFT)
                touchDown(springBoardWindow(), inPoints(event.button.x, event.button.y),
                          stopwatch.secondsSinceLast(event.common.timestamp));
            break;
        case SDL_MOUSEMOTION:
            if (fingerIsDown())
                touchMove(inPoints(event.motion.x, event.motion.y), stopwatch.secondsSinceLast(event.common.timestamp));
            break;
        case SDL_MOUSEBUTTONUP:
            if (event.button.button == SDL_BUTTON_LEFT)
                touchUp(inPoints(event.button.x, event.button.y), stopwatch.secondsSinceLast(event.common.timestamp));
            break;
        default:
            break;
        }
    }

    CGPoint inPoints(int x, int y) const
    {
        return {static_cast<CGFloat>(x / canvas->scale()), static_cast<CGFloat>(y / canvas->scale())};
    }

    void drawStrip(cairo_t* cairo) const
    {
        const double top = canvas->size().height - stripHeight;
        cairo_rectangle(cairo, 0, top, canvas->size().width, stripHeight);
        stripColour.applyTo(cairo);
        cairo_fill(cairo);
        const std::string text =
            keys.status().empty() ? "H help   N notification   C card   S screen   R respring" : keys.status();
        constexpr double margin = 8;
        drawText(cairo, {.text = text, .fontSize = 10.5, .alignment = PANGO_ALIGN_CENTER, .lineLimit = 1},
                 CGRect::make(margin, top + 6, canvas->size().width - 2 * margin, stripHeight), stripTextColour);
    }

    void drawHelp(cairo_t* cairo) const
    {
        constexpr double lineHeight = 24;
        constexpr double margin = 24;
        constexpr double keyWidth = 28;
        constexpr double fontSize = 12.5;
        const double height = lineHeight * static_cast<double>(Keys::all().size()) + 2 * margin;
        const double width = canvas->size().width - 2 * margin;
        const double top = (canvas->size().height - height) / 2;
        cairo_rectangle(cairo, margin, top, width, height);
        cairo_set_source_rgba(cairo, 0.05, 0.05, 0.09, 0.9);
        cairo_fill(cairo);
        double y = top + margin;
        for (const Keys::Key& key : Keys::all()) {
            drawText(cairo, {.text = std::string(1, key.letter), .face = {"Inter", PANGO_WEIGHT_BOLD}, .fontSize = fontSize},
                     CGRect::make(2 * margin, y, keyWidth, lineHeight), {1, 0.8, 0.45, 1});
            drawText(cairo, {.text = key.meaning, .fontSize = fontSize, .lineLimit = 1},
                     CGRect::make(2 * margin + keyWidth, y, width - keyWidth - 2 * margin, lineHeight), {1, 1, 1, 1});
            y += lineHeight;
        }
    }

    void draw()
    {
        const auto present = screenPicture();
        if (present == picture && !needsDrawing)
            return;
        picture = present;
        needsDrawing = false;
        {
            const auto cairo = canvas->context();
            picture->draw(cairo.get(), {{0, 0}, picture->size()});
            drawStrip(cairo.get());
            if (keys.showsHelp())
                drawHelp(cairo.get());
        }
        cairo_surface_t* const surface = canvas->surface();
        SDL_UpdateTexture(texture.get(), nullptr, cairo_image_surface_get_data(surface), cairo_image_surface_get_stride(surface));
        SDL_RenderClear(renderer.get());
        SDL_RenderCopy(renderer.get(), texture.get(), nullptr, nullptr);
        SDL_RenderPresent(renderer.get());
    }

    void runOnce()
    {
        const AutoreleasePool pool;
        constexpr int patience = 30;
        constexpr int frame = 16;
        SDL_Event event;
        int hasCome = SDL_WaitEventTimeout(&event, isInMotion() ? frame : patience);
        advanceMotion(frames.secondsSinceLast(SDL_GetTicks()));
        for (; hasCome != 0; hasCome = SDL_PollEvent(&event))
            take(event);
        deliverDarwinNotifications();
        draw();
    }

    Console& console;
    Video video;
    MouseTimes mouseTimes;
    SdlPointer<SDL_Window, SDL_DestroyWindow> window;
    SdlPointer<SDL_Renderer, SDL_DestroyRenderer> renderer;
    SdlPointer<SDL_Texture, SDL_DestroyTexture> texture;
    std::shared_ptr<Bitmap> canvas;
    std::shared_ptr<Bitmap> picture;
    Stopwatch stopwatch;
    Stopwatch frames;
    Keys keys;
    bool isOpen = true;
    bool needsDrawing = true;
};

Window::Window(Console& console) : parts_(std::make_unique<Parts>(console))
{
}

Window::~Window() = default;

void Window::run()
{
    while (parts_->isOpen && !parts_->keys.wantsToClose() && !parts_->console.hasQuit)
        parts_->runOnce();
}

bool hasDisplay()
{
    const auto isSet = [](const char* variable) {
        const char* const value = std::getenv(variable);
        return value != nullptr && *value != '\0';
    };
    return isSet("DISPLAY") || isSet("WAYLAND_DISPLAY");
}

} // namespace simulator
