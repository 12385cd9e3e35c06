#pragma once

namespace simulator {

/// Registers the classes of Core Animation.
void registerCALayer();

} // namespace simulator
