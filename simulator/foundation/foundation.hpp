#pragma once

namespace simulator {

/// Makes GNUstep's Foundation behave as the phone's where a library on the phone can tell. To be called once, first.
void prepareFoundation();

/// The parts of it: the clock; property lists read from the phone's file tree; the locale, the numbers and the calendar of
/// the user.
void replaceClock();
void replacePropertyListReading();
void replaceLocale();
void replaceNumberReading();
void replaceCalendarRanges();

} // namespace simulator
