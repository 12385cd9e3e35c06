#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "tests/random_days/happenings.hpp"
#include "tests/support/PhoneTree.hpp"

/// Days of a phone, each a process: its steps become a script, and after each of them the phone's state, its log and its
/// answers are compared with what the model says.
class DayPlayer {
public:
    /// Of the build that the program belongs to.
    explicit DayPlayer(std::filesystem::path springboard);

    /// Where a day went wrong.
    struct Difference {
        /// The number of steps that were right.
        std::size_t step;
        /// What differs, a line for each thing, or what the process said when it ended.
        std::string what;
    };

    /// None when all is as it should be.
    std::optional<Difference> play(const Setting& setting, const std::vector<Step>& steps) const;

    /// The day as a script for the console, and the command that plays it.
    std::string script(const Setting& setting, const std::vector<Step>& steps) const;

private:
    std::vector<std::string> commandLine(const Setting& setting, const std::string& root, const std::string& script) const;

    std::filesystem::path springboard_;
    std::filesystem::path probe_;
    PhoneTree tree_;
};

/// The shortest part of a day that goes wrong too, though it may go wrong in another way.
std::vector<Step> shortened(const DayPlayer& player, const Setting& setting, std::vector<Step> steps);
