#include <csignal>
#include <gmock/gmock.h>
#include <list>

#include "tests/support/Console.hpp"

/// Darwin notifications from one process to another, and the settings that follow them.

namespace {

using testing::HasSubstr;

void writeName(const Console& console, const std::string& name)
{
    console.tree().writePreferencesXML("<dict><key>Name</key><string>" + name + "</string></dict>");
}

} // namespace

TEST(Notifications, ReachASpringBoardThatWaitsForItsNextLine)
{
    const Console console;
    LiveConsole live(console.root());
    EXPECT_EQ(live.ask("show userName"), "Pal");
    writeName(console, "Ana");
    const Outcome post = postFromOutside(console.root(), "loadSolvaneS");
    EXPECT_EQ(post.status, 0);
    EXPECT_EQ(post.output + post.errors, "");
    EXPECT_EQ(live.ask("show userName"), "Ana");
    EXPECT_EQ(live.ask("show morningString"), "Good morning, Pal.");
}

TEST(Notifications, ReachEverySpringBoardOnTheRoot)
{
    const Console console;
    LiveConsole first(console.root());
    LiveConsole second(console.root());
    EXPECT_EQ(first.ask("show userName"), "Pal");
    EXPECT_EQ(second.ask("show userName"), "Pal");
    writeName(console, "Ana");
    EXPECT_EQ(postFromOutside(console.root(), "loadSolvaneS").status, 0);
    EXPECT_EQ(first.ask("show userName"), "Ana");
    EXPECT_EQ(second.ask("show userName"), "Ana");
}

TEST(Notifications, GoFromOneSpringBoardToTheOther)
{
    const Console console;
    LiveConsole first(console.root());
    LiveConsole second(console.root());
    EXPECT_EQ(second.ask("show userName"), "Pal");
    first.type("name Ana");
    first.type("post loadSolvaneS");
    EXPECT_EQ(first.ask("show userName"), "Ana");
    EXPECT_EQ(second.ask("show userName"), "Ana");
}

TEST(Notifications, StayOnTheirRoot)
{
    const Console here;
    const Console there;
    LiveConsole live(here.root());
    EXPECT_EQ(live.ask("show userName"), "Pal");
    writeName(here, "Ana");
    EXPECT_EQ(postFromOutside(there.root(), "loadSolvaneS").status, 0);
    EXPECT_EQ(live.ask("show userName"), "Pal");
}

TEST(Notifications, MayFindNobodyAndSaySo)
{
    const Console console;
    const Outcome post = postFromOutside(console.root(), "loadSolvaneS");
    EXPECT_EQ(post.status, 0);
    EXPECT_EQ(post.errors, "notifypost: nobody listens on " + console.root().native() + "\n");
}

TEST(Notifications, NameTheProcessThatDoesNotAnswer)
{
    const Console console;
    LiveConsole stopped(console.root());
    LiveConsole running(console.root());
    EXPECT_EQ(stopped.ask("show userName"), "Pal");
    EXPECT_EQ(running.ask("show userName"), "Pal");
    writeName(console, "Ana");
    ::kill(stopped.number(), SIGSTOP);
    const Outcome post = postFromOutside(console.root(), "loadSolvaneS");
    EXPECT_EQ(post.status, 1);
    EXPECT_EQ(post.errors,
              "notifypost: not reached: process " + std::to_string(stopped.number()) + ": it did not answer within 20 seconds\n");
    EXPECT_EQ(running.ask("show userName"), "Ana");
    ::kill(stopped.number(), SIGCONT);
    EXPECT_EQ(stopped.ask("show userName"), "Ana");
}

TEST(Notifications, ReachEverybodyWithFewDescriptors)
{
    const Console console;
    std::list<LiveConsole> phones;
    for (int i = 0; i < 6; ++i)
        phones.emplace_back(console.root());
    for (LiveConsole& phone : phones)
        EXPECT_EQ(phone.ask("show userName"), "Pal");
    writeName(console, "Ana");
    // Where the program is emulated, the larger ones are few.
    for (const char* limit : {"4", "5", "6", "8", "12", "16"}) {
        const Outcome post = runProgram(
            {"/bin/sh", "-c", "ulimit -n $0; exec \"$@\"", limit, notifypostProgram(), "--root", console.root(), "loadSolvaneS"});
        // Either everybody was reached, or the poster says that not.
        EXPECT_EQ(post.status == 0, post.errors.empty()) << limit << ": " << post.errors;
        EXPECT_GE(post.status, 0) << limit;
    }
    for (LiveConsole& phone : phones)
        EXPECT_EQ(phone.ask("show userName"), "Ana");
}

TEST(Notifications, LeaveNothingInTheRootOfASpringBoardThatEnded)
{
    const Console console;
    EXPECT_EQ(console.run("post loadSolvaneS\nquit\n").status, 0);
    EXPECT_TRUE(std::filesystem::is_empty(console.root() / "var/run/notifications"));
}

TEST(Notifications, FindNobodyWhereASpringBoardWasKilled)
{
    const Console console;
    {
        LiveConsole live(console.root());
        EXPECT_EQ(live.ask("show userName"), "Pal");
    }
    EXPECT_EQ(postFromOutside(console.root(), "loadSolvaneS").status, 0);
}

TEST(Notifypost, ExplainsItself)
{
    const Outcome outcome = runProgram({notifypostProgram(), "--help"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.output, HasSubstr("usage: notifypost --root DIR NAME"));
}

TEST(Notifypost, RefusesAMissingRoot)
{
    const Outcome outcome = runProgram({notifypostProgram(), "--root", "/no/such/folder", "x"});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_THAT(outcome.errors, HasSubstr("no such folder: /no/such/folder"));
}

TEST(Notifypost, RefusesWordsThatAreMissingOrTooMany)
{
    const Console console;
    EXPECT_EQ(runProgram({notifypostProgram()}).status, 2);
    EXPECT_EQ(runProgram({notifypostProgram(), "loadSolvaneS"}).status, 2);
    EXPECT_EQ(runProgram({notifypostProgram(), "--root", console.root(), "a", "b"}).status, 2);
    EXPECT_EQ(postFromOutside(console.root(), "").status, 2);
    EXPECT_EQ(postFromOutside(console.root(), std::string(1025, 'x')).status, 2);
}

// Preferences, as the settings see them from outside

TEST(SettingsFromOutside, AreReadInSilence)
{
    for (const char* contents : {"", "rubbish", "bplist00 rubbish", "<?xml version=\"1.0\"?><plist><dict><key>Name</key>"}) {
        const Console console;
        console.tree().writePreferences(contents);
        const ConsoleRun run = console.run("show settingsDictionary\nshow userName\npost loadSolvaneS\nlog\n");
        EXPECT_EQ(run.errors, "") << contents;
        EXPECT_EQ(run.output, "null\n\"Pal\"\n[]\n") << contents;
    }
}

TEST(SettingsFromOutside, TakeNumbersAndBinaryFiles)
{
    const Console console;
    console.tree().writeBinaryPreferences("{'Name': 7.5, 'Other': [True, 'x']}");
    EXPECT_EQ(lineOf(console, "show settingsDictionary"), (Json{{"Name", 7.5}, {"Other", {true, "x"}}}));
    EXPECT_EQ(lineOf(console, "show nightString"), "Good night, 7.5.");
}
