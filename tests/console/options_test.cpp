#include <gmock/gmock.h>
#include <unistd.h>

#include "tests/support/Console.hpp"

/// How springboard is started, and on which file tree.

namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

Outcome springboard(std::vector<std::string> words, const std::string& input = "")
{
    words.insert(words.begin(), springboardProgram());
    return runProgram(words, {}, input);
}

/// A copy of springboard with the installed tree beside it, as it is delivered.
class Delivery {
public:
    Delivery()
    {
        fs::copy_file(springboardProgram(), program());
        fs::copy(PhoneTree::installed(), folder() / "phone", fs::copy_options::recursive);
    }

    const fs::path& folder() const { return folder_.path(); }
    fs::path program() const { return folder() / "springboard"; }

    ConsoleRun run(std::vector<std::string> words, const std::string& script) const
    {
        words.insert(words.begin(), program());
        words.insert(words.end(), {"--script", "-"});
        return consoleRun(runProgram(words, {}, script));
    }

private:
    TemporaryFolder folder_;
};

/// Whether each file of the installed tree is there.
void expectCompleteTree(const fs::path& root)
{
    const fs::path installed = PhoneTree::installed();
    for (const auto& entry : fs::recursive_directory_iterator(installed)) {
        const fs::path copy = root / entry.path().lexically_relative(installed);
        EXPECT_TRUE(fs::exists(copy)) << copy;
        if (entry.is_regular_file() && fs::exists(copy)) {
            EXPECT_EQ(fs::file_size(copy), entry.file_size()) << copy;
        }
    }
}

struct BadOption {
    const char* name;
    std::vector<std::string> words;
    const char* complaint;
};

void PrintTo(const BadOption& bad, std::ostream* stream)
{
    *stream << bad.name;
}

class Options : public testing::TestWithParam<BadOption> {};

constexpr const char* screenForm =
    "WIDTHxHEIGHT or WIDTHxHEIGHT@SCALE with sides from 100 to 2048 points and a scale from 1 to 4";

} // namespace

TEST_P(Options, AreRefusedWithStatusTwo)
{
    const Outcome outcome = springboard(GetParam().words);
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.output, "");
    EXPECT_THAT(outcome.errors, StartsWith("springboard: "));
    EXPECT_THAT(outcome.errors, HasSubstr(GetParam().complaint));
}

INSTANTIATE_TEST_SUITE_P(
    Bad, Options,
    testing::Values(BadOption{"Unknown", {"--colour"}, "unknown option \"--colour\"; --help lists the options"},
                    BadOption{"NoOption", {"script.txt"}, "unknown option \"script.txt\""},
                    BadOption{"Abbreviated", {"--scr", "x"}, "unknown option \"--scr\""},
                    BadOption{"RootWithoutAFolder", {"--root"}, "--root needs a value: DIR"},
                    BadOption{"ScriptWithoutAFile", {"--script="}, "--script needs a value: FILE"},
                    BadOption{"HelpWithAValue", {"--help=me"}, "--help takes no value"},
                    BadOption{
                        "SystemOfWhichNothingIsKnown", {"--system", "9.0"}, "--system: \"9.0\" is none of 7.0|7.0.4|7.1|8.1|8.4"},
                    BadOption{"ScreenWithoutAHeight", {"--screen", "320"}, screenForm},
                    BadOption{"ScreenTooSmall", {"--screen", "99x568"}, screenForm},
                    BadOption{"ScreenTooLarge", {"--screen", "320x2049"}, screenForm},
                    BadOption{"ScreenWithoutAScale", {"--screen", "320x568@"}, screenForm},
                    BadOption{"ScreenWithAScaleOfFive", {"--screen", "320x568@5"}, screenForm},
                    BadOption{"ScreenWithAScaleOfZero", {"--screen", "320x568@0"}, screenForm},
                    BadOption{"ScreenWithFractions", {"--screen", "320.5x568"}, screenForm},
                    BadOption{"ScreenWithWordsBehind", {"--screen", "320x568@2x"}, screenForm},
                    BadOption{"ScreenBelowZero", {"--screen=-320x568"}, screenForm}),
    [](const auto& info) { return info.param.name; });

