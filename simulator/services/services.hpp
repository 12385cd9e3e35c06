#pragma once

namespace simulator {

/// Registers the classes of the calendar store.
void registerEventKit();

} // namespace simulator
