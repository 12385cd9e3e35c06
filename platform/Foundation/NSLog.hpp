#pragma once

class NSString;

/// Writes a line to the system log. The arguments must have the types that the format names.
extern "C" [[gnu::visibility("default")]] void NSLog(NSString* format, ...);
