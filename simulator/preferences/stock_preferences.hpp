#pragma once

#include "platform/Foundation/NSString.hpp"

/// What the Settings themselves keep of pages that leave it to them.
namespace simulator {

/// The value of a key in that domain; nil when there is none. Autoreleased.
NSObject* stockPreference(NSString* domain, NSString* key);

/// On 7.x the file has it at once. On 8.x a daemon keeps it in memory and writes the file when it sees fit. Nil deletes the key.
void setStockPreference(NSString* domain, NSString* key, NSObject* value);

/// The daemon sees fit.
void flushStockPreferences();

} // namespace simulator
