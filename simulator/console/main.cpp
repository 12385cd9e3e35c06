#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <iostream>
#include <optional>
#include <span>
#include <system_error>
#include <unistd.h>

#include "platform/runtime/AutoreleasePool.hpp"
#include "simulator/console/Script.hpp"
#include "simulator/console/Window.hpp"
#include "simulator/console/commands.hpp"
#include "simulator/console/geometry_report.hpp"
#include "simulator/console/options.hpp"
#include "simulator/console/raised_exception.hpp"
#include "simulator/console/relaunch.hpp"
#include "simulator/console/root_folder.hpp"
#include "simulator/console/tour_page.hpp"
#include "simulator/console/words.hpp"
#include "simulator/foundation/phone_root.hpp"
#include "simulator/foundation/surroundings.hpp"
#include "simulator/foundation/system_log.hpp"
#include "simulator/loader/injection.hpp"
#include "simulator/runtime/faults.hpp"
#include "simulator/services/darwin_notifications.hpp"
#include "simulator/springboard/SpringBoard.hpp"

/// The process `springboard`: a phone's lock screen, run by a script of commands.

namespace simulator {

namespace {

namespace fs = std::filesystem;

constexpr int success = 0;
constexpr int failure = 2;

void printHelp()
{
    std::cout << "usage: springboard [OPTION ...]\n\n"
              << optionUsages() << "\nA script has one command a line; # begins a comment.\n\n"
              << commandUsages();
}

fs::path installedScript(const fs::path& programFolder, const std::string& name)
{
    return programFolder / "share" / (name + ".txt");
}

/// Gives the root folder, ready for use. The files of a phone that only relaunches are left alone.
fs::path prepareRoot(const Options& options, const fs::path& programFolder, bool isRelaunched)
{
    const fs::path installedTree = programFolder / "phone";
    const fs::path root = options.root.value_or(programFolder / (options.tour ? "tour-root" : "root"));
    if (!isRelaunched) {
        // The tour begins with a phone that is as it was bought.
        if (options.tour && !options.root)
            fs::remove_all(root);
        if (options.root)
            prepareChosenRoot(root, installedTree);
        else
            updateRoot(root, installedTree);
    }
    return fs::canonical(root);
}

bool opensWindow(const Options& options)
{
    return options.wantsWindow || (!options.script && !options.tour && hasDisplay());
}

fs::path scriptOf(const Options& options, const fs::path& programFolder)
{
    if (options.script)
        return *options.script;
    if (options.tour)
        return installedScript(programFolder, "tour");
    return installedScript(programFolder, opensWindow(options) ? "window" : "scene");
}

Script::Position openScript(const Options& options, const fs::path& programFolder)
{
    const fs::path file = scriptOf(options, programFolder);
    if (file == "-")
        return {STDIN_FILENO, 0, {}};
    // Left open over a relaunch.
    const int descriptor = ::open(file.c_str(), O_RDONLY);
    if (descriptor < 0)
        throw std::system_error(errno, std::generic_category(), "cannot open the script " + file.string());
    return {descriptor, 0, {}};
}

int runScript(Console& console, Script& script)
{
    std::string problem;
    while (!console.hasQuit && problem.empty()) {
        const AutoreleasePool pool;
        forgetRaisedException();
        try {
            const auto line = script.nextLine();
            if (!line)
                break;
            const LineAtWork atWork(script.lineNumber());
            const AutoreleasePool ofTheLine;
            runCommand(console, splitWords(*line));
        } catch (const std::exception& error) {
            problem = error.what();
        } catch (...) {
            problem = describeRaisedException();
        }
    }
    if (problem.empty())
        return success;
    std::cerr << "line " << script.lineNumber() << ": " << problem << '\n';
    return failure;
}

/// The file that started this process: the program itself, or the launcher that told of itself.
fs::path startedFile()
{
    constexpr const char* variable = "SOLVANE_LAUNCHER";
    const char* const launcher = std::getenv(variable);
    if (launcher == nullptr)
        return fs::read_symlink("/proc/self/exe");
    const fs::path file = launcher;
    // What this process starts was not started by it.
    ::unsetenv(variable);
    return file;
}

/// Starts SpringBoard and lets it live as long as its script.
int runSpringBoard(const Options& options, char** arguments)
{
    const fs::path program = startedFile();
    const fs::path folder = program.parent_path();
    chooseGeometry(geometryNamed(options.geometry, options.screen));
    const auto continuation = takeContinuation();
    Script script(continuation ? continuation->script : openScript(options, folder));
    setPhoneRoot(prepareRoot(options, folder, continuation.has_value()));

    const AutoreleasePool pool;
    rememberRaisedExceptions();
    if (continuation)
        surroundings() = continuation->surroundings;
    openSystemLog();
    choosePhoneSystem(options.system);
    launchSpringBoard(options.screen);
    openDarwinNotifications();
    std::optional<Window> window;
    setRelaunchHandler([&] {
        window.reset();
        relaunch(program, arguments, script);
    });
    injectLibraries(options.libraries);
    if (continuation && continuation->isLocked)
        lockScreen();

    Console console;
    if (options.tour) {
        fs::create_directories(*options.tour);
        console.pictureFolder = *options.tour;
    }
    const int status = runScript(console, script);
    if (status != success || console.hasQuit)
        return status;
    if (options.tour)
        writeTourPage(installedScript(folder, "tour"), *options.tour);
    if (opensWindow(options)) {
        window.emplace(console);
        window->run();
    }
    return success;
}

int run(std::span<char*> arguments)
{
    const Options options = readOptions(arguments.subspan(1));
    if (options.wantsHelp)
        printHelp();
    else if (options.wantsVersion)
        std::cout << "springboard " SOLVANE_VERSION "\n";
    else
        return runSpringBoard(options, arguments.data());
    if (!std::cout.flush())
        throw std::runtime_error("standard output cannot be written");
    return success;
}

} // namespace

} // namespace simulator

int main(int count, char** arguments)
{
    simulator::reportFaults();
    try {
        return simulator::run({arguments, static_cast<std::size_t>(count)});
    } catch (const std::exception& error) {
        std::cerr << "springboard: " << error.what() << '\n';
    } catch (...) {
        std::cerr << "springboard: " << simulator::describeRaisedException() << '\n';
    }
    return simulator::failure;
}
