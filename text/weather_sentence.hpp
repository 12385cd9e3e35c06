#pragma once

#include <cstdint>

#include "platform/Foundation/NSString.hpp"

/// The sentence for a temperature and a condition code. `temperature` is degrees Celsius as the weather service writes
/// them, nil without a city; Celsius shows the text verbatim, Fahrenheit its value converted and rounded, halves away from
/// zero. `isCelsius` is asked last. Autoreleased.
NSString* weatherSentence(NSString* temperature, std::uint32_t conditionCode, bool (*isCelsius)());

#pragma GCC visibility push(default)
extern "C" {

/// The sentence about the local weather as the weather service knows it now; it asks the service to refresh itself but
/// does not wait for it. Autoreleased. A service, class or city that is missing gives the sentence of nil and code 0.
NSString* getTempString();
}
#pragma GCC visibility pop
