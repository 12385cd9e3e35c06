#include "simulator/console/commands.hpp"

#include <algorithm>
#include <cmath>
#include <iostream>
#include <optional>
#include <string_view>
#include <vector>

#include "platform/UIKit/UIScreen.hpp"
#include "platform/UIKit/UIView.hpp"
#include "simulator/console/BadLine.hpp"
#include "simulator/console/inspector.hpp"
#include "simulator/console/invoke.hpp"
#include "simulator/console/numbers.hpp"
#include "simulator/console/waiting.hpp"
#include "simulator/foundation/clock.hpp"
#include "simulator/foundation/phone_root.hpp"
#include "simulator/foundation/strings.hpp"
#include "simulator/foundation/surroundings.hpp"
#include "simulator/foundation/system_log.hpp"
#include "simulator/services/darwin_notifications.hpp"
#include "simulator/services/event_store.hpp"
#include "simulator/springboard/SpringBoard.hpp"
#include "simulator/uikit/touch_input.hpp"
#include "tools/solvane-settings/preferences.hpp"

namespace simulator {

namespace {

using Words = std::span<const std::string>;

/// The arguments are as many as the command takes, and yet not what it takes.
struct WrongUsage {};

void print(const Json& json)
{
    std::cout << oneLine(json) << '\n' << std::flush;
    if (!std::cout)
        throw BadLine("standard output cannot be written");
}

// Reading arguments

double momentIn(const std::string& localTime)
{
    const auto moment = momentOfLocalTime(localTime);
    if (!moment)
        throw BadLine('"' + localTime + "\" is no time: write it like 2014-03-05T08:30:00");
    return *moment;
}

template <class Meaning>
struct Choice {
    std::string_view word;
    Meaning meaning;
};

template <class Meaning, std::size_t Count>
Meaning chosen(const std::string& word, const Choice<Meaning> (&choices)[Count])
{
    std::string expected;
    for (const Choice<Meaning>& choice : choices) {
        if (word == choice.word)
            return choice.meaning;
        expected += (expected.empty() ? "" : " or ") + std::string(choice.word);
    }
    throw BadLine("expected " + expected + ", not \"" + word + '"');
}

/// A text that a command may leave out; nil then.
NSString* optionalText(Words arguments, std::size_t index)
{
    return index < arguments.size() ? toNSString(arguments[index]) : nullptr;
}

std::optional<CGPoint> pointIn(const std::string& text)
{
    const auto numbers = parseNumbers<CGFloat, 2>(text);
    if (!numbers)
        return std::nullopt;
    const auto [x, y] = *numbers;
    if (!std::isfinite(x) || !std::isfinite(y))
        throw BadLine('"' + text + "\" is no point");
    return CGPoint{x, y};
}

UIView* viewIn(id object, const std::string& path)
{
    if (object == nullptr)
        throw BadLine('"' + path + "\" is nil");
    if (!object->isKindOfClass(classNamed<"UIView">()))
        throw BadLine('"' + path + "\" is not a view");
    return static_cast<UIView*>(object);
}

UIView* windowView()
{
    return reinterpret_cast<UIView*>(springBoardWindow());
}

/// The place of a touch, in the window: a point, or the centre of the view at a path.
CGPoint place(const Console& console, const std::string& text)
{
    if (const auto point = pointIn(text))
        return *point;
    UIView* const view = viewIn(objectAtPath(text, console.kept), text);
    if (view != windowView() && view->window() != springBoardWindow())
        throw BadLine('"' + text + "\" is not in the window");
    const CGRect bounds = view->bounds();
    const CGPoint centre{bounds.origin.x + bounds.size.width / 2, bounds.origin.y + bounds.size.height / 2};
    return view->convertPoint_toView(centre, windowView());
}

Value sentMessage(const Console& console, Words arguments)
{
    const auto objectOf = [&](const std::string& path) { return objectAtPath(path, console.kept); };
    return invoke(objectOf(arguments[0]), arguments[1], arguments.subspan(2), objectOf);
}

// The phone's surroundings

void setClock(Console&, Words arguments)
{
    if (arguments[0] == "live")
        surroundings().frozenClock = std::nullopt;
    else
        surroundings().frozenClock = momentIn(arguments[0]);
}

void setWeather(Console&, Words arguments)
{
    if (arguments.size() == 1) {
        if (arguments[0] != "none")
            throw BadLine("a condition code is missing behind \"" + arguments[0] + '"');
        surroundings().weather = std::nullopt;
        return;
    }
    const auto code = parseNumber<std::int64_t>(arguments[1]);
    if (!code)
        throw BadLine('"' + arguments[1] + "\" is no condition code: write a whole number");
    surroundings().weather = LocalWeather{arguments[0], static_cast<NSInteger>(*code)};
}

void setUnits(Console&, Words arguments)
{
    surroundings().showsCelsius = chosen<bool>(arguments[0], {{"celsius", true}, {"fahrenheit", false}});
}

/// The word for what the region has.
constexpr std::string_view regionsOwn = "region";

void setCalendar(Console&, Words arguments)
{
    const std::vector<std::string> systems = calendarSystems();
    if (arguments[0] == regionsOwn) {
        surroundings().customs.calendar.reset();
        return;
    }
    if (std::ranges::find(systems, arguments[0]) == systems.end()) {
        std::string expected(regionsOwn);
        for (const std::string& system : systems)
            expected += ", " + system;
        throw BadLine("there is no calendar \"" + arguments[0] + "\": write one of " + expected);
    }
    surroundings().customs.calendar = arguments[0];
}

void setHours(Console&, Words arguments)
{
    surroundings().customs.hours =
        chosen<Hours>(arguments[0], {{"12", Hours::twelve}, {"24", Hours::twentyFour}, {regionsOwn, Hours::asTheRegion}});
}

void setDigits(Console&, Words arguments)
{
    surroundings().customs.readsDigitsOfAnyScript = chosen<bool>(arguments[0], {{"any", true}, {"ascii", false}});
}

void setName(Console&, Words arguments)
{
    writePreferredName(arguments[0] == "none" ? std::nullopt : std::optional(arguments[0]));
}

void post(Console&, Words arguments)
{
    postDarwinNotification(phoneRoot(), arguments[0]);
}

// The lock screen

void lock(Console&, Words)
{
    lockScreen();
}

void layOut(Console&, Words)
{
    listView()->setNeedsLayout();
    listView()->layoutIfNeeded();
}

void addBulletin(Console&, Words arguments)
{
    addListItem(bulletinItem(toNSString(arguments[0]), optionalText(arguments, 1), optionalText(arguments, 2)));
}

void addCard(Console&, Words arguments)
{
    addListItem(cardItem(toNSString(arguments[0]), optionalText(arguments, 1)));
}

void addAlert(Console&, Words arguments)
{
    addListItem(systemAlertItem(toNSString(arguments[0]), optionalText(arguments, 1)));
}

void addUnknown(Console&, Words)
{
    addListItem(unknownItem());
}

void addCalendarEvent(Console&, Words arguments)
{
    const double start = momentIn(arguments[1]);
    const double end = momentIn(arguments[2]);
    if (end < start)
        throw BadLine("the event ends before it starts");
    addEvent(arguments[0], start, end);
}

void clearItems(Console&, Words)
{
    listController()->clearItemsForNotificationCenter();
}

void tearDown(Console&, Words)
{
    listController()->prepareForTeardown();
}

void switchScreen(Console&, Words arguments)
{
    listController()->setInScreenOffMode(chosen<bool>(arguments[0], {{"off", true}, {"on", false}}));
}

void showArt(Console&, Words)
{
    const Class artClass = classNamed<"_NowPlayingArtView">();
    if (artClass == nullptr)
        throw BadLine("there is no class _NowPlayingArtView: the library that defines it is not loaded");
    const CGFloat width = UIScreen::mainScreen()->bounds().size.width;
    UIView* const allocated = send<"alloc", UIView*>(artClass);
    const auto art = adopt(allocated->initWithFrame(CGRect::make(0, 0, width, width)));
    lockScreenView()->insertSubview_atIndex(art, 0);
}

void addUnderlay(Console&, Words)
{
    lockScreenView()->_addLockContentUnderlayWithRequester(listController());
}

// The finger

void tapAt(Console& console, Words arguments)
{
    constexpr int mostTimes = 10;
    const auto times = arguments.size() == 1 ? 1 : parseNumber<int>(arguments[1]);
    if (!times || *times < 1 || *times > mostTimes)
        throw BadLine('"' + arguments[1] + "\" is no number of taps: write 1 to " + std::to_string(mostTimes));
    tap(springBoardWindow(), place(console, arguments[0]), *times);
}

void press(Console& console, Words arguments)
{
    touchDown(springBoardWindow(), place(console, arguments[0]));
}

void release(Console& console, Words arguments)
{
    if (arguments.empty())
        touchUp();
    else
        touchUp(place(console, arguments[0]));
}

void swipeFrom(Console& console, Words arguments)
{
    const auto direction = chosen<Direction>(
        arguments[1], {{"left", Direction::left}, {"right", Direction::right}, {"up", Direction::up}, {"down", Direction::down}});
    swipe(springBoardWindow(), place(console, arguments[0]), direction);
}

// Objects

void show(Console& console, Words arguments)
{
    print(inspect(valueAtPath(arguments[0], console.kept)));
}

void showTree(Console& console, Words arguments)
{
    const std::string path = arguments.empty() ? "window" : arguments[0];
    const id object = objectAtPath(path, console.kept);
    print(inspectTree(object == nullptr ? nullptr : viewIn(object, path)));
}

void sendMessage(Console& console, Words arguments)
{
    print(inspect(sentMessage(console, arguments)));
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
    windowView()->addSubview(view);
}

// The rest

void takeLog(Console&, Words)
{
    Json lines = Json::array();
    for (std::string& line : takeSystemLog())
        lines.push_back(std::move(line));
    print(lines);
}

void takeScreenshot(Console& console, Words arguments)
{
    screenPicture()->writePNG(console.pictureFolder / arguments[0]);
}

void sleepFor(Console&, Words arguments)
{
    constexpr double longest = 86400;
    const auto seconds = parseNumber<double>(arguments[0]);
    if (!seconds || !(*seconds >= 0 && *seconds <= longest))
        throw BadLine('"' + arguments[0] + "\" is no number of seconds from 0 to " + std::to_string(static_cast<int>(longest)));
    waitFor(std::chrono::duration<double>(*seconds));
}

void quit(Console& console, Words)
{
    console.hasQuit = true;
}

constexpr std::size_t anyNumber = std::string_view::npos;

struct Command {
    std::string_view name;
    std::string_view usage;
    std::size_t fewestArguments;
    std::size_t mostArguments;
    bool needsLockScreen;
    void (*run)(Console& console, Words arguments);
};

constexpr Command commands[] = {
    {"clock", "YYYY-MM-DDThh:mm:ss | live", 1, 1, false, setClock},
    {"weather", "TEMP CODE | none", 1, 2, false, setWeather},
    {"units", "celsius | fahrenheit", 1, 1, false, setUnits},
    {"calendar", "NAME | region", 1, 1, false, setCalendar},
    {"hours", "12 | 24 | region", 1, 1, false, setHours},
    {"digits", "any | ascii", 1, 1, false, setDigits},
    {"name", "TEXT | none", 1, 1, false, setName},
    {"post", "NAME", 1, 1, false, post},
    {"lock", "", 0, 0, false, lock},
    {"layout", "", 0, 0, true, layOut},
    {"notify", "BUNDLE-ID [TITLE [MESSAGE]]", 1, 3, true, addBulletin},
    {"card", "ID [TITLE]", 1, 2, true, addCard},
    {"alert", "TITLE [MESSAGE]", 1, 2, true, addAlert},
    {"unknown", "", 0, 0, true, addUnknown},
    {"event", "TITLE START END", 3, 3, false, addCalendarEvent},
    {"clear", "", 0, 0, true, clearItems},
    {"teardown", "", 0, 0, true, tearDown},
    {"screen", "off | on", 1, 1, true, switchScreen},
    {"art", "", 0, 0, true, showArt},
    {"underlay", "", 0, 0, true, addUnderlay},
    {"tap", "WHERE [TIMES]", 1, 2, false, tapAt},
    {"press", "WHERE", 1, 1, false, press},
    {"release", "[WHERE]", 0, 1, false, release},
    {"swipe", "WHERE left | right | up | down", 2, 2, false, swipeFrom},
    {"show", "PATH", 1, 1, false, show},
    {"tree", "[PATH]", 0, 1, false, showTree},
    {"send", "PATH SELECTOR [ARG ...]", 2, anyNumber, false, sendMessage},
    {"let", "NAME PATH | NAME send PATH SELECTOR [ARG ...]", 2, anyNumber, false, keep},
    {"add", "NAME X,Y", 2, 2, false, addToWindow},
    {"log", "", 0, 0, false, takeLog},
    {"screenshot", "FILE", 1, 1, false, takeScreenshot},
    {"sleep", "SECONDS", 1, 1, false, sleepFor},
    {"quit", "", 0, 0, false, quit},
};

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
        if (!word.empty() && toNSString(word)->length() == 0)
            throw BadLine("the line is not UTF-8");
    }
}

} // namespace

void runCommand(Console& console, Words words)
{
    if (words.empty())
        return;
    checkEncoding(words);
    const auto command = std::ranges::find(commands, words[0], &Command::name);
    if (command == std::end(commands))
        throw BadLine("there is no command \"" + words[0] + '"');
    try {
        run(console, *command, words.subspan(1));
    } catch (const WrongUsage&) {
        throw BadLine("usage: " + usageOf(*command));
    }
}

std::string commandUsages()
{
    std::string usages;
    for (const Command& command : commands)
        usages += "  " + usageOf(command) + '\n';
    return usages;
}

} // namespace simulator
