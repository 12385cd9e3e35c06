#pragma once

namespace simulator {

/// Registers the classes of Core Animation, superclasses first. To be called once.
void registerQuartzCore();

void registerCALayer();
void registerCAGradientLayer();
void registerCAShapeLayer();

} // namespace simulator
