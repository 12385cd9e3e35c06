#include "simulator/uikit/motion.hpp"

#include <algorithm>
#include <vector>

#include "platform/UIKit/UIView.hpp"
#include "platform/runtime/Owned.hpp"

namespace simulator {

namespace {

struct Moving {
    Owned<UIView> view;
    Movement movement;
};

std::vector<Moving>& all()
{
    static auto& moving = *new std::vector<Moving>;
    return moving;
}

} // namespace

void startMotion(UIView* view, Movement movement)
{
    const auto same = std::ranges::find_if(all(), [&](const Moving& moving) { return moving.view.get() == view; });
    if (same == all().end())
        all().push_back({Owned<UIView>(view), movement});
    else
        same->movement = movement;
}

bool isInMotion()
{
    return !all().empty();
}

void advanceMotion(double seconds)
{
    std::erase_if(all(), [seconds](const Moving& moving) { return !moving.movement(moving.view, seconds); });
}

void finishMotion()
{
    constexpr double frame = 1.0 / 60;
    while (isInMotion())
        advanceMotion(frame);
}

} // namespace simulator
