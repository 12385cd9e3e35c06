#pragma once

#include <cstdint>
#include <memory>

#include <unicode/timezone.h>

#include "platform/Foundation/NSObject.hpp"

/// The time zone of the phone's user.
namespace simulator {

/// How far a zone's clocks are ahead of universal time at a moment, in seconds. The moment is in seconds since
/// 1970-01-01T00:00:00Z.
std::int64_t offsetOf(const icu::TimeZone& zone, std::int64_t moment);

/// The same of the user's clocks.
std::int64_t userOffsetAt(std::int64_t moment);

/// ICU's zone behind one of Foundation's; the user's for nil.
std::unique_ptr<icu::TimeZone> zoneBehind(NSObject* timeZone);

} // namespace simulator
