#pragma once

namespace simulator {

/// Makes GNUstep's Foundation behave as the phone's where a library on the phone can tell. To be called once, first.
void prepareFoundation();

/// The parts of it: the clock, and property lists read from the phone's file tree.
void replaceClock();
void replacePropertyListReading();

} // namespace simulator
