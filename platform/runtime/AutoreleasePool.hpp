#pragma once

#include "platform/runtime/objc.hpp"

/// An autorelease pool for a C++ scope.
class AutoreleasePool {
public:
    AutoreleasePool() : pool_(objc_autoreleasePoolPush()) {}
    AutoreleasePool(const AutoreleasePool&) = delete;
    AutoreleasePool& operator=(const AutoreleasePool&) = delete;
    ~AutoreleasePool() { objc_autoreleasePoolPop(pool_); }

private:
    void* pool_;
};