TEST(HelpOption, NamesEveryOptionAndCommand)
{
    const Outcome outcome = springboard({"--help"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.errors, "");
    for (const char* option : {"--root", "--screen", "--system", "--script", "--load", "--help", "--version"})
        EXPECT_THAT(outcome.output, HasSubstr(option));
    for (const char* command :
         {"clock", "weather",  "units",  "name", "post",     "lock",       "layout", "notify", "card",    "alert",  "unknown",
          "clear", "teardown", "screen", "art",  "underlay", "event",      "tap",    "press",  "release", "swipe",  "show",
          "tree",  "send",     "let",    "add",  "log",      "screenshot", "sleep",  "system", "modify",  "remove", "quit"})
        EXPECT_THAT(outcome.output, HasSubstr("\n  " + std::string(command))) << command;
}

TEST(VersionOption, PrintsTheVersion)
{
    const Outcome outcome = springboard({"--version"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.output, testing::MatchesRegex("springboard [0-9]+\\.[0-9]+\\.[0-9]+\n"));
}

TEST(ScriptOption, RefusesAFileThatIsNotThere)
{
    const Console console;
    const Outcome outcome = springboard({"--root", console.root(), "--script", "/no/such/script"});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_THAT(outcome.errors, StartsWith("springboard: cannot open the script /no/such/script"));
}

TEST(ScriptOption, TakesItsValueBehindAnEqualsSign)
{
    const Console console;
    const Outcome outcome = springboard({"--root=" + console.root().native(), "--script=-"}, "show stormString\n");
    EXPECT_EQ(outcome.output, "\"Storm\"\n");
}

TEST(ScriptOption, TakesAnEmptyScript)
{
    const ConsoleRun run = Console().run("");
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.output + run.errors, "");
}

TEST(Script, TakesLinesThatEndAsOnWindows)
{
    EXPECT_THAT(linesOf(Console(), "show stormString\r\n\r\nshow rainString\r\n"), ElementsAre("Storm", "Rain"));
}

TEST(Script, NeedsNoEndOfItsLastLine)
{
    EXPECT_THAT(linesOf(Console(), "show stormString"), ElementsAre("Storm"));
}

TEST(Script, PassesOverCommentsAndBlankLines)
{
    EXPECT_THAT(linesOf(Console(), "# show rainString\n   \n\t# x\nshow stormString # and no more\n"), ElementsAre("Storm"));
}

TEST(Script, QuotesWordsAsAShellDoes)
{
    EXPECT_THAT(linesOf(Console(), "name 'a  \"b\"'\npost loadSolvaneS\nshow userName\n"
                                   "name \"a 'b' \\\"c\\\" \\\\ \\d\"\npost loadSolvaneS\nshow userName\n"
                                   "name a\\ b\\'c\npost loadSolvaneS\nshow userName\n"
                                   "name a'b'\"c\"\npost loadSolvaneS\nshow userName\n"
                                   "name a#b\npost loadSolvaneS\nshow userName\n"),
                ElementsAre("a  \"b\"", "a 'b' \"c\" \\ \\d", "a b'c", "abc", "a#b"));
}

TEST(Output, IsOneLineOfJSONForEachReport)
{
    const ConsoleRun run =
        Console().run("clock 2014-03-05T08:30:00\nlock\nnotify a b c\nshow listView\ntree\nlog\nshow userName\n");
    EXPECT_EQ(run.errors, "");
    EXPECT_EQ(run.lines.size(), 4U);
}

// The file tree

TEST(RootOption, FillsANewFolder)
{
    const Delivery delivery;
    const fs::path root = delivery.folder() / "new" / "root";
    const ConsoleRun run = delivery.run({"--root", root}, "show stormString\n");
    EXPECT_EQ(run.errors, "");
    EXPECT_THAT(run.lines, ElementsAre("Storm"));
    EXPECT_TRUE(fs::exists(root / "Library/Application Support/Solvane/Badge.png"));
}

TEST(RootOption, FillsANewFolderOfTheFolderWhereItIsStarted)
{
    const Delivery delivery;
    const fs::path here = delivery.folder() / "here";
    fs::create_directory(here);
    const Outcome started =
        runProgram({"/bin/sh", "-c", "cd \"$0\" && exec \"$1\" --root root --script /dev/null", here, delivery.program()});
    EXPECT_EQ(started.status, 0) << started.output;
    expectCompleteTree(here / "root");
}

TEST(RootOption, FillsAnEmptyFolder)
{
    const Delivery delivery;
    const fs::path root = delivery.folder() / "empty";
    fs::create_directory(root);
    EXPECT_THAT(delivery.run({"--root", root}, "show stormString\n").lines, ElementsAre("Storm"));
}

TEST(RootOption, FillsAFolderWholeThoughAnotherFillingWasKilled)
{
    const Delivery delivery;
    const fs::path parent = delivery.folder() / "roots";
    const fs::path root = parent / "root";
    fs::create_directory(parent);
    // The system kills who writes a larger file than this, in blocks of 512 bytes.
    for (const char* limit : {"1", "8", "64", "256"}) {
        const Outcome killed = runProgram(
            {"/bin/sh", "-c", "ulimit -f $0; exec \"$@\"", limit, delivery.program(), "--root", root, "--script", "/dev/null"});
        EXPECT_NE(killed.status, 0) << limit;
        const ConsoleRun run = delivery.run({"--root", root}, "show stormString\n");
        EXPECT_EQ(run.errors, "") << limit;
        EXPECT_THAT(run.lines, ElementsAre("Storm")) << limit;
        expectCompleteTree(root);
        EXPECT_EQ(std::distance(fs::directory_iterator(parent), {}), 1) << "nothing is left beside it";
        fs::remove_all(root);
    }
}

TEST(RootOption, FillsAFolderOnceForAllThatStartAtOnce)
{
    const Delivery delivery;
    const fs::path parent = delivery.folder() / "roots";
    fs::create_directory(parent);
    std::vector<std::unique_ptr<Process>> processes;
    for (int i = 0; i < 6; ++i)
        processes.push_back(std::make_unique<Process>(
            std::vector<std::string>{delivery.program(), "--root", parent / "root", "--script", "/dev/null"}, Environment{},
            STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO));
    for (const auto& process : processes)
        EXPECT_EQ(process->wait(), 0);
    expectCompleteTree(parent / "root");
    EXPECT_EQ(std::distance(fs::directory_iterator(parent), {}), 1) << "nothing is left beside it";
}

TEST(RootOption, SaysWhyAFolderCannotBeFilled)
{
    const Delivery delivery;
    writeFile(delivery.folder() / "file", "");
    const fs::path root = delivery.folder() / "file" / "root";
    const ConsoleRun run = delivery.run({"--root", root}, "show stormString\n");
    EXPECT_EQ(run.status, 2);
    EXPECT_THAT(run.errors, HasSubstr("Not a directory"));
}

TEST(RootOption, LeavesATreeAsItIs)
{
    const Delivery delivery;
    const Console console;
    console.uninstallLibrary();
    EXPECT_EQ(delivery.run({"--root", console.root()}, "show stormString\n").status, 2);
    EXPECT_FALSE(fs::exists(console.tree().libraryFolder() / "Solvane.dylib"));
}

TEST(RootOption, RefusesAFolderThatIsNoPhonesTree)
{
    const TemporaryFolder foreign;
    writeFile(foreign.path() / "letter.txt", "Dear Ana");
    const Outcome outcome = springboard({"--root", foreign.path(), "--script", "-"});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.errors, "springboard: " + foreign.path().native() + " is not a phone's file tree\n");
    EXPECT_EQ(readFile(foreign.path() / "letter.txt"), "Dear Ana");
}

