#pragma once

#include "platform/runtime/Owned.hpp"
#include "platform/runtime/send.hpp"

/// What fast enumeration keeps between two calls (NSFastEnumeration, Foundation).
struct NSFastEnumerationState {
    unsigned long state;
    id* itemsPtr;
    unsigned long* mutationsPtr;
    unsigned long extra[5];
};

/// Walks a collection by fast enumeration: `for (UIView* view : each<UIView>(subviews))`. A collection that changes
/// during the walk raises the enumeration-mutation error; one that its owner lets go lives until the walk is over. Nil is an
/// empty collection.
template <class Item>
class Enumeration {
public:
    struct End {};

    class Iterator {
    public:
        explicit Iterator(id collection) : collection_(collection) { fetch(); }

        Item* operator*() const { return reinterpret_cast<Item*>(state_.itemsPtr[index_]); }
        Iterator& operator++()
        {
            if (++index_ == count_)
                fetch();
            else
                checkMutation();
            return *this;
        }
        bool operator==(End) const { return count_ == 0; }

    private:
        void fetch()
        {
            index_ = 0;
            count_ =
                send<"countByEnumeratingWithState:objects:count:", NSUInteger>(collection_, &state_, buffer_, NSUInteger{batch});
            if (count_ == 0)
                return;
            if (!started_) {
                started_ = true;
                mutations_ = *state_.mutationsPtr;
            }
            checkMutation();
        }
        void checkMutation()
        {
            if (*state_.mutationsPtr != mutations_) [[unlikely]]
                objc_enumerationMutation(collection_);
        }

        static constexpr NSUInteger batch = 16;

        id collection_;
        NSFastEnumerationState state_{};
        id buffer_[batch]{};
        NSUInteger index_ = 0;
        NSUInteger count_ = 0;
        unsigned long mutations_ = 0;
        bool started_ = false;
    };

    explicit Enumeration(id collection) : collection_(collection) {}
    Iterator begin() const { return Iterator(collection_); }
    End end() const { return {}; }

private:
    Owned<NSObject> collection_;
};

template <class Item, class Collection>
inline Enumeration<Item> each(Collection* collection)
{
    return Enumeration<Item>(collection);
}
