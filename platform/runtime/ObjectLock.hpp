#pragma once

#include "platform/runtime/objc.hpp"

/// Holds the recursive lock keyed by an object for a C++ scope, and lets go of it when an exception passes through too.
class ObjectLock {
public:
    explicit ObjectLock(id object) : object_(object) { objc_sync_enter(object_); }
    ObjectLock(const ObjectLock&) = delete;
    ObjectLock& operator=(const ObjectLock&) = delete;
    ~ObjectLock() { objc_sync_exit(object_); }

private:
    id object_;
};
