#pragma once

#include "platform/Foundation/CFNotificationCenter.hpp"
#include "platform/Foundation/NSDictionary.hpp"
#include "platform/Foundation/NSString.hpp"
#include "platform/runtime/Strong.hpp"

/// The settings as last read, and the two Darwin notifications about them.

#pragma GCC visibility push(default)
extern "C" {

/// The whole preferences file; nil when it is missing or no dictionary.
extern Strong<NSDictionary> settingsDictionary;
/// The value of "Name" as it stands in the file, of whatever class; `palString` when there is none.
extern Strong<NSObject> userName;
/// The name of a user who gave none.
extern Strong<NSString> palString;

/// Answers "loadSolvaneS": reads the preferences file again. Nothing on screen changes: the greetings keep their name
/// until SpringBoard is launched again. The arguments are not looked at.
void loadSettings(CFNotificationCenterRef center, void* observer, NSString* name, const void* object, NSDictionary* userInfo);

/// Answers "RespringSV": SpringBoard ends and starts again. The arguments are not looked at.
void respring(CFNotificationCenterRef center, void* observer, NSString* name, const void* object, NSDictionary* userInfo);
}
#pragma GCC visibility pop
