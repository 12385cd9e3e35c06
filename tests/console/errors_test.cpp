#include <gmock/gmock.h>

#include "tests/support/Console.hpp"

/// Lines that cannot be carried out.

namespace {

using testing::ElementsAre;

/// A line that must fail behind three good ones, and what is said about it.
struct BadLine {
    const char* name;
    const char* line;
    const char* complaint;
};

void PrintTo(const BadLine& bad, std::ostream* stream)
{
    *stream << bad.line;
}

class Errors : public testing::TestWithParam<BadLine> {};

} // namespace

TEST_P(Errors, EndTheScriptWithStatusTwoAndTheLinesNumber)
{
    const Console console;
    const ConsoleRun run =
        console.run("show stormString\n\n# a comment\n" + std::string(GetParam().line) + "\nshow rainString\n");
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(run.errors, "line 4: " + std::string(GetParam().complaint) + "\n");
    EXPECT_THAT(run.lines, ElementsAre("Storm"));
}

INSTANTIATE_TEST_SUITE_P(Words, Errors,
                         testing::Values(BadLine{"UnknownCommand", "shwo stormString", "there is no command \"shwo\""},
                                         BadLine{"EmptyCommand", "''", "there is no command \"\""},
                                         BadLine{"CommandInAnotherCase", "Show stormString", "there is no command \"Show\""},
                                         BadLine{"OpenSingleQuote", "show 'storm", "a single quote is not closed"},
                                         BadLine{"OpenDoubleQuote", "show \"storm", "a double quote is not closed"},
                                         BadLine{"BackslashAtTheEnd", "show storm\\",
                                                 "there is nothing behind the last backslash"},
                                         BadLine{"TextThatIsNotUTF8", "name \xFF\xFE", "the line is not UTF-8"}),
                         [](const auto& info) { return info.param.name; });

INSTANTIATE_TEST_SUITE_P(
    Counts, Errors,
    testing::Values(BadLine{"ClockWithoutATime", "clock", "usage: clock YYYY-MM-DDThh:mm:ss | live"},
                    BadLine{"ClockWithTwoTimes", "clock live live", "usage: clock YYYY-MM-DDThh:mm:ss | live"},
                    BadLine{"WeatherWithoutWords", "weather", "usage: weather TEMP CODE | none"},
                    BadLine{"WeatherWithThreeWords", "weather 1 2 3", "usage: weather TEMP CODE | none"},
                    BadLine{"UnitsWithoutAUnit", "units", "usage: units celsius | fahrenheit"},
                    BadLine{"NameWithoutAName", "name", "usage: name TEXT | none"},
                    BadLine{"NameWithTwoNames", "name Ana Bo", "usage: name TEXT | none"},
                    BadLine{"PostWithoutAName", "post", "usage: post NAME"}, BadLine{"LockWithAWord", "lock now", "usage: lock"},
                    BadLine{"NotifyWithoutAnApplication", "notify", "usage: notify BUNDLE-ID [TITLE [MESSAGE]]"},
                    BadLine{"NotifyWithFourWords", "notify a b c d", "usage: notify BUNDLE-ID [TITLE [MESSAGE]]"},
                    BadLine{"CardWithoutAnIdentifier", "card", "usage: card ID [TITLE]"},
                    BadLine{"AlertWithoutATitle", "alert", "usage: alert TITLE [MESSAGE]"},
                    BadLine{"UnknownWithAWord", "unknown thing", "usage: unknown"},
                    BadLine{"EventWithoutAnEnd", "event a 2014-03-05T08:30:00", "usage: event TITLE START END"},
                    BadLine{"ScreenWithoutAState", "screen", "usage: screen off | on"},
                    BadLine{"TapWithoutAPlace", "tap", "usage: tap WHERE [TIMES]"},
                    BadLine{"PressWithoutAPlace", "press", "usage: press WHERE"},
                    BadLine{"MoveWithoutAPlace", "move", "usage: move WHERE [SECONDS]"},
                    BadLine{"ReleaseWithTwoPlaces", "release 1,2 3,4", "usage: release [WHERE]"},
                    BadLine{"SwipeWithoutADirection", "swipe 1,2", "usage: swipe WHERE left | right | up | down"},
                    BadLine{"ShowWithoutAPath", "show", "usage: show PATH"},
                    BadLine{"TreeWithTwoPaths", "tree window window", "usage: tree [PATH]"},
                    BadLine{"SendWithoutASelector", "send window", "usage: send PATH SELECTOR [ARG ...]"},
                    BadLine{"LetWithoutAPath", "let x", "usage: let NAME PATH | NAME send PATH SELECTOR [ARG ...]"},
                    BadLine{"LetWithTwoPaths", "let x window window", "usage: let NAME PATH | NAME send PATH SELECTOR [ARG ...]"},
                    BadLine{"LetSendWithoutASelector", "let x send window",
                            "usage: let NAME PATH | NAME send PATH SELECTOR [ARG ...]"},
                    BadLine{"AddWithoutAPlace", "add x", "usage: add NAME X,Y"}, BadLine{"LogWithAWord", "log all", "usage: log"},
                    BadLine{"ScreenshotWithoutAFile", "screenshot", "usage: screenshot FILE"},
                    BadLine{"SleepWithoutATime", "sleep", "usage: sleep SECONDS"},
                    BadLine{"QuitWithAWord", "quit now", "usage: quit"}),
    [](const auto& info) { return info.param.name; });

