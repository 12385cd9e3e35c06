#pragma once

#include <type_traits>

#include "platform/runtime/objc.hpp"

/// A strong reference with the lifetime of a C++ scope: it releases its object at the end.
/// `adopt` takes over a reference that the caller already owns (alloc, new, copy); construction from a plain pointer retains.
/// A plain pointer taken from it must not outlive it, which clang holds: where the object leaves a function as the result, it
/// leaves by `autorelease`.
template <class T>
class Owned {
public:
    constexpr Owned() = default;
    constexpr Owned(decltype(nullptr)) {}
    Owned(T* object) : object_(object) { objc_retain(reinterpret_cast<id>(object)); }
    Owned(const Owned& other) : Owned(other.object_) {}
    Owned(Owned&& other) noexcept : object_(other.leak()) {}
    /// An owner of a subclass's object hands it over.
    template <class Subclass>
        requires std::is_convertible_v<Subclass*, T*>
    Owned(Owned<Subclass>&& other) noexcept : object_(other.leak())
    {
    }
    ~Owned() { objc_release(reinterpret_cast<id>(object_)); }

    Owned& operator=(Owned other) noexcept
    {
        T* const previous = object_;
        object_ = other.object_;
        other.object_ = previous;
        return *this;
    }

    // gcc does not know the attribute and would say so.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wattributes"
    T* get() const [[clang::lifetimebound]] { return object_; }
    operator T*() const [[clang::lifetimebound]] { return object_; }
#pragma GCC diagnostic pop
    T* operator->() const { return object_; }

    /// Gives the reference away: the caller owns it.
    [[nodiscard]] T* leak()
    {
        T* const object = object_;
        object_ = nullptr;
        return object;
    }

    /// Hands the reference to the innermost autorelease pool.
    T* autorelease() { return reinterpret_cast<T*>(objc_autorelease(reinterpret_cast<id>(leak()))); }

    static Owned adopt(T* object)
    {
        Owned owned;
        owned.object_ = object;
        return owned;
    }

private:
    T* object_ = nullptr;
};

/// Takes over a reference that the caller owns.
template <class T>
[[nodiscard]] Owned<T> adopt(T* object)
{
    return Owned<T>::adopt(object);
}