TEST(RootOption, RefusesAFile)
{
    const TemporaryFolder folder;
    writeFile(folder.path() / "file", "");
    const Outcome outcome = springboard({"--root", folder.path() / "file", "--script", "-"});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_THAT(outcome.errors, HasSubstr("is not a folder"));
}

TEST(RootOption, DefaultsToAFolderBesideTheProgram)
{
    const Delivery delivery;
    EXPECT_THAT(delivery.run({}, "name Ana\nshow stormString\n").lines, ElementsAre("Storm"));
    EXPECT_THAT(delivery.run({}, "show userName\n").lines, ElementsAre("Ana"));
    EXPECT_TRUE(fs::exists(delivery.folder() / "root/Library"));
}

TEST(Applications, ArePassedOverWhenTheirIdentifierIsNoText)
{
    const Console console;
    for (const char* identifier : {"(a)", "{a=b;}", "<00>"})
        writeFile(console.root() / "Applications/Ferry.app/Info.plist",
                  std::string("{CFBundleIdentifier=") + identifier + ";CFBundleDisplayName=(b);}");
    linesOf(console, "lock\nnotify com.apple.MobileSMS a b\n");
}

TEST(StandardOutput, IsReportedWhenItCannotBeWritten)
{
    for (const char* command : {"\"$0\" --help > /dev/full", "\"$0\" --version > /dev/full"}) {
        const Outcome outcome = runProgram({"/bin/sh", "-c", command, springboardProgram()});
        EXPECT_EQ(outcome.status, 2) << command;
        EXPECT_EQ(outcome.errors, "springboard: standard output cannot be written\n");
    }
}

TEST(LoadOption, EndsWithStatusTwoWhenThereIsNoSuchLibrary)
{
    Console console;
    console.options = {"--load", console.root() / "nowhere.dylib"};
    const ConsoleRun run = console.run("show NSString\n");
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(run.output, "");
    EXPECT_THAT(run.errors, HasSubstr("nowhere.dylib: No such file or directory"));
}

TEST(LoadOption, InjectsOneMoreLibrary)
{
    Console console;
    const fs::path elsewhere = console.root().parent_path() / "Elsewhere.dylib";
    fs::rename(console.tree().libraryFolder() / "Solvane.dylib", elsewhere);
    fs::remove(console.tree().libraryFolder() / "Solvane.plist");
    console.options = {"--load", elsewhere};
    EXPECT_EQ(lineOf(console, "show stormString"), "Storm");
}
