#include "tools/solvane-settings/options.hpp"

#include <algorithm>
#include <iterator>
#include <stdexcept>
#include <string_view>
#include <system_error>

#include "simulator/foundation/strings.hpp"

namespace simulator {

const char* const settingsUsage = "usage: solvane-settings --root DIR [OPTION ...] name TEXT\n"
                                  "       solvane-settings --root DIR [OPTION ...] forget | show | relaunch\n"
                                  "       solvane-settings --root DIR --screenshot FILE\n"
                                  "\n"
                                  "Opens Solvane's page of the phone's Settings and uses it.\n"
                                  "\n"
                                  "  name TEXT          the name that the greetings use\n"
                                  "  forget             no name: the greetings say Pal\n"
                                  "  show               prints the name\n"
                                  "  relaunch           relaunches SpringBoard, so that the greetings are made anew\n"
                                  "  --respring         does that after a name was given or forgotten\n"
                                  "  --screenshot FILE  draws the page as it stands at the end\n"
                                  "  --screen WxH[@S]   the screen in points and its scale; 320x568@2 without it\n";

namespace {

struct Option {
    std::string_view name;
    bool takesValue;
    void (*set)(SettingsOptions& options, const std::string& value);
};

constexpr Option optionTable[] = {
    {"--root", true, [](SettingsOptions& options, const std::string& value) { options.root = value; }},
    {"--respring", false, [](SettingsOptions& options, const std::string&) { options.respring = true; }},
    {"--screenshot", true, [](SettingsOptions& options, const std::string& value) { options.picture = value; }},
    {"--screen", true, [](SettingsOptions& options, const std::string& value) { options.screen = parseScreenSize(value); }},
};

struct Command {
    std::string_view name;
    std::size_t words;
    bool canRespring;
};

constexpr Command commandTable[] = {{"name", 2, true}, {"forget", 1, true}, {"show", 1, false}, {"relaunch", 1, false}};

void checkCommand(const SettingsOptions& options)
{
    const auto& words = options.command;
    if (words.empty() && options.picture && !options.respring)
        return;
    if (words.empty())
        throw std::invalid_argument("a root folder and a command are needed");
    const auto command = std::ranges::find(commandTable, words[0], &Command::name);
    if (command == std::end(commandTable) || words.size() != command->words || (options.respring && !command->canRespring))
        throw std::invalid_argument("this is no command: " + words[0]);
    if (words.size() == 2 && !isUTF8(words[1]))
        throw std::invalid_argument("the name is not UTF-8");
}

} // namespace

SettingsOptions readSettingsOptions(const std::vector<std::string>& words)
{
    SettingsOptions options;
    for (auto word = words.begin(); word != words.end(); ++word) {
        const auto option = std::ranges::find(optionTable, *word, &Option::name);
        if (option == std::end(optionTable)) {
            options.command.push_back(*word);
            // What follows is a text, however it begins.
            if (*word == "name" && options.command.size() == 1 && std::next(word) != words.end())
                options.command.push_back(*++word);
            continue;
        }
        if (option->takesValue && std::next(word) == words.end())
            throw std::invalid_argument(*word + " needs a value");
        option->set(options, option->takesValue ? *++word : std::string());
    }
    if (options.root.empty())
        throw std::invalid_argument("a root folder and a command are needed");
    std::error_code failure;
    if (!std::filesystem::is_directory(options.root / "Library", failure))
        throw std::invalid_argument(options.root.native() + " is not a phone's file tree");
    checkCommand(options);
    return options;
}

} // namespace simulator
