#include <atomic>
#include <cstdlib>
#include <mutex>
#include <unordered_map>
#include <unordered_set>

#include "platform/Foundation/NSObject.hpp"
#include "platform/runtime/objc.hpp"
#include "simulator/runtime/SimulatedClass.hpp"
#include "simulator/runtime/runtime_entry_points.hpp"

/// The entry points of the phone's object runtime that GNU's lacks, under the phone's names (documented in "Automatic
/// Reference Counting", LLVM, and in the Objective-C Runtime reference).

namespace {

/// Which slots refer weakly to which object.
struct WeakReferences {
    std::recursive_mutex mutex;
    std::unordered_map<id, std::unordered_set<id*>> slots;
    /// Spares every release the mutex in a process without weak references.
    std::atomic<bool> everUsed = false;
};

WeakReferences& weakReferences()
{
    static auto& references = *new WeakReferences;
    return references;
}

/// The mutex of the references is held by the caller.
void forget(WeakReferences& references, id* slot)
{
    const auto found = references.slots.find(*slot);
    if (found == references.slots.end())
        return;
    found->second.erase(slot);
    if (found->second.empty())
        references.slots.erase(found);
}

/// From here on nobody reaches the object through a weak reference.
void clearSlotsOf(id object)
{
    WeakReferences& references = weakReferences();
    const std::lock_guard lock(references.mutex);
    const auto found = references.slots.find(object);
    if (found == references.slots.end())
        return;
    for (id* const slot : found->second)
        *slot = nullptr;
    references.slots.erase(found);
}

void (*previousRelease)(NSObject*, SEL);
void (*previousDealloc)(NSObject*, SEL);

/// The last release is the beginning of the object's end: the classes' own deallocs come after it.
void release(NSObject* self, SEL selector)
{
    if (weakReferences().everUsed && send<"retainCount", NSUInteger>(self) == 1)
        clearSlotsOf(self);
    previousRelease(self, selector);
}

/// For an object whose class counts its references itself.
void dealloc(NSObject* self, SEL selector)
{
    clearSlotsOf(self);
    previousDealloc(self, selector);
}

} // namespace

namespace simulator {

void addRuntimeEntryPoints()
{
    previousRelease = replaceMethod<"release">(classNamed<"NSObject">(), &release);
    previousDealloc = replaceMethod<"dealloc">(classNamed<"NSObject">(), &dealloc);
}

} // namespace simulator

extern "C" {

Class object_getClass(id object)
{
    // An object begins with its class on GNU's runtime.
    return object == nullptr ? nullptr : *reinterpret_cast<Class*>(object);
}

id objc_retain(id object)
{
    return send<"retain", id>(object);
}

void objc_release(id object)
{
    send<"release">(object);
}

id objc_autorelease(id object)
{
    return send<"autorelease", id>(object);
}

id objc_storeWeak(id* slot, id object)
{
    WeakReferences& references = weakReferences();
    const std::lock_guard lock(references.mutex);
    forget(references, slot);
    *slot = object;
    if (object != nullptr) {
        references.slots[object].insert(slot);
        references.everUsed = true;
    }
    return object;
}

id objc_loadWeakRetained(id* slot)
{
    const std::lock_guard lock(weakReferences().mutex);
    return objc_retain(*slot);
}

void objc_destroyWeak(id* slot)
{
    objc_storeWeak(slot, nullptr);
}

void* objc_autoreleasePoolPush(void)
{
    return send<"init", id>(send<"alloc", id>(classNamed<"NSAutoreleasePool">()));
}

void objc_autoreleasePoolPop(void* pool)
{
    objc_release(static_cast<id>(pool));
}
}
