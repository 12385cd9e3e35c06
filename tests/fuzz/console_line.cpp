#include <algorithm>
#include <filesystem>
#include <iostream>
#include <sstream>
#include <streambuf>
#include <string>
#include <vector>

#include "platform/UIKit/UIWindow.hpp"
#include "simulator/console/commands.hpp"
#include "simulator/console/raised_exception.hpp"
#include "simulator/console/words.hpp"
#include "simulator/foundation/surroundings.hpp"
#include "tests/fuzz/target.hpp"
#include "tests/support/MorningPhone.hpp"

/// Lines of the console, to a live phone: each is carried out or refused. A byte below 128 stands for itself, and each of the
/// others for a word that the console or the phone knows. The phone lives on from one input to the next.

namespace {

constexpr std::string_view vocabulary[] = {
    // Commands
    "show ",
    "send ",
    "let ",
    "tree ",
    "add ",
    "tap ",
    "press ",
    "move ",
    "release ",
    "swipe ",
    "screenshot x\n",
    "layout\n",
    "notify ",
    "notify --person ",
    "modify ",
    "remove ",
    "card ",
    "alert ",
    "unknown\n",
    "clear\n",
    "teardown\n",
    "screen off\n",
    "screen on\n",
    "art\n",
    "underlay\n",
    "clock ",
    "weather ",
    "units celsius\n",
    "units fahrenheit\n",
    "calendar ",
    "hours 24\n",
    "digits ascii\n",
    "name ",
    "post loadSolvaneS\n",
    "post RespringSV\n",
    "system\n",
    "log\n",
    // What paths begin with
    "window",
    "lockScreenView",
    "controller",
    "listView",
    "headlineLabel",
    "subtitleLabel",
    "widgetView",
    "appsView",
    "calendarIconView",
    "notificationIconView",
    "tabView",
    "morningString",
    "settingsDictionary",
    "dateStatusString()",
    "getTempString()",
    "APLCalendar",
    "UIView",
    "UILabel",
    "UIButton",
    "UIScrollView",
    "UIImage",
    "UIColor",
    "UIFont",
    "UIBezierPath",
    "CALayer",
    "CAGradientLayer",
    "CAShapeLayer",
    "NSDate",
    "NSArray",
    "NSMutableArray",
    "NSDictionary",
    // Steps
    ".layer",
    ".cal",
    "._listItems",
    "._tableView",
    "._containerView",
    ".subviews",
    ".superview",
    ".text",
    ".font",
    ".frame",
    ".class",
    ".description",
    ".count",
    "[0]",
    "[key]",
    "@label",
    "label",
    "@window",
    // Messages
    " alloc",
    " init",
    " initWithFrame: ",
    " setFrame: ",
    " setBounds: ",
    " setText: ",
    " setFont: ",
    " addSubview: ",
    " removeFromSuperview",
    " setMask: ",
    " addSublayer: ",
    " addObject: ",
    " objectAtIndex: ",
    " sizeThatFits: ",
    " setTitle:forState: ",
    " setContentOffset: ",
    " setContentSize: ",
    " setHidden: YES",
    " setAlpha: ",
    " setTransform: ",
    " layoutIfNeeded",
    " new",
    " goOneMonthForward",
    " dateWithTimeIntervalSince1970: ",
    " systemFontOfSize: ",
    // Values
    "com.apple.MobileSMS ",
    "\"two words\"",
    "2014-03-05T08:30:00",
    "0,0,100,100",
    "160,300",
    "-1",
    "1e300",
    "9223372036854775807",
    "nan",
    "YES",
    "nil",
    "left",
    "0.5",
    "buddhist",
    "\n",
};
static_assert(std::size(vocabulary) <= 128);

std::string linesOf(const std::uint8_t* bytes, std::size_t size)
{
    std::string lines;
    for (const std::uint8_t byte : std::basic_string_view(bytes, size)) {
        if (byte < 128)
            lines += static_cast<char>(byte);
        else
            lines += vocabulary[(byte - 128) % std::size(vocabulary)];
    }
    return lines;
}

/// Of Foundation's classes, those that know nothing but the phone.
constexpr std::string_view innocent[] = {
    "NSObject", "NSString", "NSMutableString", "NSArray",     "NSMutableArray", "NSNumber", "NSDictionary", "NSMutableDictionary",
    "NSDate",   "NSLocale", "NSCalendar",      "NSIndexPath", "NSNull",
};
constexpr std::string_view ours[] = {"UI", "_UI", "CA", "SB", "EK", "BB", "SV", "APL", "_NowPlaying"};

/// What reaches files, other processes, or memory that somebody still holds: a person at the console may, a program may not.
constexpr std::string_view harmful[] = {
    "File",
    "Path",
    "URL",
    "elease",
    "retain",
    "dealloc",
    "erform",
    "Invocation",
    "Implementation",
    "Value",
    "Coder",
    "Zone",
    "isa",
    "Bytes",
    "bytes",
    "Pointer",
    "Thread",
    "Port",
    "Process",
    "Bundle",
    "finalize",
    "forward",
    "Observer",
    "raise",
    "doesNotRecognize",
    "subclassResponsibility",
    "notImplemented",
    "shouldNotImplement",
    "getCString",
    "getCharacters",
    "CString",
    "Lossy",
    "_objc",
};

bool isHarmful(const std::string& word)
{
    const auto appears = [&](std::string_view text) { return word.find(text) != std::string::npos; };
    if (std::ranges::any_of(harmful, appears))
        return true;
    const auto isPartOfName = [](char letter) {
        return (letter >= '0' && letter <= '9') || (letter >= 'A' && letter <= 'Z') || (letter >= 'a' && letter <= 'z') ||
               letter == '_';
    };
    for (auto begin = std::ranges::find_if(word, isPartOfName); begin != word.end();) {
        const auto end = std::find_if_not(begin, word.end(), isPartOfName);
        const std::string name(begin, end);
        const bool isOurs = std::ranges::any_of(ours, [&](std::string_view prefix) { return name.starts_with(prefix); });
        if (!isOurs && std::ranges::find(innocent, name) == std::end(innocent) && objc_getClass(name.c_str()) != nullptr)
            return true;
        begin = std::find_if(end, word.end(), isPartOfName);
    }
    return false;
}

/// Whether a line stays within the phone, and takes no time of its own.
bool isForUs(const std::vector<std::string>& words)
{
    constexpr std::string_view passedOver[] = {"sleep", "quit", "event"};
    // A finger that is lifted is no object that is let go.
    const auto first = !words.empty() && words.front() == "release" ? words.begin() + 1 : words.begin();
    return !words.empty() && std::ranges::find(passedOver, words.front()) == std::end(passedOver) &&
           std::none_of(first, words.end(), isHarmful);
}

class Silence : public std::streambuf {
    int_type overflow(int_type character) override { return traits_type::not_eof(character); }
    std::streamsize xsputn(const char*, std::streamsize count) override { return count; }
};

const LockedPhone& phone()
{
    static const auto& only = *new LockedPhone({.width = 320, .height = 568, .scale = 1});
    return only;
}

void runQuietly(simulator::Console& console, const std::string& line)
{
    const AutoreleasePool pool;
    simulator::forgetRaisedException();
    try {
        const auto words = simulator::splitWords(line);
        if (!words.empty() && words.front() == "screenshot")
            simulator::screenPicture();
        else if (isForUs(words))
            simulator::runCommand(console, words);
    } catch (...) {
        simulator::describeRaisedException();
    }
}

/// As the phone was before the first input. A new lock screen takes longer than a hundred inputs.
void startAnew(const simulator::Surroundings& atFirst)
{
    constexpr unsigned inputsOfALockScreen = 200;
    static unsigned inputs = 0;
    simulator::surroundings() = atFirst;
    if (++inputs % inputsOfALockScreen == 0)
        simulator::lockScreen();
    send<"clearItemsForNotificationCenter">(simulator::listController());
    for (UIView* const view : subviewsOf(simulator::springBoardWindow())) {
        if (view != simulator::lockScreenView())
            view->removeFromSuperview();
    }
    std::filesystem::remove(phone().tree().preferencesFile());
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    phone();
    std::cout.rdbuf(new Silence);
    simulator::rememberRaisedExceptions();
    simulator::setRelaunchHandler([] {});
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    static const simulator::Surroundings atFirst = simulator::surroundings();
    constexpr std::size_t mostBytes = 512;
    constexpr int mostLines = 16;
    simulator::Console console;
    std::istringstream lines(linesOf(bytes, std::min(size, mostBytes)));
    std::string line;
    for (int i = 0; i < mostLines && std::getline(lines, line); ++i)
        runQuietly(console, line);
    console = {};
    runQuietly(console, "release");
    const AutoreleasePool pool;
    startAnew(atFirst);
    return 0;
}
