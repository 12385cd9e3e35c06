#include <gmock/gmock.h>

#include "tests/support/Console.hpp"

/// What a relaunch of SpringBoard takes away, what outlives it, and how the script goes on.

namespace {

using testing::ElementsAre;

const std::string relaunch = "post RespringSV\n";

} // namespace

TEST(Relaunch, BuildsTheGreetingsAnew)
{
    EXPECT_THAT(
        linesOf(Console(), "name Ana\npost loadSolvaneS\nshow eveningString\n" + relaunch + "show eveningString\nshow userName"),
        ElementsAre("Good evening, Pal.", "Good evening, Ana.", "Ana"));
}

TEST(Relaunch, KeepsTheGreetingsOfTheNameAtTheLastStart)
{
    const Console console;
    console.tree().writePreferencesXML("<dict><key>Name</key><string>Ana</string></dict>");
    EXPECT_THAT(linesOf(console, "show eveningString\nname Bo\npost loadSolvaneS\nshow eveningString\nshow userName\n" +
                                     relaunch +
                                     "show eveningString\nname none\npost loadSolvaneS\nshow userName\nshow eveningString\n" +
                                     relaunch + "show eveningString"),
                ElementsAre("Good evening, Ana.", "Good evening, Ana.", "Bo", "Good evening, Bo.", "Pal", "Good evening, Bo.",
                            "Good evening, Pal."));
}

TEST(Relaunch, TakesTheKeptNamesAway)
{
    const ConsoleRun run = Console().run("let x stormString\nshow x\n" + relaunch + "show x\n");
    EXPECT_THAT(run.lines, ElementsAre("Storm"));
    EXPECT_EQ(run.errors, "line 4: there is no \"x\": not a kept object, an exported variable or a class\n");
    EXPECT_EQ(run.status, 2);
}

TEST(Relaunch, KeepsTheProcessNumber)
{
    const auto lines = linesOf(Console(), "show NSProcessInfo.processInfo.processIdentifier\n" + relaunch +
                                              "show NSProcessInfo.processInfo.processIdentifier");
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_EQ(lines[0], lines[1]);
}

TEST(Relaunch, StartsWithAnEmptyList)
{
    EXPECT_THAT(linesOf(Console(), "lock\nnotify com.apple.MobileSMS\nshow controller._listItems.count\n" + relaunch +
                                       "show controller._listItems.count"),
                ElementsAre(1, 0));
}

TEST(Relaunch, BuildsTheLockScreenAgainWhenThereWasOne)
{
    EXPECT_THAT(linesOf(Console(), "lock\n" + relaunch + "show listView.frame"), ElementsAre(Json({0, 0, 320, 568})));
}

TEST(Relaunch, BuildsNoLockScreenWhenThereWasNone)
{
    EXPECT_THAT(linesOf(Console(), relaunch + "show listView"), ElementsAre(nullptr));
}

TEST(Relaunch, KeepsTheFrozenClock)
{
    EXPECT_EQ(lineOf(Console(), "clock 2014-03-05T08:30:00\n" + relaunch + "show NSDate.date"), "2014-03-05T08:30:00Z");
}

TEST(Relaunch, KeepsTheClockRunning)
{
    EXPECT_GT(lineOf(Console(), "clock 2014-03-05T08:30:00\nclock live\n" + relaunch + "show NSDate.date").get<std::string>(),
              "2024");
}

TEST(Relaunch, KeepsTheWeather)
{
    EXPECT_EQ(lineOf(Console(), "weather -3.50 16\n" + relaunch + "show getTempString()"), "It's -3.50° C and Snow.");
}

TEST(Relaunch, KeepsTheCityAway)
{
    EXPECT_EQ(lineOf(Console(), "weather none\n" + relaunch + "show getTempString()"), "It's (null)° C and Not Available.");
}

TEST(Relaunch, KeepsTheUnitOfWhatTheWeatherApplicationSaved)
{
    EXPECT_THAT(linesOf(Console(), "weather --unit fahrenheit\n" + relaunch +
                                       "show getTempString()\n"
                                       "show WeatherPreferences.sharedPreferences.localWeatherCity.isDataCelsius"),
                ElementsAre("It's 21° C and Cloudy.", false));
}

TEST(Relaunch, KeepsTheUnit)
{
    EXPECT_EQ(lineOf(Console(), "units fahrenheit\n" + relaunch + "show getTempString()"), "It's 70° F and Cloudy.");
}

TEST(Relaunch, KeepsTheLogLinesThatHaveNotBeenTaken)
{
    const auto lines =
        linesOf(Console(), "let cal send APLCalendar new\nlog\nsend cal swipePerformed: nil\n" + relaunch + "log\nlog");
    EXPECT_THAT(lines, ElementsAre(testing::_, nullptr, Json({"Swipe!"}), Json::array()));
}

