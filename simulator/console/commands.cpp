#include "simulator/console/commands.hpp"

#include "simulator/console/BadLine.hpp"
#include "simulator/console/Command.hpp"
#include "simulator/foundation/strings.hpp"
#include "simulator/springboard/SpringBoard.hpp"

namespace simulator {

namespace {

/// In the order of the help.
constexpr std::span<const Command> (*commandGroups[])() = {surroundingsCommands, lockScreenCommands, fingerCommands,
                                                           objectCommands, processCommands};

/// Null when there is none.
const Command* commandNamed(const std::string& name)
{
    for (const auto commands : commandGroups) {
        for (const Command& command : commands()) {
            if (command.name == name)
                return &command;
        }
    }
    return nullptr;
}

std::string usageOf(const Command& command)
{
    std::string usage(command.name);
    if (!command.usage.empty())
        usage.append(" ").append(command.usage);
    return usage;
}

void run(Console& console, const Command& command, Words arguments)
{
    if (arguments.size() < command.fewestArguments || arguments.size() > command.mostArguments)
        throw WrongUsage();
    if (command.needsLockScreen && lockScreenView() == nullptr)
        throw BadLine("there is no lock screen yet: lock first");
    command.run(console, arguments);
}

void checkEncoding(Words words)
{
    for (const std::string& word : words) {
        if (!isUTF8(word))
            throw BadLine("the line is not UTF-8");
    }
}

} // namespace

void runCommand(Console& console, Words words)
{
    if (words.empty())
        return;
    checkEncoding(words);
    // A command with its option is one of its own.
    std::size_t nameLength = 2;
    const Command* command = words.size() > 1 ? commandNamed(words[0] + ' ' + words[1]) : nullptr;
    if (command == nullptr) {
        nameLength = 1;
        command = commandNamed(words[0]);
    }
    if (command == nullptr)
        throw BadLine("there is no command \"" + words[0] + '"');
    try {
        run(console, *command, words.subspan(nameLength));
    } catch (const WrongUsage&) {
        throw BadLine("usage: " + usageOf(*command));
    }
}

std::string commandUsages()
{
    std::string usages;
    for (const auto commands : commandGroups) {
        for (const Command& command : commands())
            usages += "  " + usageOf(command) + '\n';
    }
    return usages;
}

} // namespace simulator
