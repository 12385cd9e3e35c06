#include <cstdio>
#include <string>

#include <pango/pangocairo.h>

#include "simulator/graphics/png.hpp"

/// Draws the lock screen's first picture by Cairo and Pango alone and writes it as SpringBoard does: the yardstick for the road
/// from the start to a picture. `bare_picture PHONE-TREE PICTURE`.

namespace {

using namespace simulator;

constexpr int width = 640;
constexpr int height = 1136;
constexpr double scale = 2;

struct Text {
    const char* text;
    const char* font;
    double size;
    double top;
};

constexpr Text texts[] = {
    {"8:30", "Inter Display Thin", 76, 404},
    {"Wednesday, 5 March", "Inter Light", 17, 488},
    {"Good morning, Pal.", "Inter Display Ultra-Light", 37.5, 27},
    {"It's 21° C and Cloudy.", "Inter Display Ultra-Light", 17.5, 79},
};

void draw(cairo_t* cairo, PangoLayout* layout, const Text& text)
{
    PangoFontDescription* const font = pango_font_description_from_string(text.font);
    pango_font_description_set_absolute_size(font, text.size * PANGO_SCALE);
    pango_layout_set_font_description(layout, font);
    pango_font_description_free(font);
    pango_layout_set_text(layout, text.text, -1);
    cairo_set_source_rgb(cairo, 1, 1, 1);
    cairo_move_to(cairo, 0, text.top);
    pango_cairo_show_layout(cairo, layout);
}

void drawPicture(cairo_t* cairo, const std::string& folder, const char* file, double x, double y, double factor)
{
    const CairoPointer<cairo_surface_t> picture(cairo_image_surface_create_from_png((folder + file).c_str()));
    cairo_save(cairo);
    cairo_translate(cairo, x, y);
    cairo_scale(cairo, factor, factor);
    cairo_set_source_surface(cairo, picture.get(), 0, 0);
    cairo_paint(cairo);
    cairo_restore(cairo);
}

} // namespace

int main(int count, char** arguments)
{
    if (count != 3)
        return 2;
    const std::string tree = arguments[1];
    const CairoPointer<cairo_surface_t> screen(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width, height));
    const CairoPointer<cairo_t> cairo(cairo_create(screen.get()));
    cairo_scale(cairo.get(), scale, scale);
    drawPicture(cairo.get(), tree, "/System/Library/CoreServices/SpringBoard.app/Wallpaper.png", 0, 0, 1 / scale);
    const CairoPointer<PangoLayout> layout(pango_cairo_create_layout(cairo.get()));
    pango_layout_set_width(layout.get(), static_cast<int>(width / scale) * PANGO_SCALE);
    pango_layout_set_alignment(layout.get(), PANGO_ALIGN_CENTER);
    for (const Text& text : texts)
        draw(cairo.get(), layout.get(), text);
    for (const char* icon : {"Calendar", "Notification"})
        drawPicture(cairo.get(), tree, (std::string("/Library/Application Support/Solvane/") + icon + "@2x.png").c_str(), 22, 87,
                    1 / scale);

    std::FILE* const file = std::fopen(arguments[2], "wb");
    const std::string bytes = encodePNG(screen.get());
    return file != nullptr && std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size() && std::fclose(file) == 0 ? 0 : 1;
}