INSTANTIATE_TEST_SUITE_P(
    Arguments, Errors,
    testing::Values(BadLine{"ClockWithoutSeconds", "clock 2014-03-05T08:30",
                            "\"2014-03-05T08:30\" is no time: write it like 2014-03-05T08:30:00"},
                    BadLine{"ClockOnADayThatIsNot", "clock 2014-02-29T08:30:00",
                            "\"2014-02-29T08:30:00\" is no time: write it like 2014-03-05T08:30:00"},
                    BadLine{"ClockAtAnHourThatIsNot", "clock 2014-03-05T24:00:00",
                            "\"2014-03-05T24:00:00\" is no time: write it like 2014-03-05T08:30:00"},
                    BadLine{"ClockWithTextBehind", "clock 2014-03-05T08:30:00Z",
                            "\"2014-03-05T08:30:00Z\" is no time: write it like 2014-03-05T08:30:00"},
                    BadLine{"WeatherOfAnUnknownUnit", "weather --unit kelvin", "expected celsius or fahrenheit, not \"kelvin\""},
                    BadLine{"WeatherWithoutACode", "weather 21", "a condition code is missing behind \"21\""},
                    BadLine{"WeatherWithAWordForACode", "weather 21 rain", "\"rain\" is no condition code: write a whole number"},
                    BadLine{"WeatherWithAFractionForACode", "weather 21 2.5",
                            "\"2.5\" is no condition code: write a whole number"},
                    BadLine{"WeatherWithACodeOfMoreThan64Bits", "weather 21 9223372036854775808",
                            "\"9223372036854775808\" is no condition code: write a whole number"},
                    BadLine{"TableOfAnotherEnd", "table gone", "expected cleared or dangling, not \"gone\""},
                    BadLine{"UnitsOfAnotherKind", "units kelvin", "expected celsius or fahrenheit, not \"kelvin\""},
                    BadLine{"TapTooOften", "tap 1,2 11", "\"11\" is no number of taps: write 1 to 10"},
                    BadLine{"TapNever", "tap 1,2 0", "\"0\" is no number of taps: write 1 to 10"},
                    BadLine{"TapByAWord", "tap 1,2 twice", "\"twice\" is no number of taps: write 1 to 10"},
                    BadLine{"TapBeyondNumbers", "tap 1,inf", "\"1,inf\" is no point"},
                    BadLine{"SwipeAskew", "swipe 1,2 sideways", "expected left or right or up or down, not \"sideways\""},
                    BadLine{"MoveWithoutAFinger", "move 1,2", "no finger is on the screen: press first"},
                    BadLine{"SleepBackwards", "sleep -1", "\"-1\" is no number of seconds from 0 to 86400"},
                    BadLine{"SleepForADayAndMore", "sleep 86401", "\"86401\" is no number of seconds from 0 to 86400"},
                    BadLine{"SleepByAWord", "sleep well", "\"well\" is no number of seconds from 0 to 86400"},
                    BadLine{"SleepForNoNumber", "sleep nan", "\"nan\" is no number of seconds from 0 to 86400"},
                    BadLine{"AddAnObjectThatIsNotKept", "add nothing 1,2", "no object is kept as \"nothing\""},
                    BadLine{"LetAFixedName", "let window stormString", "\"window\" cannot be a kept object's name"},
                    BadLine{"LetANumber", "let 7up stormString", "\"7up\" cannot be a kept object's name"},
                    BadLine{"LetSomethingThatIsNoObject", "let x dateStatus()", "what \"x\" would keep is not an object"}),
    [](const auto& info) { return info.param.name; });

