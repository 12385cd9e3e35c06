#pragma once

#include <chrono>
#include <map>
#include <string>
#include <sys/types.h>
#include <vector>

/// Other programs, run as processes.

using Environment = std::map<std::string, std::string>;

/// How a program ended.
struct Outcome {
    std::string output;
    std::string errors;
    /// The exit status; minus the signal's number when a signal ended it.
    int status = 0;
};

std::string springboardProgram();
/// The options of every springboard that a test starts: the system that SOLVANE_SYSTEM names, if it names one.
std::vector<std::string> springboardOptions();
std::string notifypostProgram();
std::string pythonProgram();

/// A process of ours. It is killed with the object when it has not ended by then.
class Process {
public:
    /// The descriptors become the program's standard input, output and error.
    Process(const std::vector<std::string>& words, const Environment& additions, int input, int output, int errors);
    Process(const Process&) = delete;
    Process& operator=(const Process&) = delete;
    ~Process();

    pid_t number() const { return number_; }
    /// Throws std::runtime_error when the process has not ended in time.
    int wait();

private:
    pid_t number_ = -1;
};

/// Runs a program to its end with that standard input. The environment is ours with the additions.
Outcome runProgram(const std::vector<std::string>& words, const Environment& additions = {}, const std::string& input = "");
