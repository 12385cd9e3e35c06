#include "simulator/console/json_values.hpp"

#include <cmath>

namespace simulator {

Json number(double value)
{
    constexpr double largestExactWhole = 9007199254740992.0;
    if (std::trunc(value) == value && std::abs(value) <= largestExactWhole)
        return static_cast<long long>(value);
    return std::isfinite(value) ? Json(value) : Json(nullptr);
}

Json point(CGPoint value)
{
    return {number(value.x), number(value.y)};
}

Json size(CGSize value)
{
    return {number(value.width), number(value.height)};
}

Json rectangle(CGRect value)
{
    return {number(value.origin.x), number(value.origin.y), number(value.size.width), number(value.size.height)};
}

} // namespace simulator
