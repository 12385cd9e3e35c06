#include "simulator/console/Command.hpp"

#include "platform/UIKit/UIWindow.hpp"
#include "simulator/console/BadLine.hpp"
#include "simulator/console/arguments.hpp"
#include "simulator/console/invoke.hpp"
#include "simulator/console/report.hpp"
#include "simulator/springboard/SpringBoard.hpp"

/// The objects of the process: looked at, sent messages, kept under a name.

namespace simulator {

namespace {

Value sentMessage(const Console& console, Words arguments)
{
    const auto objectOf = [&](const std::string& path) { return objectAtPath(path, console.kept); };
    return invoke(objectOf(arguments[0]), arguments[1], arguments.subspan(2), objectOf);
}

void show(Console& console, Words arguments)
{
    report(inspect(valueAtPath(arguments[0], console.kept)));
}

void showTree(Console& console, Words arguments)
{
    const std::string path = arguments.empty() ? "window" : arguments[0];
    const id object = objectAtPath(path, console.kept);
    report(inspectTree(object == nullptr ? nullptr : viewIn(object, path)));
}

void sendMessage(Console& console, Words arguments)
{
    report(inspect(sentMessage(console, arguments)));
}

void keep(Console& console, Words arguments)
{
    const std::string& name = arguments[0];
    const bool sends = arguments[1] == "send";
    if (sends ? arguments.size() < 4 : arguments.size() != 2)
        throw WrongUsage();
    if (!canBeKeptAs(name))
        throw BadLine('"' + name + "\" cannot be a kept object's name");
    const Value value = sends ? sentMessage(console, arguments.subspan(2)) : valueAtPath(arguments[1], console.kept);
    console.kept[name] = objectIn(value, "what \"" + name + "\" would keep");
}

void addToWindow(Console& console, Words arguments)
{
    const auto kept = console.kept.find(arguments[0]);
    if (kept == console.kept.end())
        throw BadLine("no object is kept as \"" + arguments[0] + '"');
    const auto origin = pointIn(arguments[1]);
    if (!origin)
        throw BadLine('"' + arguments[1] + "\" is no point: write X,Y");
    UIView* const view = viewIn(kept->second, arguments[0]);
    view->setFrame({*origin, view->frame().size});
    springBoardWindow()->addSubview(view);
}

} // namespace

std::span<const Command> objectCommands()
{
    static constexpr Command commands[] = {
        {"show", "PATH", 1, 1, false, show},
        {"tree", "[PATH]", 0, 1, false, showTree},
        {"send", "PATH SELECTOR [ARG ...]", 2, anyNumber, false, sendMessage},
        {"let", "NAME PATH | NAME send PATH SELECTOR [ARG ...]", 2, anyNumber, false, keep},
        {"add", "NAME X,Y", 2, 2, false, addToWindow},
    };
    return commands;
}

} // namespace simulator
