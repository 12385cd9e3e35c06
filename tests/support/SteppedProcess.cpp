#include "tests/support/SteppedProcess.hpp"

#include <cerrno>
#include <csignal>
#include <stdexcept>
#include <sys/ptrace.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr int cannotBeFollowed = 99;

[[noreturn]] void runFollowed(const std::function<void()>& work)
{
    if (::ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0)
        ::_exit(cannotBeFollowed);
    ::raise(SIGSTOP);
    work();
    ::_exit(0);
}

int waitFor(pid_t process)
{
    int status = 0;
    while (::waitpid(process, &status, 0) < 0 && errno == EINTR)
        ;
    return status;
}

} // namespace

bool killAtSystemCall(long number, const std::function<void()>& work)
{
    const pid_t process = ::fork();
    if (process < 0)
        throw std::runtime_error("no process can be started");
    if (process == 0)
        runFollowed(work);

    int status = waitFor(process);
    if (WIFEXITED(status))
        throw std::runtime_error("no process can be followed here");
    // A stop at each call's beginning and one at its end; a call that ends the process has no end.
    for (long stops = 0; WIFSTOPPED(status); ++stops) {
        if (stops == 2 * number + 1) {
            ::kill(process, SIGKILL);
            waitFor(process);
            return true;
        }
        ::ptrace(PTRACE_SYSCALL, process, nullptr, nullptr);
        status = waitFor(process);
    }
    return false;
}
