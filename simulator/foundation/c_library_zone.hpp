#pragma once

#include <memory>
#include <string>

#include <unicode/timezone.h>

namespace simulator {

/// Whether the C library knows what a value of TZ means: empty, a file of its zone rules by path or by name, or rules in
/// POSIX's notation. A colon may stand in front of it. What it does not know it silently takes for universal time.
bool isKnownToCLibrary(const std::string& timeZone);

/// The C library's own time zone, for ICU: whatever TZ says, both count alike.
std::unique_ptr<icu::TimeZone> cLibraryZone(const std::string& name);

} // namespace simulator
