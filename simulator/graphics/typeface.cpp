#include "simulator/graphics/typeface.hpp"

namespace simulator {

namespace {

struct Substitute {
    std::string_view phoneName;
    const char* family;
    PangoWeight weight;
};

constexpr Substitute substitutes[] = {
    {systemFaceName, "Inter", PANGO_WEIGHT_NORMAL},
    {boldSystemFaceName, "Inter", PANGO_WEIGHT_BOLD},
    {".HelveticaNeueInterface-UltraLightP2", "Inter Display", PANGO_WEIGHT_ULTRALIGHT},
    {"HelveticaNeue", "Inter", PANGO_WEIGHT_NORMAL},
    {"HelveticaNeue-Bold", "Inter", PANGO_WEIGHT_BOLD},
    {"HelveticaNeue-Light", "Inter", PANGO_WEIGHT_LIGHT},
    {"HelveticaNeue-UltraLight", "Inter Display", PANGO_WEIGHT_THIN},
    {"Verdana", "DejaVu Sans", PANGO_WEIGHT_NORMAL},
    {"Verdana-Bold", "DejaVu Sans", PANGO_WEIGHT_BOLD},
};

} // namespace

std::optional<Typeface> typefaceNamed(std::string_view phoneName)
{
    for (const Substitute& substitute : substitutes) {
        if (substitute.phoneName == phoneName)
            return Typeface{substitute.family, substitute.weight};
    }
    return std::nullopt;
}

} // namespace simulator
