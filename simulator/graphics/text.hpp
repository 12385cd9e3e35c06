#pragma once

#include <string>

#include "platform/CoreGraphics/CGGeometry.hpp"
#include "simulator/graphics/Colour.hpp"
#include "simulator/graphics/typeface.hpp"

namespace simulator {

/// A text as it is to be set. Lengths are in points.
struct TextSetting {
    std::string text;
    Typeface face{};
    double fontSize = 17;
    PangoAlignment alignment = PANGO_ALIGN_LEFT;
    /// The lines at the most, the last one ending in an ellipsis; 0 is no limit.
    int lineLimit = 0;
};

/// The size that the text takes when its lines are at most `width` wide; a width without end keeps it on its own lines.
CGSize measureText(const TextSetting& setting, double width);

/// Draws the text with its first line at the rectangle's top left, wrapped at its width.
void drawText(cairo_t* cairo, const TextSetting& setting, CGRect rect, Colour colour);

/// The same, with its lines in the middle of the rectangle's height.
void drawTextInMiddle(cairo_t* cairo, const TextSetting& setting, CGRect rect, Colour colour);

} // namespace simulator
