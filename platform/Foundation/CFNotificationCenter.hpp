#pragma once

#include "platform/runtime/types.hpp"

class NSString;
class NSDictionary;

/// A notification centre of Core Foundation. Its strings and dictionaries are Foundation's ("toll-free bridging").
struct __CFNotificationCenter;
using CFNotificationCenterRef = __CFNotificationCenter*;

enum CFNotificationSuspensionBehavior : NSInteger {
    CFNotificationSuspensionBehaviorNone = 0,
};

using CFNotificationCallback = void (*)(CFNotificationCenterRef center, void* observer, NSString* name, const void* object,
                                        NSDictionary* userInfo);

#pragma GCC visibility push(default)
extern "C" {
/// The centre of the notifications that go from process to process. They carry a name and nothing else.
CFNotificationCenterRef CFNotificationCenterGetDarwinNotifyCenter(void);
/// The callback is called on the main thread.
void CFNotificationCenterAddObserver(CFNotificationCenterRef center, const void* observer, CFNotificationCallback callback,
                                     NSString* name, const void* object, CFNotificationSuspensionBehavior suspensionBehavior);
/// Of a Darwin notification, the name alone arrives.
void CFNotificationCenterPostNotification(CFNotificationCenterRef center, NSString* name, const void* object,
                                          NSDictionary* userInfo, unsigned char deliverImmediately);
}
#pragma GCC visibility pop
