#include "tests/support/programs.hpp"

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <spawn.h>
#include <stdexcept>
#include <sys/mman.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

extern char** environ;

namespace {

constexpr auto longestRun = std::chrono::seconds(60);

std::vector<std::string> environmentWith(const Environment& additions)
{
    std::vector<std::string> variables;
    for (char** variable = environ; *variable != nullptr; ++variable) {
        const std::string text = *variable;
        if (!additions.contains(text.substr(0, text.find('='))))
            variables.push_back(text);
    }
    for (const auto& [name, value] : additions)
        variables.push_back(name + '=' + value);
    return variables;
}

std::vector<char*> pointersTo(std::vector<std::string>& texts)
{
    std::vector<char*> pointers;
    for (std::string& text : texts)
        pointers.push_back(text.data());
    pointers.push_back(nullptr);
    return pointers;
}

/// An unnamed file in memory.
class Scratch {
public:
    Scratch() : descriptor_(::memfd_create("scratch", MFD_CLOEXEC)) {}
    ~Scratch() { ::close(descriptor_); }
    int descriptor() const { return descriptor_; }

    void write(const std::string& text) const
    {
        if (::write(descriptor_, text.data(), text.size()) != static_cast<ssize_t>(text.size()))
            throw std::runtime_error("cannot write a scratch file");
        ::lseek(descriptor_, 0, SEEK_SET);
    }

    std::string read() const
    {
        std::string text(static_cast<std::size_t>(::lseek(descriptor_, 0, SEEK_END)), '\0');
        if (::pread(descriptor_, text.data(), text.size(), 0) != static_cast<ssize_t>(text.size()))
            throw std::runtime_error("cannot read a scratch file");
        return text;
    }

private:
    int descriptor_;
};

} // namespace

std::string springboardProgram()
{
    return SPRINGBOARD_PROGRAM;
}

std::vector<std::string> springboardOptions()
{
    const char* const system = std::getenv("SOLVANE_SYSTEM");
    return system == nullptr ? std::vector<std::string>{} : std::vector<std::string>{"--system", system};
}

std::string notifypostProgram()
{
    return NOTIFYPOST_PROGRAM;
}

std::string pythonProgram()
{
    return PYTHON_PROGRAM;
}

Process::Process(const std::vector<std::string>& words, const Environment& additions, int input, int output, int errors)
{
    std::vector<std::string> arguments = words;
    std::vector<std::string> variables = environmentWith(additions);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, input, STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&actions, output, STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions, errors, STDERR_FILENO);
    const int failure = posix_spawn(&number_, words.front().c_str(), &actions, nullptr, pointersTo(arguments).data(),
                                    pointersTo(variables).data());
    posix_spawn_file_actions_destroy(&actions);
    if (failure != 0)
        throw std::runtime_error("cannot start " + words.front() + ": " + std::strerror(failure));
}

Process::~Process()
{
    if (number_ < 0)
        return;
    ::kill(number_, SIGKILL);
    ::waitpid(number_, nullptr, 0);
}

int Process::wait()
{
    const auto end = std::chrono::steady_clock::now() + longestRun;
    int status = 0;
    while (::waitpid(number_, &status, WNOHANG) == 0) {
        if (std::chrono::steady_clock::now() > end)
            throw std::runtime_error("the process does not end");
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
    number_ = -1;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

Outcome runProgram(const std::vector<std::string>& words, const Environment& additions, const std::string& input)
{
    const Scratch inputFile;
    const Scratch output;
    const Scratch errors;
    inputFile.write(input);
    Process process(words, additions, inputFile.descriptor(), output.descriptor(), errors.descriptor());
    const int status = process.wait();
    return {output.read(), errors.read(), status};
}
