#include <cstdio>
#include <exception>
#include <filesystem>
#include <iostream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Foundation/NSDictionary.hpp"
#include "platform/runtime/AutoreleasePool.hpp"
#include "simulator/foundation/phone_root.hpp"
#include "simulator/foundation/property_lists.hpp"
#include "simulator/foundation/strings.hpp"
#include "simulator/services/darwin_notifications.hpp"
#include "tools/solvane-settings/preferences.hpp"

/// `solvane-settings --root DIR ...` is the settings pane of the phone on that root folder: it writes the preferences file and
/// tells SpringBoard.

namespace simulator {

namespace {

constexpr const char* usage = "usage: solvane-settings --root DIR name TEXT [--respring]\n"
                              "       solvane-settings --root DIR forget [--respring]\n"
                              "       solvane-settings --root DIR show\n"
                              "\n"
                              "  name TEXT   the name that the greetings use\n"
                              "  forget      no name: the greetings say Pal\n"
                              "  show        prints the name\n"
                              "  --respring  relaunches SpringBoard, so that the greetings are made anew\n";

int fail(const std::string& what)
{
    std::cerr << "solvane-settings: " << what << "\n\n" << usage;
    return 2;
}

/// Gives the exit status.
int tellSpringBoard(bool respring)
{
    Posting posting = postDarwinNotification(phoneRoot(), "loadSolvaneS");
    if (posting.reached == 0 && posting.failures.empty())
        std::cerr << "solvane-settings: no SpringBoard runs on this root: the next one reads the settings when it starts\n";
    if (respring && posting.failures.empty())
        posting = postDarwinNotification(phoneRoot(), "RespringSV");
    for (const std::string& failure : posting.failures)
        std::cerr << "solvane-settings: the settings are written, but not everybody was told: " << failure << '\n';
    return posting.failures.empty() ? 0 : 1;
}

void showName()
{
    NSDictionary* const settings = readPropertyList(onThisMachine(preferencesFile));
    NSObject* const name = settings->objectForKey(constantString<"Name">());
    std::cout << (name == nullptr ? "Pal (no name is set)" : toUTF8(name->description())) << '\n';
}

int run(std::vector<std::string> words)
{
    const bool respring = std::erase(words, "--respring") != 0;
    if (words.size() < 3 || words[0] != "--root")
        return fail("a root folder and a command are needed");
    std::error_code failure;
    if (!std::filesystem::is_directory(std::filesystem::path(words[1]) / "Library", failure))
        return fail(words[1] + " is not a phone's file tree");
    setPhoneRoot(words[1]);

    const std::string& command = words[2];
    if (command == "show" && words.size() == 3 && !respring) {
        showName();
        return 0;
    }
    if (command == "name" && words.size() == 4 && !isUTF8(words[3]))
        return fail("the name is not UTF-8");
    if (command == "name" && words.size() == 4)
        writePreferredName(words[3]);
    else if (command == "forget" && words.size() == 3)
        writePreferredName(std::nullopt);
    else
        return fail("this is no command: " + command);
    return tellSpringBoard(respring);
}

} // namespace

} // namespace simulator

int main(int count, char** words)
{
    if (count == 2 && std::string_view(words[1]) == "--help") {
        std::cout << simulator::usage;
        return 0;
    }
    const AutoreleasePool pool;
    try {
        const int status = simulator::run({words + 1, words + count});
        if (!std::cout.flush())
            throw std::runtime_error("standard output cannot be written");
        return status;
    } catch (const std::exception& error) {
        std::cerr << "solvane-settings: " << error.what() << '\n';
    } catch (...) {
        std::cerr << "solvane-settings: an exception was raised\n";
    }
    return 1;
}
