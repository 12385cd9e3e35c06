#include <gmock/gmock.h>

#include "tests/support/Console.hpp"

/// Which libraries the loader injects into SpringBoard, by their filters.

namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

constexpr const char* springBoard = "<key>Bundles</key><array><string>com.apple.springboard</string></array>";

fs::path filter(const Console& console)
{
    return console.tree().libraryFolder() / "Solvane.plist";
}

std::string filterOf(const std::string& rules)
{
    return xmlPropertyList("<dict><key>Filter</key><dict>" + rules + "</dict></dict>");
}

std::string forVersions(const std::string& bounds)
{
    return filterOf(springBoard + ("<key>CoreFoundationVersion</key>" + bounds));
}

/// The lines of the log after SpringBoard was launched, and whether the library is in it.
struct Launch {
    Json log;
    bool isInjected;
};

Launch launch(const Console& console)
{
    const ConsoleRun run = console.run("log\nshow stormString\n");
    return {run.lines.front(), run.status == 0};
}

struct Filter {
    const char* name;
    std::string contents;
    /// Empty when the library goes into SpringBoard without a word.
    const char* reason;
};

void PrintTo(const Filter& filter, std::ostream* stream)
{
    *stream << filter.name;
}

const auto named = [](const auto& filter) { return std::string(filter.param.name); };

/// Core Foundation has the version 1141.14 there.
struct EightPointOne : Console {
    EightPointOne() { options = {"--system", "8.1"}; }
};

class AdmittingFilter : public testing::TestWithParam<Filter> {};
class RefusingFilter : public testing::TestWithParam<Filter> {};

} // namespace

TEST_P(AdmittingFilter, LetsTheLibraryIn)
{
    const EightPointOne console;
    writeFile(filter(console), GetParam().contents);
    const Launch launched = launch(console);
    EXPECT_TRUE(launched.isInjected);
    EXPECT_EQ(launched.log, Json::array());
}

INSTANTIATE_TEST_SUITE_P(
    Each, AdmittingFilter,
    testing::Values(Filter{"OfSpringBoard", filterOf(springBoard), ""}, Filter{"OfNothing", filterOf(""), ""},
                    Filter{"WithoutRules", xmlPropertyList("<dict/>"), ""},
                    Filter{"FromItsVersionOn", forVersions("<array><real>1141.14</real></array>"), ""},
                    Filter{"UpToLaterVersions", forVersions("<array><integer>847</integer><real>1141.15</real></array>"), ""}),
    named);

TEST_P(RefusingFilter, KeepsTheLibraryOut)
{
    const EightPointOne console;
    writeFile(filter(console), GetParam().contents);
    const Launch launched = launch(console);
    EXPECT_FALSE(launched.isInjected);
    EXPECT_EQ(launched.log, *GetParam().reason == 0
                                ? Json::array()
                                : Json{std::string("Solvane.dylib is not injected: its filter ") + GetParam().reason});
}

constexpr const char* noBounds = "is broken, CoreFoundationVersion is not one number or two";
constexpr const char* otherVersions = "leaves out CoreFoundation 1141.14";

INSTANTIATE_TEST_SUITE_P(
    Each, RefusingFilter,
    testing::Values(
        Filter{"OfAnotherProcess", filterOf("<key>Bundles</key><array><string>com.apple.mobilesafari</string></array>"), ""},
        Filter{"ThatIsRubbish", "rubbish", "is broken, it is no property list of a dictionary"},
        Filter{"ThatIsEmpty", "", "is broken, it is no property list of a dictionary"},
        Filter{"ThatIsAList", xmlPropertyList("<array/>"), "is broken, it is no property list of a dictionary"},
        Filter{"WithRulesThatAreAText", xmlPropertyList("<dict><key>Filter</key><string>all</string></dict>"),
               "is broken, Filter is no dictionary"},
        Filter{"WithBundlesThatAreAText", filterOf("<key>Bundles</key><string>com.apple.springboard</string>"),
               "is broken, Bundles is no list"},
        Filter{"OfLaterVersions", forVersions("<array><real>1141.15</real></array>"), otherVersions},
        Filter{"UpToItsVersion", forVersions("<array><integer>847</integer><real>1141.14</real></array>"), otherVersions},
        Filter{"WithAVersionThatIsANumber", forVersions("<integer>847</integer>"), noBounds},
        Filter{"WithoutAVersion", forVersions("<array/>"), noBounds},
        Filter{"WithATextForTheLowestVersion", forVersions("<array><string>847</string></array>"), noBounds},
        Filter{"WithATextForTheHighestVersion", forVersions("<array><integer>847</integer><string>1200</string></array>"),
               noBounds},
        Filter{"WithThreeVersions",
               forVersions("<array><integer>847</integer><integer>1200</integer><integer>1300</integer></array>"), noBounds}),
    named);

TEST(Injection, WithoutAFilterIsIntoEveryProcess)
{
    const Console console;
    fs::remove(filter(console));
    const Launch launched = launch(console);
    EXPECT_TRUE(launched.isInjected);
    EXPECT_THAT(launched.log, ElementsAre("Solvane.dylib is injected into every process: it has no filter"));
}

TEST(Injection, ReportsABrokenFilter)
{
    const Console console;
    writeFile(filter(console), "rubbish");
    const ConsoleRun run = console.run("show NSString\n");
    EXPECT_EQ(run.errors, "springboard: Solvane.dylib was not injected: its filter is broken, it is no property list of a "
                          "dictionary\n");
    EXPECT_EQ(run.status, 0);
}

TEST(Injection, ReportsAFilterWithoutItsLibrary)
{
    const Console console;
    fs::remove(console.tree().libraryFolder() / "Solvane.dylib");
    const ConsoleRun run = console.run("show NSString\n");
    EXPECT_EQ(run.errors, "springboard: Solvane.dylib was not injected: it is missing\n");
    EXPECT_EQ(run.status, 0);
}

TEST(Injection, ReportsAFolderThatCannotBeRead)
{
    const Console console;
    fs::remove_all(console.tree().libraryFolder());
    writeFile(console.tree().libraryFolder(), "");
    const ConsoleRun run = console.run("show NSString\n");
    EXPECT_THAT(run.errors, StartsWith("springboard: no library was injected: "));
    EXPECT_EQ(run.status, 0);
}

TEST(Injection, ReportsALibraryThatCannotBeLoaded)
{
    const Console console;
    writeFile(console.tree().libraryFolder() / "Solvane.dylib", "rubbish");
    const ConsoleRun run = console.run("show NSString\n");
    EXPECT_THAT(run.errors, HasSubstr("Solvane.dylib was not injected"));
    EXPECT_EQ(run.status, 0);
}

TEST(Injection, OfASecondCopyLeavesTheFirstAlone)
{
    const Console console;
    console.tree().addLibrary(console.tree().libraryFolder() / "Solvane.dylib", "Twice.dylib");
    EXPECT_THAT(
        linesOf(console, "clock 2014-03-05T08:30:00\nlog\nlock\nshow headlineLabel.text\n"),
        ElementsAre(Json{"Solvane stands aside: there is a class APLCalendar already (made at run time)"}, "Good morning, Pal."));
}
