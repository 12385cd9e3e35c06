#include <filesystem>
#include <gmock/gmock.h>

#include "simulator/foundation/property_lists.hpp"
#include "tests/support/Console.hpp"
#include "tests/support/SettingsPage.hpp"

/// What the page does where the preferences file cannot be read or written: it says so, and nothing is lost.

namespace {

namespace fs = std::filesystem;
using testing::AllOf;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;
using testing::UnorderedElementsAre;

struct PreferencesFile : testing::Test {
    PreferencesFile() { page.open(); }

    SettingsPage page;
    const fs::path file = page.tree().preferencesFile();

    std::string name() const { return textOf(simulator::readPropertyList(file)->objectForKey(text("Name"))); }

    std::vector<std::string> files() const
    {
        std::vector<std::string> names;
        for (const auto& entry : fs::directory_iterator(file.parent_path()))
            names.push_back(entry.path().filename());
        return names;
    }
};

constexpr const char* plist = "org.solvane.Solvane.plist";

} // namespace

TEST_F(PreferencesFile, ThatIsDamagedIsKeptBesideAndThatIsSaid)
{
    for (const std::string damaged : {"{Name=((((", "", "<plist><array/></plist>", "bplist00"}) {
        page.tree().writePreferences(damaged);
        page.enterName("ana");
        EXPECT_EQ(name(), "Ana");
        ASSERT_THAT(SettingsPage::alerts(),
                    ElementsAre(AllOf(StartsWith("The settings were damaged: "), HasSubstr(".damaged-1"))));
        EXPECT_EQ(readFile(file.native() + ".damaged-1"), damaged);
        EXPECT_THAT(files(), UnorderedElementsAre(plist, std::string(plist) + ".damaged-1"));
        page.tapButton("OK");
        fs::remove(file.native() + ".damaged-1");
    }
}

TEST_F(PreferencesFile, ThatIsDamagedOnceMoreIsKeptBesideTheFirst)
{
    page.tree().writePreferences("first");
    page.enterName("ana");
    page.tapButton("OK");
    page.tree().writePreferences("second");
    page.enterName("bo");
    EXPECT_EQ(name(), "Bo");
    EXPECT_EQ(readFile(file.native() + ".damaged-1"), "first");
    EXPECT_EQ(readFile(file.native() + ".damaged-2"), "second");
}

TEST_F(PreferencesFile, ThatCannotBeReadIsLeftAlone)
{
    fs::create_directory(file);
    writeFile(file / "inside", "kept");
    page.enterName("ana");
    EXPECT_THAT(SettingsPage::alerts(), ElementsAre(AllOf(StartsWith("The name was not saved: "), EndsWith("Is a directory"))));
    EXPECT_EQ(readFile(file / "inside"), "kept");
    EXPECT_THAT(files(), ElementsAre(plist));
}

TEST_F(PreferencesFile, InNoFolderCannotBeWritten)
{
    fs::remove_all(file.parent_path());
    page.enterName("ana");
    EXPECT_THAT(SettingsPage::alerts(),
                ElementsAre(AllOf(StartsWith("The name was not saved: "), EndsWith("No such file or directory"))));
    EXPECT_EQ(page.shown("Greeting"), "Good morning, Pal.");
}

TEST_F(PreferencesFile, ThatCannotBeWrittenRelaunchesNothing)
{
    LiveConsole springboard(page.tree().root());
    EXPECT_EQ(springboard.ask("show NSProcessInfo.processInfo.processIdentifier"), static_cast<long>(springboard.number()));
    springboard.type("let kept stormString");
    fs::create_directory(file);
    page.tapCell("Name");
    page.type("ana");
    page.tapCell("Relaunch");
    page.tapButton("Relaunch");
    EXPECT_THAT(SettingsPage::alerts(), ElementsAre(StartsWith("The name was not saved: ")));
    // A relaunch takes the kept names away.
    EXPECT_EQ(springboard.ask("show kept"), "Storm");
    springboard.end();
}