TEST(Relaunch, KeepsTheScreen)
{
    Console console;
    console.options = {"--screen", "375x667@3"};
    EXPECT_EQ(lineOf(console, relaunch + "show window.frame"), Json({0, 0, 375, 667}));
}

TEST(Relaunch, GoesOnWithTheNextLineOfAFile)
{
    EXPECT_THAT(linesOf(Console(), "show stormString\n" + relaunch + "show rainString\nshow hailString\n"),
                ElementsAre("Storm", "Rain", "Hail"));
}

TEST(Relaunch, GoesOnWithTheNextLineOfAPipe)
{
    const ConsoleRun run = Console().runFromPipe("show stormString\n" + relaunch + "show rainString\nshow hailString\n");
    EXPECT_EQ(run.errors, "");
    EXPECT_EQ(run.status, 0);
    EXPECT_THAT(run.lines, ElementsAre("Storm", "Rain", "Hail"));
}

TEST(Relaunch, MayComeSeveralTimes)
{
    const std::string script = relaunch + "show stormString\n" + relaunch + relaunch + "show rainString\n" + relaunch;
    EXPECT_THAT(linesOf(Console(), script), ElementsAre("Storm", "Rain"));
    EXPECT_THAT(Console().runFromPipe(script).lines, ElementsAre("Storm", "Rain"));
}

TEST(Relaunch, MayComeInTheLastLineWithoutAnEnd)
{
    const ConsoleRun run = Console().run("show stormString\npost RespringSV");
    EXPECT_EQ(run.status, 0);
    EXPECT_THAT(run.lines, ElementsAre("Storm"));
}

TEST(Relaunch, KeepsTheLineNumbersRightInAFile)
{
    const ConsoleRun run = Console().run("# one\n\n" + relaunch + "show stormString\n" + relaunch + "nonsense\n");
    EXPECT_EQ(run.errors, "line 6: there is no command \"nonsense\"\n");
    EXPECT_EQ(run.status, 2);
}

TEST(Relaunch, KeepsTheLineNumbersRightInAPipe)
{
    const ConsoleRun run = Console().runFromPipe("# one\n\n" + relaunch + "show stormString\n" + relaunch + "nonsense\n");
    EXPECT_EQ(run.errors, "line 6: there is no command \"nonsense\"\n");
    EXPECT_EQ(run.status, 2);
}

TEST(Relaunch, GoesOnInAScriptLongerThanABlock)
{
    std::string script = "show stormString\n";
    for (int i = 0; i < 600; ++i)
        script += "# a line of a comment that fills the script up\n";
    script += relaunch + script + "show rainString\n";
    EXPECT_THAT(linesOf(Console(), script), ElementsAre("Storm", "Storm", "Rain"));
    EXPECT_THAT(Console().runFromPipe(script).lines, ElementsAre("Storm", "Storm", "Rain"));
}

TEST(Relaunch, ComesFromAnotherProcessToo)
{
    const Console console;
    LiveConsole live(console.root());
    live.type("let x stormString");
    EXPECT_EQ(live.ask("show x"), "Storm");
    console.tree().writePreferencesXML("<dict><key>Name</key><string>Ana</string></dict>");
    EXPECT_EQ(postFromOutside(console.root(), "RespringSV").status, 0);
    EXPECT_EQ(live.ask("show nightString"), "Good night, Ana.");
    EXPECT_EQ(live.end(), 0);
}

TEST(Relaunch, KeepsALineThatIsHalfTyped)
{
    const Console console;
    LiveConsole live(console.root());
    EXPECT_EQ(live.ask("show stormString"), "Storm");
    live.typePart("show rain");
    EXPECT_EQ(postFromOutside(console.root(), "RespringSV").status, 0);
    EXPECT_EQ(live.ask("String"), "Rain");
}

TEST(Relaunch, ComesByTheFunctionToo)
{
    const ConsoleRun run =
        Console().run("let x stormString\nsend UIApplication.sharedApplication _relaunchSpringBoardNow\nshow x\n");
    EXPECT_EQ(run.errors, "line 3: there is no \"x\": not a kept object, an exported variable or a class\n");
}

TEST(Relaunch, LoadsAnUpdatedLibrary)
{
    const Console console;
    LiveConsole live(console.root());
    EXPECT_EQ(live.ask("show stormString"), "Storm");
    console.uninstallLibrary();
    live.type("post RespringSV");
    EXPECT_EQ(live.ask("show NSString"), "NSString");
    live.type("show stormString");
    EXPECT_EQ(live.end(), 2);
}
