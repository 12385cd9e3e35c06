#include "simulator/console/Command.hpp"

#include <algorithm>
#include <optional>
#include <vector>

#include "simulator/console/BadLine.hpp"
#include "simulator/console/arguments.hpp"
#include "simulator/console/preferences_file.hpp"
#include "simulator/files/numbers.hpp"
#include "simulator/foundation/phone_root.hpp"
#include "simulator/foundation/surroundings.hpp"
#include "simulator/services/darwin_notifications.hpp"

/// What surrounds the phone: time, weather, customs, settings, and what other processes tell it.

namespace simulator {

namespace {

void setClock(Console&, Words arguments)
{
    if (arguments[0] == "live")
        surroundings().frozenClock = std::nullopt;
    else
        surroundings().frozenClock = momentIn(arguments[0]);
}

void setWeather(Console&, Words arguments)
{
    if (arguments.size() == 1) {
        if (arguments[0] != "none")
            throw BadLine("a condition code is missing behind \"" + arguments[0] + '"');
        surroundings().weather = std::nullopt;
        return;
    }
    const auto code = parseNumber<std::int64_t>(arguments[1]);
    if (!code)
        throw BadLine('"' + arguments[1] + "\" is no condition code: write a whole number");
    surroundings().weather = LocalWeather{arguments[0], static_cast<NSInteger>(*code)};
}

/// The weather application has saved nothing yet: the city is known, and nothing of its weather.
void forgetWeather(Console&, Words)
{
    surroundings().weather = LocalWeather{std::nullopt, 0};
}

bool isCelsius(const std::string& unit)
{
    return chosen<bool>(unit, {{"celsius", true}, {"fahrenheit", false}});
}

void setWeatherUnit(Console&, Words arguments)
{
    surroundings().savesCelsius = isCelsius(arguments[0]);
}

void setUnits(Console&, Words arguments)
{
    surroundings().showsCelsius = isCelsius(arguments[0]);
}

/// The word for what the region has.
constexpr std::string_view regionsOwn = "region";

void setCalendar(Console&, Words arguments)
{
    const std::vector<std::string> systems = calendarSystems();
    if (arguments[0] == regionsOwn) {
        surroundings().customs.calendar.reset();
        return;
    }
    if (std::ranges::find(systems, arguments[0]) == systems.end()) {
        std::string expected(regionsOwn);
        for (const std::string& system : systems)
            expected += ", " + system;
        throw BadLine("there is no calendar \"" + arguments[0] + "\": write one of " + expected);
    }
    surroundings().customs.calendar = arguments[0];
}

void setHours(Console&, Words arguments)
{
    surroundings().customs.hours =
        chosen<Hours>(arguments[0], {{"12", Hours::twelve}, {"24", Hours::twentyFour}, {regionsOwn, Hours::asTheRegion}});
}

void setDigits(Console&, Words arguments)
{
    surroundings().customs.readsDigitsOfAnyScript = chosen<bool>(arguments[0], {{"any", true}, {"ascii", false}});
}

void setTableEnd(Console&, Words arguments)
{
    surroundings().listViewClearsItsTable = chosen<bool>(arguments[0], {{"cleared", true}, {"dangling", false}});
}

void setName(Console&, Words arguments)
{
    writePreferredName(arguments[0] == "none" ? std::nullopt : std::optional(arguments[0]));
}

void post(Console&, Words arguments)
{
    const Posting posting = postDarwinNotification(phoneRoot(), arguments[0]);
    if (!posting.failures.empty())
        throw BadLine("not everybody was reached: " + posting.failures.front());
}

} // namespace

std::span<const Command> surroundingsCommands()
{
    static constexpr Command commands[] = {
        {"clock", "YYYY-MM-DDThh:mm:ss | live", 1, 1, false, setClock},
        {"weather", "TEMP CODE | none", 1, 2, false, setWeather},
        {"weather --never", "", 0, 0, false, forgetWeather},
        {"weather --unit", "celsius | fahrenheit", 1, 1, false, setWeatherUnit},
        {"units", "celsius | fahrenheit", 1, 1, false, setUnits},
        {"calendar", "NAME | region", 1, 1, false, setCalendar},
        {"hours", "12 | 24 | region", 1, 1, false, setHours},
        {"digits", "any | ascii", 1, 1, false, setDigits},
        {"table", "cleared | dangling", 1, 1, false, setTableEnd},
        {"name", "TEXT | none", 1, 1, false, setName},
        {"post", "NAME", 1, 1, false, post},
    };
    return commands;
}

} // namespace simulator
