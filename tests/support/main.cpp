#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <fnmatch.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <optional>
#include <signal.h>
#include <sstream>
#include <string>
#include <string_view>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

/// Runs each of several tests in a process of its own, since there is one phone in a process and the library keeps state for the
/// life of it. All are forked from this one, in which everything is linked and Foundation is set up already.

namespace {

/// No test takes this long, in seconds, not even under emulation on a busy machine.
constexpr int longestTest = 900;

/// Whether one of the patterns, which colons part, fits.
bool fitsOneOf(const std::string& patterns, const std::string& name)
{
    std::istringstream stream(patterns);
    for (std::string pattern; std::getline(stream, pattern, ':');)
        if (::fnmatch(pattern.c_str(), name.c_str(), 0) == 0)
            return true;
    return false;
}

/// The tests that --gtest_filter chooses.
std::vector<std::string> chosenTests()
{
    const std::string filter = GTEST_FLAG_GET(filter);
    const std::size_t dash = filter.find('-');
    const std::string wanted = dash == 0 ? "*" : filter.substr(0, dash);
    const std::string unwanted = dash == std::string::npos ? "" : filter.substr(dash + 1);
    std::vector<std::string> chosen;
    const testing::UnitTest& all = *testing::UnitTest::GetInstance();
    for (int i = 0; i < all.total_test_suite_count(); ++i) {
        const testing::TestSuite& suite = *all.GetTestSuite(i);
        for (int j = 0; j < suite.total_test_count(); ++j) {
            const std::string name = std::string(suite.name()) + "." + suite.GetTestInfo(j)->name();
            if (fitsOneOf(wanted, name) && !fitsOneOf(unwanted, name))
                chosen.push_back(name);
        }
    }
    return chosen;
}

/// Waits for the process and gives its status; nothing when it had to be ended because it took too long.
std::optional<int> statusOf(pid_t process)
{
    sigset_t children;
    sigemptyset(&children);
    sigaddset(&children, SIGCHLD);
    const timespec limit{.tv_sec = longestTest, .tv_nsec = 0};
    int status = 0;
    while (::waitpid(process, &status, WNOHANG) == 0)
        if (::sigtimedwait(&children, nullptr, &limit) < 0 && errno == EAGAIN) {
            ::kill(-process, SIGKILL);
            ::waitpid(process, nullptr, 0);
            return std::nullopt;
        }
    return status;
}

std::string ending(const std::optional<int>& status)
{
    if (!status)
        return "took more than " + std::to_string(longestTest) + " s";
    if (WIFSIGNALED(*status))
        return "ended by signal " + std::to_string(WTERMSIG(*status));
    return "ended with status " + std::to_string(WEXITSTATUS(*status));
}

/// What is printed when a test is through is all that is seen of it, unless it fails.
bool passes(const std::string& test)
{
    std::FILE* const output = std::tmpfile();
    if (output == nullptr) {
        std::perror("a temporary file for a test's output");
        return false;
    }
    std::fflush(nullptr);
    const pid_t process = ::fork();
    if (process == 0) {
        ::setpgid(0, 0);
        sigset_t none;
        sigemptyset(&none);
        ::sigprocmask(SIG_SETMASK, &none, nullptr);
        ::dup2(::fileno(output), STDOUT_FILENO);
        ::dup2(::fileno(output), STDERR_FILENO);
        GTEST_FLAG_SET(filter, test);
        std::exit(RUN_ALL_TESTS());
    }
    const std::optional<int> status = process < 0 ? std::nullopt : statusOf(process);
    const bool passed = status && WIFEXITED(*status) && WEXITSTATUS(*status) == 0;
    if (!passed) {
        std::rewind(output);
        for (int character = std::getc(output); character != EOF; character = std::getc(output))
            std::putchar(character);
    }
    std::fclose(output);
    std::printf("%s %s%s\n", passed ? "passed" : "FAILED", test.c_str(), passed ? "" : (", " + ending(status)).c_str());
    return passed;
}

} // namespace

int main(int argc, char** argv)
{
    testing::InitGoogleMock(&argc, argv);
    const std::vector<std::string> tests = chosenTests();
    if (GTEST_FLAG_GET(list_tests) || tests.size() == 1)
        return RUN_ALL_TESTS();

    // A child that ends is waited for, not handled.
    sigset_t children;
    sigemptyset(&children);
    sigaddset(&children, SIGCHLD);
    ::sigprocmask(SIG_BLOCK, &children, nullptr);
    const auto failed = std::ranges::count_if(tests, [](const std::string& test) { return !passes(test); });
    std::printf("%zu tests, %td failed\n", tests.size(), failed);
    return tests.empty() || failed != 0 ? 1 : 0;
}
