#include "tests/support/Console.hpp"

#include <array>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <sstream>
#include <thread>
#include <unistd.h>

namespace fs = std::filesystem;

Json ConsoleRun::line() const
{
    EXPECT_EQ(lines.size(), 1U) << output;
    return lines.size() == 1 ? lines.front() : Json(Json::value_t::discarded);
}

ConsoleRun consoleRun(Outcome outcome)
{
    ConsoleRun run{{}, std::move(outcome.output), std::move(outcome.errors), outcome.status};
    std::istringstream stream(run.output);
    for (std::string line; std::getline(stream, line);) {
        run.lines.push_back(Json::parse(line, nullptr, false));
        EXPECT_FALSE(run.lines.back().is_discarded()) << "not JSON: " << line;
    }
    return run;
}

namespace {

std::vector<std::string> commandLine(const fs::path& root, const std::string& script, const std::vector<std::string>& options)
{
    std::vector<std::string> words{springboardProgram(), "--root", root, "--script", script};
    for (const auto& more : {springboardOptions(), options})
        words.insert(words.end(), more.begin(), more.end());
    return words;
}

struct Pipe {
    std::array<int, 2> ends{-1, -1};
    Pipe()
    {
        if (::pipe2(ends.data(), O_CLOEXEC) != 0)
            throw std::runtime_error("cannot make a pipe");
    }
};

} // namespace

ConsoleRun Console::run(const std::string& script) const
{
    const fs::path file = root().parent_path() / "script.txt";
    writeFile(file, script);
    return consoleRun(runProgram(commandLine(root(), file, options), environment));
}

ConsoleRun Console::runFromPipe(const std::string& script) const
{
    // `cat` makes the input a pipe, which cannot be wound back.
    const fs::path file = root().parent_path() / "script.txt";
    writeFile(file, script);
    std::vector<std::string> words{"/bin/sh", "-c", "cat \"$0\" | exec \"$@\"", file};
    const auto springboard = commandLine(root(), "-", options);
    words.insert(words.end(), springboard.begin(), springboard.end());
    return consoleRun(runProgram(words, environment));
}

void Console::uninstallLibrary() const
{
    for (const char* file : {"Solvane.dylib", "Solvane.plist"})
        fs::remove(tree_.libraryFolder() / file);
}

std::vector<Json> linesOf(const Console& console, const std::string& script)
{
    ConsoleRun run = console.run(script);
    EXPECT_EQ(run.errors, "");
    EXPECT_EQ(run.status, 0);
    return run.lines;
}

Json lineOf(const Console& console, const std::string& script)
{
    const std::vector<Json> lines = linesOf(console, script);
    EXPECT_EQ(lines.size(), 1U);
    return lines.empty() ? Json(Json::value_t::discarded) : lines.front();
}

LiveConsole::LiveConsole(const fs::path& root, const Environment& additions)
{
    const Pipe input;
    const Pipe output;
    process_ = std::make_unique<Process>(commandLine(root, "-", {}), additions, input.ends[0], output.ends[1], STDERR_FILENO);
    ::close(input.ends[0]);
    ::close(output.ends[1]);
    input_ = input.ends[1];
    output_ = output.ends[0];
}

LiveConsole::~LiveConsole()
{
    if (input_ >= 0)
        ::close(input_);
    ::close(output_);
}

void LiveConsole::type(const std::string& command)
{
    typePart(command + '\n');
}

void LiveConsole::typePart(const std::string& characters)
{
    if (::write(input_, characters.data(), characters.size()) != static_cast<ssize_t>(characters.size()))
        throw std::runtime_error("springboard does not read");
}

Json LiveConsole::ask(const std::string& command)
{
    type(command);
    return Json::parse(readLine());
}

int LiveConsole::end()
{
    ::close(input_);
    input_ = -1;
    return process_->wait();
}

std::string LiveConsole::readLine()
{
    constexpr int patience = 60'000;
    std::size_t end;
    while ((end = unread_.find('\n')) == std::string::npos) {
        pollfd waited{output_, POLLIN, 0};
        std::array<char, 4096> block;
        const ssize_t count = ::poll(&waited, 1, patience) > 0 ? ::read(output_, block.data(), block.size()) : 0;
        if (count <= 0)
            throw std::runtime_error("springboard does not answer");
        unread_.append(block.data(), static_cast<std::size_t>(count));
    }
    std::string line = unread_.substr(0, end);
    unread_.erase(0, end + 1);
    return line;
}

Outcome postFromOutside(const fs::path& root, const std::string& name)
{
    return runProgram({notifypostProgram(), "--root", root, name});
}
