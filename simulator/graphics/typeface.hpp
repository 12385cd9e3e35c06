#pragma once

#include <optional>
#include <string>
#include <string_view>

#include <pango/pango.h>

namespace simulator {

/// A face of this machine's fonts.
struct Typeface {
    std::string family = "Inter";
    PangoWeight weight = PANGO_WEIGHT_NORMAL;
};

inline constexpr std::string_view systemFaceName = ".HelveticaNeueInterface-Regular";
inline constexpr std::string_view boldSystemFaceName = ".HelveticaNeueInterface-Bold";

/// The face that stands in for one of the phone's; none for a name that the phone does not know.
std::optional<Typeface> typefaceNamed(std::string_view phoneName);

} // namespace simulator
