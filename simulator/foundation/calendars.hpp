#pragma once

#include <memory>

#include <unicode/calendar.h>
#include <unicode/locid.h>

class NSObject;

/// Foundation's calendars and locales, as ICU counts them.
namespace simulator {

/// The customs of one of Foundation's locales, by the data of the phone's system; of no language or region for nil.
icu::Locale localeBehind(NSObject* locale);

/// A calendar of the system that the locale names, or else of its region's, with the region's weeks, in the time zone.
/// Null for a system that there is none of.
std::unique_ptr<icu::Calendar> openCalendar(const icu::Locale& locale, std::unique_ptr<icu::TimeZone> zone);

} // namespace simulator
