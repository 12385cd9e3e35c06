#pragma once

#include "platform/Foundation/NSString.hpp"

/// A folder that holds code and what belongs to it.
class NSBundle : public NSObject {
public:
    /// Nil when there is no such folder.
    static NSBundle* bundleWithPath(NSString* path) { return send<"bundleWithPath:", NSBundle*>(classNamed<"NSBundle">(), path); }
    NSString* bundlePath() const { return send<"bundlePath", NSString*>(this); }
    /// A value of the bundle's Info.plist.
    NSObject* objectForInfoDictionaryKey(NSString* key) const
    {
        return send<"objectForInfoDictionaryKey:", NSObject*>(this, key);
    }
};