INSTANTIATE_TEST_SUITE_P(
    Paths, Errors,
    testing::Values(
        BadLine{"UnknownRoot", "show nothing", "there is no \"nothing\": not a kept object, an exported variable or a class"},
        BadLine{"UnknownStep", "show window.colour", "UIWindow has no instance variable and no method \"colour\""},
        BadLine{"UnknownStepOfAClass", "show UIView.colour",
                "the class UIView has no instance variable and no method \"colour\""},
        BadLine{"IndexOutOfRange", "show window.subviews[0]", "index 0 is out of range: the array has 0 elements"},
        BadLine{"IndexByAWord", "show window.subviews[first]", "an array is indexed by a number, not by \"first\""},
        BadLine{"IndexBelowZero", "show window.subviews[-1]", "an array is indexed by a number, not by \"-1\""},
        BadLine{"SubscriptOfAView", "show window[0]", "UIWindow is neither an array nor a dictionary: it has no [0]"},
        BadLine{"OpenBracket", "show window.subviews[0",
                "a bracket is not closed in the path \"window.subviews[0\" at character 18"},
        BadLine{"DotAtTheEnd", "show window.", "a name is missing in the path \"window.\" at character 8"},
        BadLine{"StrangeCharacter", "show window/frame",
                "a \".\" or \"[\" is missing in the path \"window/frame\" at character 7"},
        BadLine{"EmptyPath", "show ''", "a name is missing in the path \"\" at character 1"},
        BadLine{"FunctionWithoutParentheses", "show getTempString", "\"getTempString\" is a function: write \"getTempString()\""},
        BadLine{"FunctionWithArguments", "show drawTextInImage()", "\"drawTextInImage\" is not a function that can be called"},
        BadLine{"StepFromANumber", "show dateStatus().x", "what \".x\" is asked of is not an object"},
        BadLine{"TreeOfAString", "tree stormString", "\"stormString\" is not a view"},
        BadLine{"TapOnNil", "tap lockScreenView", "\"lockScreenView\" is nil"},
        BadLine{"TapOnAString", "tap stormString", "\"stormString\" is not a view"}),
    [](const auto& info) { return info.param.name; });

INSTANTIATE_TEST_SUITE_P(
    Messages, Errors,
    testing::Values(
        BadLine{"UnknownSelector", "send window colour", "UIWindow does not respond to \"colour\""},
        BadLine{"TooFewArguments", "send stormString isEqualToString:", "\"isEqualToString:\" takes 1 argument, not 0"},
        BadLine{"TooManyArguments", "send stormString length 5", "\"length\" takes 0 arguments, not 1"},
        BadLine{"ThreeNumbersForARectangle", "send window setFrame: 1,2,3", "argument 1 must be x,y,width,height, not \"1,2,3\""},
        BadLine{"AWordForANumber", "send window setAlpha: much", "argument 1 must be a number, not \"much\""},
        BadLine{"UnknownClassForAClass", "send window isKindOfClass: Nobody",
                "argument 1 must be a class name, @PATH or nil, not \"Nobody\""},
        BadLine{"RaisedException", "send window.subviews objectAtIndex: 5",
                "raised NSRangeException: Index 5 is out of range 0 (in 'objectAtIndex:')"}),
    [](const auto& info) { return info.param.name; });

INSTANTIATE_TEST_SUITE_P(LockScreen, Errors,
                         testing::Values(BadLine{"LayoutBeforeLock", "layout", "there is no lock screen yet: lock first"},
                                         BadLine{"NotifyBeforeLock", "notify com.apple.MobileSMS",
                                                 "there is no lock screen yet: lock first"},
                                         BadLine{"CardBeforeLock", "card pass", "there is no lock screen yet: lock first"},
                                         BadLine{"AlertBeforeLock", "alert a", "there is no lock screen yet: lock first"},
                                         BadLine{"UnknownBeforeLock", "unknown", "there is no lock screen yet: lock first"},
                                         BadLine{"ClearBeforeLock", "clear", "there is no lock screen yet: lock first"},
                                         BadLine{"TeardownBeforeLock", "teardown", "there is no lock screen yet: lock first"},
                                         BadLine{"ScreenBeforeLock", "screen off", "there is no lock screen yet: lock first"},
                                         BadLine{"ArtBeforeLock", "art", "there is no lock screen yet: lock first"},
                                         BadLine{"UnderlayBeforeLock", "underlay", "there is no lock screen yet: lock first"}),
                         [](const auto& info) { return info.param.name; });
