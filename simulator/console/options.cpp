#include "simulator/console/options.hpp"

#include <algorithm>
#include <stdexcept>
#include <string_view>

namespace simulator {

namespace {

void setScreen(Options& options, const std::string& text)
{
    options.screen = parseScreenSize(text);
}

void setSystem(Options& options, const std::string& version)
{
    const auto system = systemOfVersion(version);
    if (!system)
        throw std::invalid_argument("--system: \"" + version + "\" is none of " + systemVersions());
    options.system = *system;
}

struct Option {
    std::string_view name;
    /// Empty for an option without a value.
    std::string_view value;
    std::string_view meaning;
    void (*set)(Options& options, const std::string& value);
};

constexpr Option table[] = {
    {"--root", "DIR", "the phone's file tree; a new or empty folder is filled with the installed one",
     [](Options& options, const std::string& value) { options.root = value; }},
    {"--screen", "WxH[@S]", "the screen in points and its scale; 320x568@2 without it", setScreen},
    {"--system", "VERSION", "the system that the phone runs: 7.0|7.0.4|7.1|8.1|8.4; 8.1 without it", setSystem},
    {"--geometry", "WHERE",
     "where the stock lock screen's parts stand: desk, as without it, phone, or a file with a phone's report",
     [](Options& options, const std::string& value) { options.geometry = value; }},
    {"--script", "FILE", "the commands to run, - for standard input; without it a window, or a scene that takes a picture",
     [](Options& options, const std::string& value) { options.script = value; }},
    {"--window", "", "shows the screen in a window, behind the script if there is one; so does a display without a script",
     [](Options& options, const std::string&) { options.wantsWindow = true; }},
    {"--tour", "DIR", "plays one day of a lock screen and leaves its pictures and a page that shows them in the folder",
     [](Options& options, const std::string& value) { options.tour = value; }},
    {"--load", "FILE", "one more library to inject, after those of the file tree; may be given again",
     [](Options& options, const std::string& value) { options.libraries.emplace_back(value); }},
    {"--help", "", "prints this", [](Options& options, const std::string&) { options.wantsHelp = true; }},
    {"--version", "", "prints the version", [](Options& options, const std::string&) { options.wantsVersion = true; }},
};

} // namespace

Options readOptions(std::span<char* const> arguments)
{
    Options options;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string argument = arguments[i];
        const std::size_t equals = argument.find('=');
        const std::string name = argument.substr(0, equals);
        const auto option = std::ranges::find(table, name, &Option::name);
        if (option == std::end(table))
            throw std::invalid_argument("unknown option \"" + argument + "\"; --help lists the options");

        std::string value;
        const bool takesValue = !option->value.empty();
        if (equals != std::string::npos)
            value = argument.substr(equals + 1);
        else if (takesValue && i + 1 < arguments.size())
            value = arguments[++i];
        if (takesValue == value.empty())
            throw std::invalid_argument(name +
                                        (takesValue ? " needs a value: " + std::string(option->value) : " takes no value"));
        option->set(options, value);
    }
    return options;
}

std::string optionUsages()
{
    constexpr std::size_t columnWidth = 20;
    std::string usages;
    for (const Option& option : table) {
        std::string usage = "  " + std::string(option.name) + ' ' + std::string(option.value);
        usage.resize(std::max(columnWidth, usage.size()), ' ');
        usages += usage + "  " + std::string(option.meaning) + '\n';
    }
    return usages;
}

} // namespace simulator
