#pragma once

#include "platform/Foundation/NSString.hpp"
#include "platform/runtime/Strong.hpp"

#pragma GCC visibility push(default)
extern "C" {

/// The four greetings with the user's name in them. They are built once, when the library is loaded.
extern Strong<NSString> morningString;
extern Strong<NSString> afternoonString;
extern Strong<NSString> eveningString;
extern Strong<NSString> nightString;

/// The time of day by the local hour: 0 morning (7 to 12), 1 afternoon (13 to 17), 2 evening (18 to 21), 3 night.
NSInteger dateStatus();

/// The greeting for the time of day: the very object that the variable holds, autoreleased.
NSString* dateStatusString();
}
#pragma GCC visibility pop
