#include "simulator/console/Command.hpp"

#include "simulator/console/BadLine.hpp"
#include "simulator/console/arguments.hpp"
#include "simulator/files/numbers.hpp"
#include "simulator/springboard/SpringBoard.hpp"
#include "simulator/uikit/motion.hpp"
#include "simulator/uikit/touch_input.hpp"

/// The finger on the screen. What it has set in motion comes to rest before anything else is done, so that a script finds the
/// same on every machine and never waits for it.

namespace simulator {

namespace {

/// Before another one comes down.
void liftFinger()
{
    touchUp();
    finishMotion();
}

void tapAt(Console& console, Words arguments)
{
    constexpr int mostTimes = 10;
    const auto times = arguments.size() == 1 ? 1 : parseNumber<int>(arguments[1]);
    if (!times || *times < 1 || *times > mostTimes)
        throw BadLine('"' + arguments[1] + "\" is no number of taps: write 1 to " + std::to_string(mostTimes));
    liftFinger();
    tap(springBoardWindow(), placeIn(console, arguments[0]), *times);
}

void press(Console& console, Words arguments)
{
    liftFinger();
    touchDown(springBoardWindow(), placeIn(console, arguments[0]));
}

void move(Console& console, Words arguments)
{
    constexpr int aMinute = 60;
    if (!fingerIsDown())
        throw BadLine("no finger is on the screen: press first");
    const CGPoint place = placeIn(console, arguments[0]);
    touchMoveSteadily(place, arguments.size() == 1 ? strokeTime : secondsIn(arguments[1], aMinute));
}

void release(Console& console, Words arguments)
{
    if (arguments.empty())
        touchUp();
    else
        touchUp(placeIn(console, arguments[0]));
    finishMotion();
}

void swipeFrom(Console& console, Words arguments)
{
    const auto direction = chosen<Direction>(
        arguments[1], {{"left", Direction::left}, {"right", Direction::right}, {"up", Direction::up}, {"down", Direction::down}});
    liftFinger();
    swipe(springBoardWindow(), placeIn(console, arguments[0]), direction);
    finishMotion();
}

} // namespace

std::span<const Command> fingerCommands()
{
    static constexpr Command commands[] = {
        {"tap", "WHERE [TIMES]", 1, 2, false, tapAt},
        {"press", "WHERE", 1, 1, false, press},
        {"move", "WHERE [SECONDS]", 1, 2, false, move},
        {"release", "[WHERE]", 0, 1, false, release},
        {"swipe", "WHERE left | right | up | down", 2, 2, false, swipeFrom},
    };
    return commands;
}

} // namespace simulator
