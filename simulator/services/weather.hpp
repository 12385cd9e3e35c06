#pragma once

#include <optional>
#include <string>

/// What the weather service of the simulated phone knows.
namespace simulator {

struct LocalWeather {
    /// Degrees Celsius, verbatim as the service writes them; none when the city has no temperature.
    std::optional<std::string> temperature;
    long conditionCode;
};

/// None: the local city is not known.
void setLocalWeather(std::optional<LocalWeather> weather);
const std::optional<LocalWeather>& localWeather();

void setShowsCelsius(bool showsCelsius);
bool showsCelsius();

} // namespace simulator
