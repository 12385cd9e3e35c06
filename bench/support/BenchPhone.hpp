#pragma once

#include <algorithm>
#include <string>
#include <vector>

#include "platform/runtime/AutoreleasePool.hpp"

/// A SpringBoard in this process with the library in it and a lock screen up, on a morning in March.
class BenchPhone {
public:
    BenchPhone();
    BenchPhone(const BenchPhone&) = delete;
    BenchPhone& operator=(const BenchPhone&) = delete;
    ~BenchPhone();

private:
    std::string root_;
    AutoreleasePool pool_;
};

/// Adds a notification to the phone's list.
void notify(const std::string& bundleIdentifier, const std::string& title, const std::string& message);

/// The processor time that this process has used, in seconds.
double processorTime();

/// The processor time, in seconds, that one call of the work takes.
double processorTimeOf(const auto& work)
{
    const AutoreleasePool pool;
    const double start = processorTime();
    work();
    return processorTime() - start;
}

/// The middle one; there must be one at least.
inline double median(std::vector<double> values)
{
    std::ranges::sort(values);
    return values[values.size() / 2];
}
