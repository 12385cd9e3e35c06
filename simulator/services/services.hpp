#pragma once

namespace simulator {

/// Registers the classes of the weather framework.
void registerWeather();

} // namespace simulator
