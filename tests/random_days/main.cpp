#include <algorithm>
#include <charconv>
#include <chrono>
#include <cstdlib>
#include <iostream>
#include <stdexcept>
#include <string_view>

#include "tests/random_days/Day.hpp"
#include "tests/support/programs.hpp"

/// Plays random days and says whether the phone was what it should be after each step.

namespace {

constexpr const char* usage = R"(usage: random_days [OPTION ...]

Plays random days of a phone, a thousand steps each, and compares the whole
state of its lock screen with a model after each step. Ends with status 1 at
the first difference, and prints the shortest day that leads to one, as a
script for the console.

  --steps N              how many steps in all; 5000 without it
  --seed S               the first day's number; 1 without it
  --springboard PROGRAM  the springboard of another build
  --tree DIR             another installed file tree
  --help                 prints this
)";

struct Options {
    std::uint64_t steps = 5000;
    std::uint64_t seed = 1;
    std::string springboard = springboardProgram();
    bool wantsHelp = false;
};

std::uint64_t numberIn(std::string_view text)
{
    std::uint64_t value = 0;
    const auto [end, error] = std::from_chars(text.begin(), text.end(), value);
    if (error != std::errc{} || end != text.end())
        throw std::invalid_argument("\"" + std::string(text) + "\" is no number");
    return value;
}

Options optionsIn(int count, char** arguments)
{
    Options options;
    for (int i = 1; i < count; ++i) {
        const std::string_view name = arguments[i];
        if (name == "--help") {
            options.wantsHelp = true;
            continue;
        }
        if (i + 1 == count)
            throw std::invalid_argument("what is \"" + std::string(name) + "\"? --help lists the options");
        const std::string_view value = arguments[++i];
        if (name == "--steps")
            options.steps = numberIn(value);
        else if (name == "--seed")
            options.seed = numberIn(value);
        else if (name == "--springboard")
            options.springboard = value;
        else if (name == "--tree")
            ::setenv("SOLVANE_PHONE_TREE", arguments[i], 1);
        else
            throw std::invalid_argument("what is \"" + std::string(name) + "\"? --help lists the options");
    }
    return options;
}

/// Whether all days went as they should.
bool playDays(const Options& options)
{
    constexpr std::uint64_t stepsOfADay = 1000;
    constexpr std::uint64_t stepsBetweenReports = 10 * stepsOfADay;
    const DayPlayer player(options.springboard);
    for (std::uint64_t done = 0, seed = options.seed; done < options.steps; done += stepsOfADay, ++seed) {
        Chance chance(seed);
        const Setting setting = randomSetting(chance);
        std::vector<Step> steps = randomDay(chance, std::min(stepsOfADay, options.steps - done));
        const auto difference = player.play(setting, steps);
        if (!difference) {
            if ((done + stepsOfADay) % stepsBetweenReports == 0)
                std::cerr << done + stepsOfADay << " steps so far\n";
            continue;
        }
        std::cout << "day " << seed << " goes wrong at step " << difference->step << ":\n" << difference->what << std::flush;
        steps.resize(std::min(steps.size(), difference->step));
        steps = shortened(player, setting, steps);
        const auto shortest = player.play(setting, steps);
        std::cout << "\nthe shortest script, of " << steps.size() << " steps:\n"
                  << player.script(setting, steps) << "\nwhat differs then:\n"
                  << (shortest ? shortest->what : "nothing any more\n");
        return false;
    }
    return true;
}

} // namespace

int main(int count, char** arguments)
{
    try {
        const Options options = optionsIn(count, arguments);
        if (options.wantsHelp) {
            std::cout << usage;
            return 0;
        }
        const auto begin = std::chrono::steady_clock::now();
        if (!playDays(options))
            return 1;
        const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - begin;
        std::cout << options.steps << " steps from day " << options.seed << ": as they should be, "
                  << static_cast<long>(static_cast<double>(options.steps) / taken.count()) << " a second\n";
        return 0;
    } catch (const std::exception& error) {
        std::cerr << "random_days: " << error.what() << '\n';
        return 2;
    }
}
