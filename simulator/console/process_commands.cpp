#include "simulator/console/Command.hpp"

#include <chrono>
#include <utility>

#include "simulator/console/arguments.hpp"
#include "simulator/console/report.hpp"
#include "simulator/console/waiting.hpp"
#include "simulator/foundation/phone_system.hpp"
#include "simulator/foundation/system_log.hpp"
#include "simulator/springboard/SpringBoard.hpp"
#include "simulator/uikit/touch_input.hpp"

/// The system, the log, the picture, the time that passes, the end.

namespace simulator {

namespace {

void tellSystem(Console&, Words)
{
    report(std::string(versionOf(phoneSystem())));
}

void takeLog(Console&, Words)
{
    Json lines = Json::array();
    for (std::string& line : takeSystemLog())
        lines.push_back(std::move(line));
    report(lines);
}

void takeScreenshot(Console& console, Words arguments)
{
    screenPicture()->writePNG(console.pictureFolder / arguments[0]);
}

void sleepFor(Console&, Words arguments)
{
    constexpr int aDay = 86400;
    const double seconds = secondsIn(arguments[0], aDay);
    waitFor(std::chrono::duration<double>(seconds));
    passFingerTime(seconds);
}

void quit(Console& console, Words)
{
    console.hasQuit = true;
}

} // namespace

std::span<const Command> processCommands()
{
    static constexpr Command commands[] = {
        {"system", "", 0, 0, false, tellSystem},
        {"log", "", 0, 0, false, takeLog},
        {"screenshot", "FILE", 1, 1, false, takeScreenshot},
        {"sleep", "SECONDS", 1, 1, false, sleepFor},
        {"quit", "", 0, 0, false, quit},
    };
    return commands;
}

} // namespace simulator
