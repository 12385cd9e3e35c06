#pragma once

#include <string>
#include <vector>

#include "platform/Foundation/NSArray.hpp"
#include "platform/runtime/Owned.hpp"

/// What SpringBoard lists on the lock screen.

Owned<NSMutableArray> arrayOf(const std::vector<NSObject*>& objects);

/// A notification of that application.
Owned<NSObject> notification(const std::string& bundleIdentifier);
/// Adds one to the list of the lock screen.
void notify(const std::string& bundleIdentifier);
