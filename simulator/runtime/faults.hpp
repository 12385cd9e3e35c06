#pragma once

/// Faults of the processor: memory that is not there, a stack that has run out. A person at the console can ask for one with a
/// single message to an object that is not what it is taken for; and the libraries that this program stands on end it so when
/// they get no memory.
namespace simulator {

/// From here on, a fault ends the process with status 2, and standard error says what it was: in a command with the line's
/// number, at any other time with the program's name. To be called once, first.
void reportFaults();

/// What runs in this scope is the line of that number.
class LineAtWork {
public:
    explicit LineAtWork(long number);
    LineAtWork(const LineAtWork&) = delete;
    LineAtWork& operator=(const LineAtWork&) = delete;
    ~LineAtWork();
};

} // namespace simulator
