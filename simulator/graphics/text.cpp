#include "simulator/graphics/text.hpp"

#include <cmath>

#include <pango/pangocairo.h>

#include "simulator/graphics/cairo_pointers.hpp"

namespace simulator {

namespace {

/// Glyphs are placed to the fraction of a pixel and never bent to the pixel grid, as on the phone, so that a text is as
/// wide in one place as in another.
PangoContext* sharedContext()
{
    static PangoContext* const context = [] {
        PangoContext* const made = pango_font_map_create_context(pango_cairo_font_map_get_default());
        const CairoPointer<cairo_font_options_t> options(cairo_font_options_create());
        cairo_font_options_set_antialias(options.get(), CAIRO_ANTIALIAS_GRAY);
        cairo_font_options_set_hint_style(options.get(), CAIRO_HINT_STYLE_NONE);
        cairo_font_options_set_hint_metrics(options.get(), CAIRO_HINT_METRICS_OFF);
        pango_cairo_context_set_font_options(made, options.get());
        pango_context_set_round_glyph_positions(made, FALSE);
        return made;
    }();
    return context;
}

CairoPointer<PangoFontDescription> describe(const Typeface& face, double fontSize)
{
    CairoPointer<PangoFontDescription> description(pango_font_description_new());
    pango_font_description_set_family(description.get(), face.family.c_str());
    pango_font_description_set_weight(description.get(), face.weight);
    pango_font_description_set_absolute_size(description.get(), fontSize * PANGO_SCALE);
    return description;
}

CairoPointer<PangoLayout> lay(const TextSetting& setting, double width)
{
    CairoPointer<PangoLayout> layout(pango_layout_new(sharedContext()));
    pango_layout_set_font_description(layout.get(), describe(setting.face, setting.fontSize).get());
    pango_layout_set_text(layout.get(), setting.text.c_str(), static_cast<int>(setting.text.size()));
    pango_layout_set_alignment(layout.get(), setting.alignment);
    pango_layout_set_wrap(layout.get(), PANGO_WRAP_WORD_CHAR);
    constexpr double widest = 1e5;
    if (width < widest)
        pango_layout_set_width(layout.get(), static_cast<int>(std::lround(width * PANGO_SCALE)));
    if (setting.lineLimit > 0) {
        pango_layout_set_height(layout.get(), -setting.lineLimit);
        pango_layout_set_ellipsize(layout.get(), PANGO_ELLIPSIZE_END);
    }
    return layout;
}

/// The lines are as high as the phone's face has them, whatever this machine's face says.
CGSize sizeOf(PangoLayout* layout, const TextSetting& setting)
{
    PangoRectangle extent;
    pango_layout_get_extents(layout, nullptr, &extent);
    return {static_cast<CGFloat>(extent.width) / PANGO_SCALE,
            static_cast<CGFloat>(pango_layout_get_line_count(layout) * setting.face.lines.height() * setting.fontSize)};
}

void show(cairo_t* cairo, PangoLayout* layout, const TextSetting& setting, CGPoint topLeft)
{
    const LineMetrics& lines = setting.face.lines;
    double baseline = topLeft.y + lines.ascender * setting.fontSize;
    const CairoPointer<PangoLayoutIter> line(pango_layout_get_iter(layout));
    do {
        PangoRectangle extent;
        pango_layout_iter_get_line_extents(line.get(), nullptr, &extent);
        cairo_move_to(cairo, topLeft.x + static_cast<double>(extent.x) / PANGO_SCALE, baseline);
        pango_cairo_show_layout_line(cairo, pango_layout_iter_get_line_readonly(line.get()));
        baseline += lines.height() * setting.fontSize;
    } while (pango_layout_iter_next_line(line.get()) != 0);
}

void draw(cairo_t* cairo, const TextSetting& setting, CGRect rect, const Colour& colour, double shareOfRoomAbove)
{
    if (setting.text.empty())
        return;
    const CairoPointer<PangoLayout> layout = lay(setting, rect.size.width);
    rect.origin.y += static_cast<CGFloat>(shareOfRoomAbove * (rect.size.height - sizeOf(layout.get(), setting).height));
    cairo_save(cairo);
    colour.applyTo(cairo);
    show(cairo, layout.get(), setting, rect.origin);
    cairo_restore(cairo);
}

} // namespace

CGSize measureText(const TextSetting& setting, double width)
{
    return sizeOf(lay(setting, width).get(), setting);
}

void drawText(cairo_t* cairo, const TextSetting& setting, CGRect rect, Colour colour)
{
    draw(cairo, setting, rect, colour, 0);
}

void drawTextInMiddle(cairo_t* cairo, const TextSetting& setting, CGRect rect, Colour colour)
{
    draw(cairo, setting, rect, colour, 0.5);
}

} // namespace simulator
