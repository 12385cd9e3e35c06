#pragma once

#include <cstdint>

#include "platform/Foundation/NSString.hpp"

/// The sentence for a temperature and a condition code. `temperature` is degrees Celsius as the weather service writes
/// them (nil without a city) and `celsius` is its value; Celsius shows the text verbatim, Fahrenheit the value
/// converted and rounded, halves away from zero.
NSString* weatherSentence(NSString* temperature, float celsius, std::uint32_t conditionCode, bool isCelsius);

#pragma GCC visibility push(default)
extern "C" {

/// The sentence about the local weather as the weather service knows it now; it asks the service to refresh itself but
/// does not wait for it. Autoreleased. A service, class or city that is missing gives the sentence of nil and code 0.
NSString* getTempString();
}
#pragma GCC visibility pop
