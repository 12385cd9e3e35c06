#pragma once

#include <unicode/calendar.h>
#include <unicode/locid.h>

/// What the phone's system knows of locales otherwise than this machine's ICU, whose data are younger.
namespace simulator {

/// The locale with the calendar and the digits of the system's data, where they differ and the locale names none itself.
icu::Locale withDataOfTheSystem(icu::Locale locale);

/// Gives the calendar the first day of the week in that locale by the system's data, where it differs.
void beginWeekByTheSystem(icu::Calendar& calendar, const icu::Locale& locale);

} // namespace simulator
