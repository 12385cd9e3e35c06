#pragma once

#include <map>
#include <string>

/// How many objects are alive. This program stands in for what Foundation tells of its allocations, and counts.

/// The number of living objects of each class; classes without any are left out.
std::map<std::string, long> livingObjects();
/// Of one class alone, without its subclasses.
long livingObjectsOf(const std::string& className);
