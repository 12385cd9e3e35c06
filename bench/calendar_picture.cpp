#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include <pango/pangocairo.h>

#include "bench/support/BenchPhone.hpp"
#include "platform/UIKit/UIView.hpp"
#include "simulator/graphics/Bitmap.hpp"
#include "simulator/quartzcore/compositor.hpp"

/// Draws the layers of a month, 640 by 640 pixels, and beside it the same rectangles, gradients, borders and texts by Cairo
/// and Pango directly; both pictures must be the same to the pixel. Prints the ratio of their processor times (median of
/// rounds that alternate); ends with status 1 when it is above 2.

namespace {

constexpr double side = 320;
constexpr double scale = 2;

struct Paint {
    double red, green, blue, alpha;

    static constexpr Paint white(double white, double alpha) { return {white, white, white, alpha}; }
    void applyTo(cairo_t* cairo) const { cairo_set_source_rgba(cairo, red, green, blue, alpha); }
};

/// March 2014, with its 5th as today, drawn by hand.
class DirectMonth {
public:
    DirectMonth() : context_(pango_font_map_create_context(pango_cairo_font_map_get_default()))
    {
        cairo_font_options_t* const options = cairo_font_options_create();
        cairo_font_options_set_antialias(options, CAIRO_ANTIALIAS_GRAY);
        cairo_font_options_set_hint_style(options, CAIRO_HINT_STYLE_NONE);
        cairo_font_options_set_hint_metrics(options, CAIRO_HINT_METRICS_OFF);
        pango_cairo_context_set_font_options(context_, options);
        cairo_font_options_destroy(options);
        pango_context_set_round_glyph_positions(context_, FALSE);
        layout_ = pango_layout_new(context_);
        pango_layout_set_alignment(layout_, PANGO_ALIGN_CENTER);
        pango_layout_set_width(layout_, 45 * PANGO_SCALE);
        plain_ = fontWithWeight(PANGO_WEIGHT_NORMAL);
        bold_ = fontWithWeight(PANGO_WEIGHT_BOLD);
    }

    void draw(cairo_t* cairo) const
    {
        static constexpr const char* weekdays[] = {"Mon", "Tue", "Wed", "Thu", "Fri", "Sat", "Sun"};
        for (int i = 0; i < 7; ++i)
            drawText(cairo, weekdays[i], bold_, Paint::white(0.5, 1), i * 44, 45, 22);
        constexpr int leadingDays = 5;
        constexpr int days = 31;
        constexpr int daysBefore = 28;
        for (int i = 0; i < 42; ++i) {
            const int day = i - leadingDays + 1;
            const int column = i % 7;
            const int row = i / 7;
            if (day < 1)
                drawCell(cairo, column * 44, 67 + row * 44, day + daysBefore, true);
            else if (day > days)
                drawCell(cairo, column * 44, 67 + row * 44, day - days, true);
            else
                drawCell(cairo, column * 44, 67 + row * 44, day, false);
        }
    }

private:
    struct Style {
        Paint title, top, bottom, border;
        PangoFontDescription* font;
    };

    static PangoFontDescription* fontWithWeight(PangoWeight weight)
    {
        PangoFontDescription* const font = pango_font_description_new();
        pango_font_description_set_family(font, "DejaVu Sans");
        pango_font_description_set_weight(font, weight);
        pango_font_description_set_absolute_size(font, 12 * PANGO_SCALE);
        return font;
    }

    Style styleOf(int day, bool isGrey) const
    {
        constexpr int today = 5;
        if (isGrey)
            return {Paint::white(0.7, 0.8), Paint::white(0.2, 0.1), Paint::white(0.2, 0.1), Paint::white(0.6, 0.1), plain_};
        if (day == today)
            return {Paint::white(0.9, 1), {0, 0, 0.6, 0.5}, {0.1, 0.1, 0.8, 0.5}, Paint::white(0.1, 0.2), bold_};
        return {Paint::white(0.3, 0.7), Paint::white(0.8, 0.8), Paint::white(0.8, 0.8), Paint::white(0.1, 0.2), plain_};
    }

