#pragma once

#include "platform/Foundation/NSObject.hpp"

/// An immutable list.
class NSArray : public NSObject {
public:
    static NSArray* arrayWithObjects_count(const id* objects, NSUInteger count)
    {
        return send<"arrayWithObjects:count:", NSArray*>(classNamed<"NSArray">(), objects, count);
    }

    NSUInteger count() const { return send<"count", NSUInteger>(this); }
    /// An index out of range raises NSRangeException.
    template <class Item = NSObject>
    Item* objectAtIndex(NSUInteger index) const
    {
        return send<"objectAtIndex:", Item*>(this, index);
    }
    /// Whether an element equals the object.
    bool containsObject(id object) const { return send<"containsObject:", BOOL>(this, object) != NO; }
};

/// A list that can change.
class NSMutableArray : public NSArray {
public:
    static NSMutableArray* alloc() { return send<"alloc", NSMutableArray*>(classNamed<"NSMutableArray">()); }
    NSMutableArray* initWithArray(NSArray* array) { return send<"initWithArray:", NSMutableArray*>(this, array); }
    NSMutableArray* init() { return send<"init", NSMutableArray*>(this); }
    void insertObject_atIndex(id object, NSUInteger index) { send<"insertObject:atIndex:">(this, object, index); }
    void addObject(id object) { send<"addObject:">(this, object); }
    void removeAllObjects() { send<"removeAllObjects">(this); }
};
