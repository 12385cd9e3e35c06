#pragma once

#include "platform/runtime/Owned.hpp"

/// A zeroing weak slot, for an instance variable: it never keeps its object alive and reads nil once the object is gone.
/// Its object's dealloc clears it.
template <class T>
class Weak {
public:
    constexpr Weak() = default;
    Weak(const Weak&) = delete;
    Weak& operator=(const Weak&) = delete;

    Weak& operator=(T* object)
    {
        objc_storeWeak(&slot_, reinterpret_cast<id>(object));
        return *this;
    }

    /// The object, kept alive for as long as the result lives; nil when it is gone.
    Owned<T> load() const { return adopt(reinterpret_cast<T*>(objc_loadWeakRetained(&slot_))); }

private:
    /// The runtime's own: it clears the slot whenever the object goes.
    mutable id slot_ = nullptr;
};
