#pragma once

#include "platform/Foundation/NSObject.hpp"

class NSString;

/// An immutable map.
class NSDictionary : public NSObject {
public:
    static NSDictionary* alloc() { return send<"alloc", NSDictionary*>(classNamed<"NSDictionary">()); }
    /// A property list, XML or binary, whose root is a dictionary; anything else gives nil.
    static NSDictionary* dictionaryWithContentsOfFile(NSString* path)
    {
        return send<"dictionaryWithContentsOfFile:", NSDictionary*>(classNamed<"NSDictionary">(), path);
    }
    static NSDictionary* dictionaryWithObjects_forKeys_count(const id* objects, const id* keys, NSUInteger count)
    {
        return send<"dictionaryWithObjects:forKeys:count:", NSDictionary*>(classNamed<"NSDictionary">(), objects, keys, count);
    }

    id objectForKey(id key) { return send<"objectForKey:", id>(this, key); }
    id objectForKeyedSubscript(id key) { return send<"objectForKeyedSubscript:", id>(this, key); }
    NSUInteger count() { return send<"count", NSUInteger>(this); }
};
