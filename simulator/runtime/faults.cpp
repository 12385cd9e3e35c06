#include "simulator/runtime/faults.hpp"

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <string_view>
#include <sys/resource.h>
#include <unistd.h>

namespace simulator {

namespace {

struct Fault {
    int signal;
    std::string_view meaning;
};

constexpr Fault faults[] = {
    {SIGSEGV, "reached memory that is not there"},
    {SIGBUS, "reached memory that is not there"},
    {SIGFPE, "divided by zero"},
    {SIGILL, "ran what is no code"},
    {SIGABRT, "gave up"},
    {SIGTRAP, "gave up"},
};

/// What a handler may look at: nothing is made or asked for any more once there is a fault.
struct Prepared {
    std::array<char, 32> line{};
    std::atomic<std::size_t> lineLength = 0;
    std::uintptr_t stackEnd = 0;
    std::array<char, std::size_t{64} << 10> stack{};
};

Prepared& prepared()
{
    static constinit Prepared all;
    return all;
}

void say(std::string_view text)
{
    [[maybe_unused]] const ssize_t written = ::write(STDERR_FILENO, text.data(), text.size());
}

std::string_view meaningOf(int signal, const siginfo_t* about)
{
    // A large frame may step over the pages that guard the stack's end.
    constexpr std::uintptr_t near = std::uintptr_t{1} << 20;
    const auto address = reinterpret_cast<std::uintptr_t>(about->si_addr);
    const std::uintptr_t end = prepared().stackEnd;
    if (signal == SIGSEGV && end != 0 && address + near > end && address < end + near)
        return "ran out of stack";
    for (const Fault& fault : faults) {
        if (fault.signal == signal)
            return fault.meaning;
    }
    return "failed";
}

void report(int signal, siginfo_t* about, void*)
{
    if (const std::size_t lineLength = prepared().lineLength; lineLength != 0) {
        say(std::string_view(prepared().line.data(), lineLength));
    } else {
        say(program_invocation_short_name);
        say(": ");
    }
    say(meaningOf(signal, about));
    say("\n");
    constexpr int failure = 2;
    ::_exit(failure);
}

/// Near enough: how far the stack may grow from here. 0 when there is no limit.
std::uintptr_t endOfStack()
{
    rlimit limit{};
    if (::getrlimit(RLIMIT_STACK, &limit) != 0 || limit.rlim_cur == RLIM_INFINITY)
        return 0;
    return reinterpret_cast<std::uintptr_t>(__builtin_frame_address(0)) - static_cast<std::uintptr_t>(limit.rlim_cur);
}

} // namespace

void reportFaults()
{
    // One that has run out cannot be stood on.
    stack_t stack{};
    stack.ss_sp = prepared().stack.data();
    stack.ss_size = prepared().stack.size();
    ::sigaltstack(&stack, nullptr);
    prepared().stackEnd = endOfStack();

    struct sigaction action{};
    action.sa_sigaction = report;
    action.sa_flags = SA_SIGINFO | SA_ONSTACK;
    for (const Fault& fault : faults)
        ::sigaction(fault.signal, &action, nullptr);
}

LineAtWork::LineAtWork(long number)
{
    auto& line = prepared().line;
    prepared().lineLength = static_cast<std::size_t>(std::snprintf(line.data(), line.size(), "line %ld: ", number));
}

LineAtWork::~LineAtWork()
{
    prepared().lineLength = 0;
}

} // namespace simulator
