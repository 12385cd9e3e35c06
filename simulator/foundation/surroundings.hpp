#pragma once

#include <optional>
#include <string>
#include <vector>

#include "simulator/foundation/customs.hpp"

/// What surrounds the phone: all that a relaunch of SpringBoard leaves as it is.
namespace simulator {

/// What the weather application last saved of the city that the phone is in.
struct LocalWeather {
    /// Degrees, verbatim as the application writes them; none when the city has no temperature.
    std::optional<std::string> temperature;
    long conditionCode;

    /// Shows a visitor each field with its name.
    static void visit(auto& weather, const auto& visitor)
    {
        auto& [temperature, conditionCode] = weather;
        visitor("temperature", temperature);
        visitor("code", conditionCode);
    }
};

/// A new field is added here and nowhere else: the bindings below do not compile until they have it, and what they show is
/// saved and restored.
struct Surroundings {
    /// The moment at which the clock is frozen, in seconds since 1970-01-01T00:00:00Z; none when it runs with the machine's.
    std::optional<double> frozenClock;
    /// The name of the phone's time zone; none for the machine's own.
    std::optional<std::string> timeZone;
    /// None: the local city is not known.
    std::optional<LocalWeather> weather = LocalWeather{"21", 26};
    /// The unit of the temperatures that the weather application saves: Celsius, or else Fahrenheit.
    bool savesCelsius = true;
    /// The unit in which temperatures are shown: Celsius, or else Fahrenheit.
    bool showsCelsius = true;
    /// They hold from the next question on: what was made before keeps what it was made with.
    Customs customs;
    /// Whether a list view that goes takes itself out of its table, which may outlive it. What the phone's does is not known.
    bool listViewClearsItsTable = true;
    /// The lines of the system log that nobody has taken yet, oldest first, without time and process.
    std::vector<std::string> log;

    /// Shows a visitor each field with its name.
    static void visit(auto& surroundings, const auto& visitor)
    {
        auto& [frozenClock, timeZone, weather, savesCelsius, showsCelsius, customs, listViewClearsItsTable, log] = surroundings;
        visitor("clock", frozenClock);
        visitor("timeZone", timeZone);
        visitor("weather", weather);
        visitor("savedCelsius", savesCelsius);
        visitor("celsius", showsCelsius);
        visitor("customs", customs);
        visitor("clearedTable", listViewClearsItsTable);
        visitor("log", log);
    }
};

/// Those of this phone. They begin with the time zone that TZ names. Plugins of the simulator ask for them too.
[[gnu::visibility("default")]] Surroundings& surroundings();

} // namespace simulator
