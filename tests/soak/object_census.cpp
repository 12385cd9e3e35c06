#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>

#include "tests/support/live_objects.hpp"

/// Stands in front of Foundation (LD_PRELOAD) and counts its objects. At SIGUSR1 a process that waits writes how many there are
/// into the file that OBJECT_CENSUS names.

namespace {

void writeCensus(int)
{
    const char* const file = std::getenv("OBJECT_CENSUS");
    if (file == nullptr)
        return;
    long all = 0;
    for (const auto& [name, count] : livingObjects())
        all += count;
    const std::string unfinished = std::string(file) + ".new";
    std::ofstream(unfinished) << all << '\n';
    std::rename(unfinished.c_str(), file);
}

[[gnu::constructor]] void listen()
{
    std::signal(SIGUSR1, &writeCensus);
}

} // namespace
