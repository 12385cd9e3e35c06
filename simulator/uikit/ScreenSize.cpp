#include "simulator/uikit/ScreenSize.hpp"

#include <algorithm>
#include <stdexcept>
#include <string_view>

#include "simulator/files/numbers.hpp"

namespace simulator {

ScreenSize parseScreenSize(const std::string& text)
{
    constexpr int smallestSide = 100;
    constexpr int largestSide = 2048;
    constexpr int largestScale = 4;

    const std::string_view whole = text;
    const std::size_t cross = std::min(whole.find('x'), whole.size());
    const std::size_t at = std::min(whole.find('@'), whole.size());
    const int width = parseNumber<int>(whole.substr(0, cross)).value_or(0);
    const int height = cross < at ? parseNumber<int>(whole.substr(cross + 1, at - cross - 1)).value_or(0) : 0;
    const int scale = at < whole.size() ? parseNumber<int>(whole.substr(at + 1)).value_or(0) : 2;

    const auto isSide = [](int side) { return side >= smallestSide && side <= largestSide; };
    if (!isSide(width) || !isSide(height) || scale < 1 || scale > largestScale)
        throw std::invalid_argument("--screen: \"" + text + "\" is not WIDTHxHEIGHT or WIDTHxHEIGHT@SCALE with sides from " +
                                    std::to_string(smallestSide) + " to " + std::to_string(largestSide) +
                                    " points and a scale from 1 to " + std::to_string(largestScale));
    return {static_cast<CGFloat>(width), static_cast<CGFloat>(height), static_cast<double>(scale)};
}

} // namespace simulator
