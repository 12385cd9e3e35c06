#include "simulator/console/Command.hpp"

#include "simulator/console/BadLine.hpp"
#include "simulator/console/arguments.hpp"
#include "simulator/console/numbers.hpp"
#include "simulator/springboard/SpringBoard.hpp"
#include "simulator/uikit/touch_input.hpp"

/// The finger on the screen.

namespace simulator {

namespace {

void tapAt(Console& console, Words arguments)
{
    constexpr int mostTimes = 10;
    const auto times = arguments.size() == 1 ? 1 : parseNumber<int>(arguments[1]);
    if (!times || *times < 1 || *times > mostTimes)
        throw BadLine('"' + arguments[1] + "\" is no number of taps: write 1 to " + std::to_string(mostTimes));
    tap(springBoardWindow(), placeIn(console, arguments[0]), *times);
}

void press(Console& console, Words arguments)
{
    touchDown(springBoardWindow(), placeIn(console, arguments[0]));
}

void release(Console& console, Words arguments)
{
    if (arguments.empty())
        touchUp();
    else
        touchUp(placeIn(console, arguments[0]));
}

void swipeFrom(Console& console, Words arguments)
{
    const auto direction = chosen<Direction>(
        arguments[1], {{"left", Direction::left}, {"right", Direction::right}, {"up", Direction::up}, {"down", Direction::down}});
    swipe(springBoardWindow(), placeIn(console, arguments[0]), direction);
}

} // namespace

std::span<const Command> fingerCommands()
{
    static constexpr Command commands[] = {
        {"tap", "WHERE [TIMES]", 1, 2, false, tapAt},
        {"press", "WHERE", 1, 1, false, press},
        {"release", "[WHERE]", 0, 1, false, release},
        {"swipe", "WHERE left | right | up | down", 2, 2, false, swipeFrom},
    };
    return commands;
}

} // namespace simulator
