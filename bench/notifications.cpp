#include <cstdio>
#include <malloc.h>

#include "bench/support/BenchPhone.hpp"
#include "platform/SpringBoard/SBLockScreen.hpp"

/// Adds notifications of one application to a list that has none, 1,000 and 4,000 already, ten at a time: each new item makes
/// the strip ask every item of the list for its application. bench/notification_figures counts what they cost. Prints the bytes
/// that stay of one.

namespace {

constexpr int rounds = 10;

void addOne()
{
    const AutoreleasePool pool;
    notify("org.solvane.ferry", "Solvane Ferry", "Pier 2");
}

void addUntil(int& present, int count)
{
    for (; present < count; ++present)
        addOne();
}

void add(int& present)
{
    addUntil(present, present + rounds);
}

} // namespace

extern "C" {

// The profile knows them by their names.
[[gnu::noinline, gnu::visibility("default")]] void addedToNone(int& present)
{
    add(present);
}

[[gnu::noinline, gnu::visibility("default")]] void addedTo1000(int& present)
{
    add(present);
}

[[gnu::noinline, gnu::visibility("default")]] void addedTo4000(int& present)
{
    add(present);
}
}

int main()
{
    const BenchPhone phone;
    int present = 0;
    // What the first one makes stays for all others.
    addUntil(present, 1);
    addedToNone(present);
    const std::size_t before = ::mallinfo2().uordblks;
    const int counted = present;
    addUntil(present, 1000);
    std::printf("%zu\n", (::mallinfo2().uordblks - before) / static_cast<std::size_t>(present - counted));
    addedTo1000(present);
    addUntil(present, 4000);
    addedTo4000(present);
    return 0;
}
