#include "tests/support/live_objects.hpp"

#include <mutex>
#include <unordered_map>

#include "platform/runtime/objc.hpp"

namespace {

struct Census {
    std::mutex mutex;
    std::unordered_map<Class, long> living;
};

Census& census()
{
    static auto& kept = *new Census;
    return kept;
}

void count(Class cls, long change)
{
    const std::lock_guard lock(census().mutex);
    census().living[cls] += change;
}

} // namespace

std::map<std::string, long> livingObjects()
{
    const std::lock_guard lock(census().mutex);
    std::map<std::string, long> all;
    for (const auto& [cls, number] : census().living) {
        if (number != 0)
            all[class_getName(cls)] = number;
    }
    return all;
}

long livingObjectsOf(const std::string& className)
{
    const auto all = livingObjects();
    const auto found = all.find(className);
    return found == all.end() ? 0 : found->second;
}

/// Foundation tells these of each object that it makes and of each that it frees.
#pragma GCC visibility push(default)
extern "C" {

void GSDebugAllocationAdd(Class cls, id)
{
    count(cls, 1);
}

void GSDebugAllocationRemove(Class cls, id)
{
    count(cls, -1);
}
}
#pragma GCC visibility pop