    void drawCell(cairo_t* cairo, double x, double y, int day, bool isGrey) const
    {
        constexpr double cell = 45;
        const Style style = styleOf(day, isGrey);
        cairo_pattern_t* const gradient = cairo_pattern_create_linear(0, y, 0, y + cell);
        cairo_pattern_add_color_stop_rgba(gradient, 0, style.top.red, style.top.green, style.top.blue, style.top.alpha);
        cairo_pattern_add_color_stop_rgba(gradient, 1, style.bottom.red, style.bottom.green, style.bottom.blue,
                                          style.bottom.alpha);
        cairo_set_source(cairo, gradient);
        cairo_rectangle(cairo, x, y, cell, cell);
        cairo_fill(cairo);
        cairo_pattern_destroy(gradient);
        drawText(cairo, std::to_string(day).c_str(), style.font, style.title, x, y, cell);
        cairo_rectangle(cairo, x + 0.5, y + 0.5, cell - 1, cell - 1);
        cairo_set_line_width(cairo, 1);
        style.border.applyTo(cairo);
        cairo_stroke(cairo);
    }

    void drawText(cairo_t* cairo, const char* text, PangoFontDescription* font, const Paint& paint, double x, double y,
                  double height) const
    {
        pango_layout_set_font_description(layout_, font);
        pango_layout_set_text(layout_, text, -1);
        PangoRectangle extent;
        pango_layout_get_extents(layout_, nullptr, &extent);
        paint.applyTo(cairo);
        cairo_move_to(cairo, x, y + (height - static_cast<double>(extent.height) / PANGO_SCALE) / 2);
        pango_cairo_show_layout(cairo, layout_);
    }

    PangoContext* context_;
    PangoLayout* layout_;
    PangoFontDescription* plain_;
    PangoFontDescription* bold_;
};

std::shared_ptr<simulator::Bitmap> newPicture()
{
    return simulator::Bitmap::make({side, side}, scale, true);
}

bool areEqual(const simulator::Bitmap& left, const simulator::Bitmap& right)
{
    cairo_surface_flush(left.surface());
    cairo_surface_flush(right.surface());
    const int bytes = cairo_image_surface_get_stride(left.surface()) * cairo_image_surface_get_height(left.surface());
    const unsigned char* const first = cairo_image_surface_get_data(left.surface());
    return std::equal(first, first + bytes, cairo_image_surface_get_data(right.surface()));
}

} // namespace

int main()
{
    setenv("LANG", "de_DE.UTF-8", 1);
    unsetenv("LC_ALL");
    const BenchPhone phone;
    auto* const calendar = static_cast<UIView*>(send<"alloc", UIView*>(objc_getClass("APLCalendar"))->init());
    calendar->layoutIfNeeded();
    const DirectMonth direct;

    constexpr int rounds = 400;
    std::vector<double> drawn;
    std::vector<double> byHand;
    for (int i = 0; i < rounds; ++i) {
        const auto first = newPicture();
        drawn.push_back(processorTimeOf([&] { simulator::drawLayerTree(first->context().get(), calendar->layer()); }));
        const auto second = newPicture();
        byHand.push_back(processorTimeOf([&] { direct.draw(second->context().get()); }));
        if (!areEqual(*first, *second)) {
            std::fprintf(stderr, "the two pictures differ\n");
            return 1;
        }
    }
    constexpr double milliseconds = 1e3;
    constexpr double limit = 2;
    const double ratio = median(drawn) / median(byHand);
    std::printf("| the picture of a month | %.3f ms | Cairo and Pango alone %.3f ms | ratio %.2f (at most %.1f) |\n",
                median(drawn) * milliseconds, median(byHand) * milliseconds, ratio, limit);
    return ratio > limit ? 1 : 0;
}
