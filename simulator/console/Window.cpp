#include "simulator/console/Window.hpp"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <dlfcn.h>
#include <filesystem>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>

#include "platform/UIKit/UIScreen.hpp"
#include "platform/runtime/AutoreleasePool.hpp"
#include "simulator/console/Keys.hpp"
#include "simulator/display/Display.hpp"
#include "simulator/graphics/Bitmap.hpp"
#include "simulator/graphics/text.hpp"
#include "simulator/services/darwin_notifications.hpp"
#include "simulator/springboard/SpringBoard.hpp"
#include "simulator/uikit/motion.hpp"
#include "simulator/uikit/touch_input.hpp"

namespace simulator {

namespace {

std::unique_ptr<Display> openDisplay(int width, int height)
{
    // By its whole path: the sanitizers' dlopen does not look beside the program.
    const auto file = std::filesystem::read_symlink("/proc/self/exe").replace_filename("display.so");
    void* const module = dlopen(file.c_str(), RTLD_NOW);
    void* const open = module == nullptr ? nullptr : dlsym(module, "openDisplay");
    if (open == nullptr)
        throw std::runtime_error(std::string("cannot open a window: ") + dlerror());
    return std::unique_ptr<Display>(reinterpret_cast<OpenDisplay*>(open)(width, height));
}

/// Tells how long it was from one time to the next, in milliseconds of the display's: how long the finger rested, by the times of
/// the mouse's events, and how long a frame was to be seen.
class Stopwatch {
public:
    double secondsSinceLast(std::uint32_t time)
    {
        // The times begin anew after 49 days, and are never taken to go back.
        const auto passed = static_cast<std::int32_t>(time - std::exchange(last_, time));
        return std::max(passed, 0) / 1000.0;
    }

private:
    std::uint32_t last_ = 0;
};

/// In milliseconds: when the phone's clock shows another one.
int untilTheNextMinute()
{
    using namespace std::chrono;
    const auto now = system_clock::now();
    return static_cast<int>(ceil<milliseconds>(ceil<minutes>(now) - now).count());
}

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
        display =
            openDisplay(cairo_image_surface_get_width(canvas->surface()), cairo_image_surface_get_height(canvas->surface()));
    }

    void take(const Display::Event& event)
    {
        const CGPoint finger = inPoints(event.x, event.y);
        switch (event.what) {
        case Display::Happening::closed:
            isOpen = false;
            break;
        case Display::Happening::uncovered:
            needsDrawing = true;
            break;
        case Display::Happening::key:
            needsDrawing |= keys.press(event.character);
            break;
        case Display::Happening::pressed:
            touchDown(springBoardWindow(), finger, stopwatch.secondsSinceLast(event.time));
            break;
        case Display::Happening::moved:
            if (fingerIsDown())
                touchMove(finger, stopwatch.secondsSinceLast(event.time));
            break;
        case Display::Happening::released:
            touchUp(finger, stopwatch.secondsSinceLast(event.time));
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
        display->show(cairo_image_surface_get_data(canvas->surface()), cairo_image_surface_get_stride(canvas->surface()));
    }

    void runOnce()
    {
        const AutoreleasePool pool;
        constexpr int frame = 16;
        std::optional<Display::Event> event = display->next();
        if (!event) {
            display->wait(darwinNotificationDescriptor(), isInMotion() ? frame : untilTheNextMinute());
            event = display->next();
        }
        advanceMotion(frames.secondsSinceLast(display->time()));
        for (; event; event = display->next())
            take(*event);
        deliverDarwinNotifications();
        draw();
    }

    Console& console;
    std::unique_ptr<Display> display;
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
