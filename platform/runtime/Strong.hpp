#pragma once

#include "platform/runtime/Owned.hpp"

/// A strong slot: a process-wide variable or an instance variable. Assigning retains the new object and releases the
/// previous one. It has no destructor: process-wide slots live until the process ends, and an instance variable is
/// released by its object's dealloc, in the reverse of the declared order.
template <class T>
class Strong {
public:
    constexpr Strong() = default;
    Strong(const Strong&) = delete;

    Strong& operator=(T* object)
    {
        objc_retain(reinterpret_cast<id>(object));
        take(object);
        return *this;
    }
    template <class Subclass>
        requires std::is_convertible_v<Subclass*, T*>
    Strong& operator=(Owned<Subclass>&& object)
    {
        take(object.leak());
        return *this;
    }
    Strong& operator=(const Strong& other)
    {
        *this = other.object_;
        return *this;
    }

    T* get() const { return object_; }
    T* operator->() const { return object_; }
    operator T*() const { return object_; }

private:
    void take(T* object)
    {
        T* const previous = object_;
        object_ = object;
        objc_release(reinterpret_cast<id>(previous));
    }

    T* object_ = nullptr;
};
