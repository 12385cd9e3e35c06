#pragma once

#include <filesystem>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "tests/support/PhoneTree.hpp"
#include "tests/support/programs.hpp"

using Json = nlohmann::json;

/// What a run of springboard gave.
struct ConsoleRun {
    /// One for each line of standard output. A line that is no JSON fails the test.
    std::vector<Json> lines;
    std::string output;
    std::string errors;
    int status = 0;

    /// The only line; fails the test when there is not exactly one.
    Json line() const;
};

/// A phone of its own, run by scripts.
class Console {
public:
    const PhoneTree& tree() const { return tree_; }
    const std::filesystem::path& root() const { return tree_.root(); }

    /// Options that every run gets after --root and --script.
    std::vector<std::string> options;
    /// Every run's time zone and language, unless a test says otherwise.
    Environment environment{{"TZ", "UTC"}, {"LANG", "C"}, {"LC_ALL", "C"}};

    /// Runs the script from a file.
    ConsoleRun run(const std::string& script) const;
    /// Runs it from standard input, a pipe.
    ConsoleRun runFromPipe(const std::string& script) const;

    /// Leaves the stock lock screen alone: no library is injected.
    void uninstallLibrary() const;

private:
    PhoneTree tree_;
};

ConsoleRun consoleRun(Outcome outcome);

/// Runs a script that must go through: gives its lines, and fails the test on any complaint.
std::vector<Json> linesOf(const Console& console, const std::string& script);
/// The one line that the script prints.
Json lineOf(const Console& console, const std::string& script);

/// A springboard that reads its commands as they are typed.
class LiveConsole {
public:
    explicit LiveConsole(const std::filesystem::path& root, const Environment& additions = {});
    LiveConsole(const LiveConsole&) = delete;
    LiveConsole& operator=(const LiveConsole&) = delete;
    ~LiveConsole();

    pid_t number() const { return process_->number(); }
    /// Types a command that prints nothing.
    void type(const std::string& command);
    /// Types the beginning of a line.
    void typePart(const std::string& characters);
    /// Types a command that prints a line, and gives it.
    Json ask(const std::string& command);
    /// Ends the input and gives the exit status.
    int end();

private:
    std::string readLine();

    int input_ = -1;
    int output_ = -1;
    std::string unread_;
    std::unique_ptr<Process> process_;
};

/// Posts a Darwin notification from a process of its own.
Outcome postFromOutside(const std::filesystem::path& root, const std::string& name);
