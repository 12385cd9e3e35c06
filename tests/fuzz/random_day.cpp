#include <algorithm>

#include "tests/fuzz/target.hpp"
#include "tests/random_days/Day.hpp"
#include "tests/support/programs.hpp"

/// A day of a phone, beside a model of it: two bytes for where it is, then three for each thing that happens, of which the first
/// chooses what and the others how. The springboard is a process of its own; libFuzzer is told where the model goes.

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    static const auto& player = *new DayPlayer(springboardProgram());
    constexpr std::size_t bytesOfSetting = 2;
    constexpr std::size_t bytesOfStep = 3;
    constexpr std::size_t longestDay = 100;
    if (size < bytesOfSetting + bytesOfStep)
        return 0;
    const auto numberAt = [&](std::size_t offset) { return std::uint64_t{bytes[offset]} << 8 | bytes[offset + 1]; };
    Chance chance(numberAt(0));
    const Setting setting = randomSetting(chance);
    std::vector<Step> steps;
    for (std::size_t at = bytesOfSetting; at + bytesOfStep <= size && steps.size() < longestDay; at += bytesOfStep)
        steps.push_back({bytes[at] % happeningCount(), numberAt(at + 1)});
    if (const auto difference = player.play(setting, steps)) {
        std::fprintf(stderr, "step %zu:\n%s\n%s", difference->step, difference->what.c_str(),
                     player.script(setting, steps).c_str());
        fail("the phone is not what it should be");
    }
    return 0;
}
