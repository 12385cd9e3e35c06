#pragma once

namespace simulator {

/// Makes GNUstep's Foundation behave as the phone's where a library on the phone can tell. To be called once, first.
void prepareFoundation();

/// The parts of it: the constant texts of the phone's libraries; the user's time zone, in which whatever follows counts; the
/// clock; property lists read from the phone's file tree, and its other files; the user's locale, numbers and calendar; dates as
/// texts. Throws std::runtime_error for a TZ that nobody knows.
void addConstantTexts();
void replaceTimeZone();
void replaceClock();
void replacePropertyLists();
void replaceFiles();
void replaceLocale();
void replaceNumberReading();
void replaceCalendars();
void replaceDateFormatters();

} // namespace simulator
