#pragma once

/// Faults of the processor: memory that is not there, a stack that has run out. A person at the console can ask for one with a
/// single message to an object that is not what it is taken for.
namespace simulator {

/// From here on, a fault in a command ends the process with status 2, and standard error says in which line. One at any other
/// time is told as well, and ends it as the system does. To be called once.
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
