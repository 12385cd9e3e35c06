#include "simulator/console/Window.hpp"

#include <SDL.h>
#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <span>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "platform/Foundation/NSDate.hpp"
#include "platform/UIKit/UIScreen.hpp"
#include "platform/runtime/AutoreleasePool.hpp"
#include "simulator/console/MouseTimes.hpp"
#include "simulator/console/raised_exception.hpp"
#include "simulator/foundation/surroundings.hpp"
#include "simulator/graphics/Bitmap.hpp"
#include "simulator/graphics/text.hpp"
#include "simulator/services/darwin_notifications.hpp"
#include "simulator/springboard/SpringBoard.hpp"
#include "simulator/uikit/touch_input.hpp"

namespace simulator {

namespace {

using CommandLine = std::vector<std::string>;

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

/// The next of a list of examples, around and around.
template <class T, std::size_t Count>
const T& next(const T (&examples)[Count], std::size_t& index)
{
    return examples[index++ % Count];
}

struct Notification {
    const char* bundleIdentifier;
    const char* title;
    const char* message;
};

constexpr Notification notifications[] = {
    {"com.apple.MobileSMS", "Ana", "Are you coming to the ferry at six?"},
    {"org.solvane.ferry", "Solvane Ferry", "The six o'clock boat leaves from pier 2."},
    {"com.apple.mobilemail", "Harbour Office", "Your season ticket"},
    {"org.solvane.larder", "Larder", "Milk is best used today."},
    {"com.apple.mobilecal", "Calendar", "Dinner with Mira at eight"},
    {"com.apple.mobilephone", "Missed call", "Mira"},
    {"com.apple.Music", "Music", "A new record by the Harbour Choir"},
};

constexpr const char* names[] = {"Eve", "Maximiliane-Alexandra", "Bo", "Ana"};

struct Weather {
    const char* temperature;
    const char* conditionCode;
};

constexpr Weather weathers[] = {{"-3.5", "16"}, {"31", "32"}, {"12", "11"}, {"21", "26"}};

/// Tells the finger how long it rested, by the times of the mouse's events in milliseconds.
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
    struct Key {
        SDL_Keycode code;
        const char* name;
        const char* meaning;
        void (Parts::*answer)();
    };
    static std::span<const Key> allKeys();

    explicit Parts(Console& usedConsole) : console(usedConsole)
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

    void run(const CommandLine& words)
    {
        status.clear();
        forgetRaisedException();
        try {
            runCommand(console, words);
        } catch (const std::exception& problem) {
            status = problem.what();
        } catch (...) {
            status = describeRaisedException();
        }
        needsDrawing = true;
    }

    void notifyNext()
    {
        const Notification& example = next(notifications, notificationIndex);
        run({"notify", example.bundleIdentifier, example.title, example.message});
    }
    void notifyAgain()
    {
        const std::size_t last = notificationIndex == 0 ? 0 : notificationIndex - 1;
        const Notification& example = notifications[last % std::size(notifications)];
        run({"notify", example.bundleIdentifier, example.title, example.message});
    }
    void addCard() { run({"card", "boarding-pass", "Boarding pass, pier 2"}); }
    void addAlert() { run({"alert", "Low battery", "10% of the battery is left."}); }
    void clear() { run({"clear"}); }
    void switchScreen()
    {
        screenIsOff = !screenIsOff;
        run({"screen", screenIsOff ? "off" : "on"});
    }
    void goOnThreeHours()
    {
        constexpr double threeHours = 3 * 3600;
        surroundings().frozenClock = NSDate::date()->timeIntervalSince1970() + threeHours;
        relayOut();
    }
    void changeWeather()
    {
        const Weather& example = next(weathers, weatherIndex);
        run({"weather", example.temperature, example.conditionCode});
        relayOut();
    }
    void changeUnits()
    {
        run({"units", surroundings().showsCelsius ? "fahrenheit" : "celsius"});
        relayOut();
    }
    void changeName()
    {
        const char* const name = next(names, nameIndex);
        run({"name", name});
        run({"post", "loadSolvaneS"});
        if (status.empty())
            status = std::string("The name is ") + name + " now: R shows it";
    }
    void respring() { run({"post", "RespringSV"}); }
    void lock() { run({"lock"}); }
    void takePicture()
    {
        std::string file;
        int number = 1;
        do {
            file = "lockscreen-" + std::to_string(number++) + ".png";
        } while (std::filesystem::exists(file));
        run({"screenshot", file});
        if (status.empty())
            status = "The picture is in " + file;
    }
    void toggleHelp()
    {
        showsHelp = !showsHelp;
        needsDrawing = true;
    }
    void close() { isOpen = false; }

    /// The panel reads the time and the weather when it is laid out.
    void relayOut() { run({"layout"}); }

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
            press(event.key.keysym.sym);
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

    void press(SDL_Keycode code)
    {
        for (const Key& key : allKeys()) {
            if (key.code == code)
                (this->*key.answer)();
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
        const std::string text = status.empty() ? "H help   N notification   C card   S screen   R respring" : status;
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
        const double height = lineHeight * static_cast<double>(allKeys().size()) + 2 * margin;
        const double width = canvas->size().width - 2 * margin;
        const double top = (canvas->size().height - height) / 2;
        cairo_rectangle(cairo, margin, top, width, height);
        cairo_set_source_rgba(cairo, 0.05, 0.05, 0.09, 0.9);
        cairo_fill(cairo);
        double y = top + margin;
        for (const Key& key : allKeys()) {
            drawText(cairo, {.text = key.name, .face = {"Inter", PANGO_WEIGHT_BOLD}, .fontSize = fontSize},
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
            if (showsHelp)
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
        SDL_Event event;
        for (int hasCome = SDL_WaitEventTimeout(&event, patience); hasCome != 0; hasCome = SDL_PollEvent(&event))
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
    std::string status;
    bool isOpen = true;
    bool needsDrawing = true;
    bool showsHelp = false;
    bool screenIsOff = false;
    std::size_t notificationIndex = 0;
    std::size_t weatherIndex = 0;
    std::size_t nameIndex = 0;
};

std::span<const Window::Parts::Key> Window::Parts::allKeys()
{
    static constexpr Key keys[] = {
        {SDLK_n, "N", "a notification, next application", &Parts::notifyNext},
        {SDLK_m, "M", "one more of that application", &Parts::notifyAgain},
        {SDLK_c, "C", "a card", &Parts::addCard},
        {SDLK_a, "A", "a system alert", &Parts::addAlert},
        {SDLK_x, "X", "clear the list", &Parts::clear},
        {SDLK_s, "S", "switch the screen off or on", &Parts::switchScreen},
        {SDLK_t, "T", "three hours later", &Parts::goOnThreeHours},
        {SDLK_w, "W", "other weather", &Parts::changeWeather},
        {SDLK_u, "U", "Celsius or Fahrenheit", &Parts::changeUnits},
        {SDLK_e, "E", "another name in the settings", &Parts::changeName},
        {SDLK_r, "R", "respring", &Parts::respring},
        {SDLK_l, "L", "a new lock screen", &Parts::lock},
        {SDLK_p, "P", "a picture of the screen", &Parts::takePicture},
        {SDLK_h, "H", "this help", &Parts::toggleHelp},
        {SDLK_q, "Q", "close the window", &Parts::close},
    };
    return keys;
}

Window::Window(Console& console) : parts_(std::make_unique<Parts>(console))
{
}

Window::~Window() = default;

void Window::run()
{
    while (parts_->isOpen && !parts_->console.hasQuit)
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
