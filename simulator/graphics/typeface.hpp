#pragma once

#include <optional>
#include <string>
#include <string_view>

#include <pango/pango.h>

namespace simulator {

/// What one line of a face measures, in parts of the font's size.
struct LineMetrics {
    /// Of the line's highest point over the baseline.
    double ascender;
    /// Of its lowest point below the baseline.
    double descender;
    /// Of the gap between one line and the next.
    double leading;

    constexpr double height() const { return ascender + descender + leading; }
};

inline constexpr LineMetrics helveticaNeueLines{0.952, 0.213, 0.028};

/// A face of this machine's fonts, with the lines of the face of the phone's that it stands in for.
struct Typeface {
    std::string family = "Inter";
    PangoWeight weight = PANGO_WEIGHT_NORMAL;
    LineMetrics lines = helveticaNeueLines;
};

inline constexpr std::string_view systemFaceName = ".HelveticaNeueInterface-Regular";
inline constexpr std::string_view boldSystemFaceName = ".HelveticaNeueInterface-Bold";

/// The face that stands in for one of the phone's; none for a name that the phone does not know.
std::optional<Typeface> typefaceNamed(std::string_view phoneName);

} // namespace simulator
