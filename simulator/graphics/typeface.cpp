#include "simulator/graphics/typeface.hpp"

namespace simulator {

namespace {

struct Substitute {
    std::string_view phoneName;
    const char* family;
    PangoWeight weight;
    LineMetrics lines;
};

constexpr LineMetrics verdanaLines{2059 / 2048.0, 430 / 2048.0, 0};

/// Nimbus Sans has Helvetica's widths to the unit, but no thin faces; DejaVu Sans has Verdana's proportions.
constexpr Substitute substitutes[] = {
    {systemFaceName, "Nimbus Sans", PANGO_WEIGHT_NORMAL, helveticaNeueLines},
    {boldSystemFaceName, "Nimbus Sans", PANGO_WEIGHT_BOLD, helveticaNeueLines},
    {".HelveticaNeueInterface-UltraLightP2", "Inter Display", PANGO_WEIGHT_ULTRALIGHT, helveticaNeueLines},
    {"HelveticaNeue", "Nimbus Sans", PANGO_WEIGHT_NORMAL, helveticaNeueLines},
    {"HelveticaNeue-Bold", "Nimbus Sans", PANGO_WEIGHT_BOLD, helveticaNeueLines},
    {"HelveticaNeue-Light", "Inter", PANGO_WEIGHT_LIGHT, helveticaNeueLines},
    {"HelveticaNeue-UltraLight", "Inter Display", PANGO_WEIGHT_THIN, helveticaNeueLines},
    {"Verdana", "DejaVu Sans", PANGO_WEIGHT_NORMAL, verdanaLines},
    {"Verdana-Bold", "DejaVu Sans", PANGO_WEIGHT_BOLD, verdanaLines},
};

} // namespace

std::optional<Typeface> typefaceNamed(std::string_view phoneName)
{
    for (const Substitute& substitute : substitutes) {
        if (substitute.phoneName == phoneName)
            return Typeface{substitute.family, substitute.weight, substitute.lines};
    }
    return std::nullopt;
}

} // namespace simulator
