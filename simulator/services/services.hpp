#pragma once

namespace simulator {

/// Registers the classes of the weather framework.
void registerWeather();

/// Registers the classes of the calendar store.
void registerEventKit();

} // namespace simulator
