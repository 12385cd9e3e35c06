#pragma once

#include "platform/Foundation/NSString.hpp"

/// The name in Solvane's preferences file, from which the library takes it.

/// As it stands in the file, in words; nil when there is none, or no file, or one that no property list can be read from.
NSString* greetingName();

/// What became of a name that was to be written.
struct NameWriting {
    /// A sentence; nil when the file has the name.
    NSString* failure = nullptr;
    /// Where a file that was no property list is kept; nil when there was none.
    NSString* keptDamagedFile = nullptr;
};

/// Replaces the file whole, with the name in it, or without one for an empty text; all other keys stay. The file can be read
/// before the phone has been unlocked for the first time. What cannot be read is not replaced; what is no property list is kept
/// beside it first.
NameWriting writeGreetingName(NSString* name);
