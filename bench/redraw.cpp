#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "bench/support/BenchPhone.hpp"
#include "platform/UIKit/UIWindow.hpp"
#include "simulator/foundation/phone_root.hpp"
#include "simulator/graphics/Bitmap.hpp"
#include "simulator/graphics/blur.hpp"
#include "simulator/graphics/pictures.hpp"
#include "simulator/graphics/saturation.hpp"
#include "simulator/graphics/text.hpp"
#include "simulator/quartzcore/damage.hpp"
#include "simulator/springboard/SpringBoard.hpp"
#include "simulator/uikit/touch_input.hpp"

/// Draws the whole screen with the list's pane open, 640 by 1136 pixels, and beside it the bare operations that such a picture
/// is made of, called directly: the wallpaper's copy, one blur of what the panes show with its colours saturated, the texts and
/// the images. Prints the ratio of their processor times (median of rounds that alternate); ends with status 1 when it is
/// above 2.

using namespace simulator;

namespace {

struct Message {
    const char* bundleIdentifier;
    const char* title;
    const char* text;
};

constexpr Message messages[] = {
    {"com.apple.MobileSMS", "Mira", "Are you coming to the ferry at six?"},
    {"org.solvane.ferry", "Solvane Ferry", "The six o'clock boat leaves from pier 2."},
    {"com.apple.mobilemail", "Harbour Office", "Your season ticket"},
    {"org.solvane.larder", "Larder", "Milk is best used today."},
};

constexpr Colour white{1, 1, 1, 1};
const Typeface thin{"Inter Display", PANGO_WEIGHT_ULTRALIGHT};
const Typeface regular{"Nimbus Sans", PANGO_WEIGHT_NORMAL};
const Typeface bold{"Nimbus Sans", PANGO_WEIGHT_BOLD};

/// The picture's parts, loaded and scaled beforehand as the simulator has them too.
struct Parts {
    std::shared_ptr<Bitmap> wallpaper;
    std::shared_ptr<Bitmap> icon;
};

Parts loadParts()
{
    const auto drawing = pictureInFile(onThisMachine("/System/Library/CoreServices/SpringBoard.app/Wallpaper.png"), 1);
    Parts parts{Bitmap::make({320, 568}, 2, true), Bitmap::make({29, 29}, 2, false)};
    drawing->draw(parts.wallpaper->context().get(), {{0, 0}, {320, 568}});
    pictureInFile(onThisMachine("/Applications/Ferry.app/Icon@2x.png"), 2)->draw(parts.icon->context().get(), {{0, 0}, {29, 29}});
    return parts;
}

void drawBare(const Parts& parts)
{
    const auto picture = Bitmap::make({320, 568}, 2, true);
    const auto cairo = picture->context();
    parts.wallpaper->draw(cairo.get(), {{0, 0}, {320, 568}});
    drawText(cairo.get(),
             {.text = "8:30", .face = {"Inter Display", PANGO_WEIGHT_THIN}, .fontSize = 76, .alignment = PANGO_ALIGN_CENTER},
             CGRect::make(0, 404, 320, 84), white);
    drawText(cairo.get(), {.text = "Wednesday, 5 March", .face = {"Inter", PANGO_WEIGHT_LIGHT}, .alignment = PANGO_ALIGN_CENTER},
             CGRect::make(0, 488, 320, 24), white);

    const auto behind = Bitmap::make({320, 568}, 2, false);
    picture->draw(behind->context().get(), {{0, 0}, {320, 568}});
    blur(behind->surface(), 8);
    saturate(behind->surface(), 1.8);
    for (const CGRect& area : {CGRect::make(256, 77, 52, 150), CGRect::make(0, 130, 320, 438)}) {
        cairo_save(cairo.get());
        cairo_rectangle(cairo.get(), area.origin.x, area.origin.y, area.size.width, area.size.height);
        cairo_clip(cairo.get());
        behind->draw(cairo.get(), {{0, 0}, {320, 568}});
        cairo_set_source_rgba(cairo.get(), 0.06, 0.06, 0.06, 0.84);
        cairo_paint(cairo.get());
        cairo_restore(cairo.get());
    }

    double y = 150;
    for (const Message& message : messages) {
        parts.icon->draw(cairo.get(), CGRect::make(15, y + 11, 29, 29));
        drawText(cairo.get(), {.text = message.title, .face = bold, .fontSize = 15}, CGRect::make(56, y + 9, 249, 19), white);
        drawText(cairo.get(), {.text = message.text, .face = regular, .fontSize = 15}, CGRect::make(56, y + 28, 249, 36), white);
        y += 72;
    }
    drawText(cairo.get(), {.text = "Good morning, Pal.", .face = thin, .fontSize = 37.5, .alignment = PANGO_ALIGN_CENTER},
             CGRect::make(0, 27, 320, 100), white);
    drawText(cairo.get(), {.text = "It's 21° C and Cloudy.", .face = thin, .fontSize = 17.5, .alignment = PANGO_ALIGN_CENTER},
             CGRect::make(0, 79, 320, 50), white);
    for (const double x : {22.0, 266.0})
        parts.icon->draw(cairo.get(), CGRect::make(x, 87, 32, 32));
}

} // namespace

int main()
{
    const BenchPhone phone;
    for (const Message& message : messages)
        notify(message.bundleIdentifier, message.title, message.text);
    tap(springBoardWindow(), {282, 103}, 1);
    const Parts parts = loadParts();

    constexpr int rounds = 41;
    std::vector<double> simulated;
    std::vector<double> bare;
    std::vector<double> unchanged;
    for (int round = 0; round < rounds; ++round) {
        simulated.push_back(processorTimeOf([] {
            damageScreen();
            screenPicture();
        }));
        unchanged.push_back(processorTimeOf([] { screenPicture(); }));
        bare.push_back(processorTimeOf([&] { drawBare(parts); }));
    }
    constexpr double milliseconds = 1000;
    const double ratio = median(simulated) / median(bare);
    std::printf("| redraw with an open pane, 640 x 1136 pixels | %.2f ms | bare operations %.2f ms | ratio %.2f (at most 2) |\n",
                median(simulated) * milliseconds, median(bare) * milliseconds, ratio);
    std::printf("| the same screen, unchanged | %.4f ms | | not drawn again |\n", median(unchanged) * milliseconds);
    return ratio <= 2 ? 0 : 1;
}
