#pragma once

#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include "tests/random_days/PhoneModel.hpp"

/// A source of chance that gives the same at every run.
class Chance {
public:
    explicit Chance(std::uint64_t seed) : engine_(seed) {}

    /// From 0 to the limit, without it.
    std::uint64_t below(std::uint64_t limit) { return engine_() % limit; }
    int between(int least, int most)
    {
        const int count = most - least + 1;
        return least + static_cast<int>(below(static_cast<std::uint64_t>(count)));
    }
    bool oneIn(std::uint64_t times) { return below(times) == 0; }
    template <class Range>
    const auto& oneOf(const Range& range)
    {
        return range[static_cast<std::size_t>(below(std::size(range)))];
    }

private:
    std::mt19937_64 engine_;
};

/// Something that happens to a phone. What it is about comes from a seed of its own, so that it stays the same when others
/// before it are left out.
struct Step {
    std::size_t happening;
    std::uint64_t seed;
};

/// How a day differs from others: where the phone is, and its screen.
struct Setting {
    const Region* region;
    Screen screen;
};

Setting randomSetting(Chance& chance);
/// That many steps, at least one; early on, the phone is locked.
std::vector<Step> randomDay(Chance& chance, std::uint64_t length);
/// How many kinds of happenings there are; a step's is less.
std::size_t happeningCount();
void happen(PhoneModel& phone, const Step& step);
