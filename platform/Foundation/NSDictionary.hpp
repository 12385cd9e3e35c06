#pragma once

#include "platform/Foundation/NSArray.hpp"

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

    template <class Item = NSObject>
    Item* objectForKey(id key) const
    {
        return send<"objectForKey:", Item*>(this, key);
    }
    template <class Item = NSObject>
    Item* objectForKeyedSubscript(id key) const
    {
        return send<"objectForKeyedSubscript:", Item*>(this, key);
    }
    NSUInteger count() const { return send<"count", NSUInteger>(this); }
};

/// A map that can change.
class NSMutableDictionary : public NSDictionary {
public:
    static NSMutableDictionary* alloc() { return send<"alloc", NSMutableDictionary*>(classNamed<"NSMutableDictionary">()); }
    NSMutableDictionary* init() { return send<"init", NSMutableDictionary*>(this); }

    /// In the map's own order.
    NSArray* allKeys() const { return send<"allKeys", NSArray*>(this); }
    NSArray* allValues() const { return send<"allValues", NSArray*>(this); }
    /// Nil raises NSInvalidArgumentException.
    void setObject_forKey(id object, id key) { send<"setObject:forKey:">(this, object, key); }
    /// Takes the place of all that is in the map.
    void setDictionary(NSDictionary* entries) { send<"setDictionary:">(this, entries); }
    void removeObjectForKey(id key) { send<"removeObjectForKey:">(this, key); }
    void removeAllObjects() { send<"removeAllObjects">(this); }
};
