#pragma once

#include "platform/Foundation/NSObject.hpp"

/// An immutable set.
class NSSet : public NSObject {
public:
    static NSSet* setWithObject(id object) { return send<"setWithObject:", NSSet*>(classNamed<"NSSet">(), object); }
    template <class Item = NSObject>
    Item* anyObject() const
    {
        return send<"anyObject", Item*>(this);
    }
};
