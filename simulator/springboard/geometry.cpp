#include "simulator/springboard/geometry.hpp"

#include <algorithm>
#include <utility>

#include "platform/UIKit/UIScreen.hpp"

namespace simulator {

namespace {

constexpr CGFloat dateHeight = 108;
constexpr CGFloat statusBarHeight = 20;

std::optional<Geometry>& chosen()
{
    static auto& geometry = *new std::optional<Geometry>;
    return geometry;
}

} // namespace

Geometry deskGeometry(CGSize screen)
{
    constexpr CGFloat dateBottom = 56;
    return {
        .name = "desk",
        .dateView = CGRect::make(0, screen.height - dateHeight - dateBottom, screen.width, dateHeight),
        .slideToUnlockView = std::nullopt,
        .notificationView = {{}, screen},
        .container = {},
        .table = {},
        // Rows begin below the status bar and end above the clock.
        .rows = {.top = statusBarHeight, .left = 0, .bottom = 190, .right = 0},
    };
}

Geometry phoneGeometry(CGSize screen)
{
    constexpr UIEdgeInsets container{.top = 130, .left = 0, .bottom = 96, .right = 0};
    constexpr CGFloat sliderHeight = 68;
    return {
        .name = "phone",
        .dateView = CGRect::make(0, statusBarHeight, screen.width, dateHeight),
        .slideToUnlockView = CGRect::make(0, screen.height - container.bottom, screen.width, sliderHeight),
        .notificationView = {{}, screen},
        .container = container,
        .table = {},
        .rows = {},
    };
}

const Geometry& geometry()
{
    auto& geometry = chosen();
    if (!geometry)
        geometry = deskGeometry(UIScreen::mainScreen()->bounds().size);
    return *geometry;
}

void chooseGeometry(Geometry geometry)
{
    chosen() = std::move(geometry);
}

CGRect frameWithin(CGSize superview, const UIEdgeInsets& insets)
{
    return CGRect::make(insets.left, insets.top, std::max<CGFloat>(superview.width - insets.left - insets.right, 0),
                        std::max<CGFloat>(superview.height - insets.top - insets.bottom, 0));
}

} // namespace simulator
