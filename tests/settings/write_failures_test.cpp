#include <cstdint>
#include <filesystem>
#include <functional>
#include <gmock/gmock.h>
#include <linux/capability.h>
#include <stdexcept>
#include <sys/syscall.h>
#include <unistd.h>
#include <utility>

#include "simulator/foundation/property_lists.hpp"
#include "tests/support/Console.hpp"
#include "tests/support/SettingsPage.hpp"
#include "tests/support/SteppedProcess.hpp"
#include "tests/support/full_disk.hpp"

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

/// Lets the permissions of files hold for root too, or lets root overrule them again.
void overrulePermissions(bool may)
{
    __user_cap_header_struct header{.version = _LINUX_CAPABILITY_VERSION_3, .pid = 0};
    __user_cap_data_struct sets[_LINUX_CAPABILITY_U32S_3]{};
    ::syscall(SYS_capget, &header, sets);
    constexpr std::uint32_t overruling = 1U << CAP_DAC_OVERRIDE | 1U << CAP_DAC_READ_SEARCH;
    sets[0].effective = may ? sets[0].effective | (overruling & sets[0].permitted) : sets[0].effective & ~overruling;
    if (::syscall(SYS_capset, &header, sets) != 0)
        throw std::runtime_error("cannot change what root may do");
}

/// A file or folder with these permissions, which hold for root too.
class Restricted {
public:
    Restricted(fs::path path, fs::perms permissions) : path_(std::move(path)), before_(fs::status(path_).permissions())
    {
        fs::permissions(path_, permissions);
        overrulePermissions(false);
    }
    Restricted(const Restricted&) = delete;
    Restricted& operator=(const Restricted&) = delete;
    ~Restricted()
    {
        overrulePermissions(true);
        fs::permissions(path_, before_);
    }

private:
    fs::path path_;
    fs::perms before_;
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

TEST_F(PreferencesFile, ThatMayNotBeReadIsNotReplaced)
{
    const std::string before = xmlPropertyList("<dict><key>Other</key><integer>7</integer></dict>");
    page.tree().writePreferences(before);
    {
        const Restricted unreadable(file, fs::perms::none);
        page.enterName("ana");
    }
    EXPECT_THAT(SettingsPage::alerts(),
                ElementsAre(AllOf(StartsWith("The name was not saved: "), EndsWith("Permission denied"))));
    EXPECT_EQ(readFile(file), before);
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

TEST_F(PreferencesFile, OnAFullDiskStaysAsItWas)
{
    page.tree().writePreferencesXML("<dict><key>Name</key><string>Ana</string><key>Other</key><integer>7</integer></dict>");
    page.reopen();
    const std::string before = readFile(file);
    {
        const FullDisk disk;
        page.enterName("bo");
    }
    EXPECT_THAT(SettingsPage::alerts(),
                ElementsAre(AllOf(StartsWith("The name was not saved: "), EndsWith("No space left on device"))));
    EXPECT_EQ(readFile(file), before);
    EXPECT_THAT(files(), ElementsAre(plist));
    EXPECT_EQ(page.shown("Greeting"), "Good morning, Ana.");
    page.tapButton("OK");
    page.enterName("bo");
    EXPECT_EQ(name(), "Bo");
}

TEST_F(PreferencesFile, ThatIsDamagedStaysOnAFullDisk)
{
    page.tree().writePreferences("damaged");
    {
        const FullDisk disk;
        page.enterName("bo");
    }
    EXPECT_THAT(SettingsPage::alerts(),
                ElementsAre(AllOf(StartsWith("The name was not saved: "), EndsWith("No space left on device"))));
    EXPECT_EQ(readFile(file), "damaged");
}

TEST_F(PreferencesFile, InAFolderThatIsReadOnlyStaysAsItWas)
{
    page.tree().writePreferencesXML("<dict><key>Name</key><string>Ana</string></dict>");
    page.reopen();
    const std::string before = readFile(file);
    const Restricted folder(file.parent_path(), fs::perms::owner_read | fs::perms::owner_exec);
    page.enterName("bo");
    EXPECT_THAT(SettingsPage::alerts(),
                ElementsAre(AllOf(StartsWith("The name was not saved: "), EndsWith("Permission denied"))));
    EXPECT_EQ(readFile(file), before);
    EXPECT_EQ(page.shown("Greeting"), "Good morning, Ana.");
}

namespace {

/// The files that may be there when the page is killed while it writes "Bo" over that file: the old one or the new.
void killAtEachSystemCall(PreferencesFile& test, const std::string& before, const std::function<void(const std::string&)>& check)
{
    const auto& page = test.page;
    page.tree().writePreferences(before);
    page.tapCell("Name");
    while (!page.shown("Name").empty())
        page.tapKey("delete");
    page.type("bo");
    long calls = 0;
    try {
        while (killAtSystemCall(calls, [&] { page.tapKey("return"); })) {
            check(readFile(test.file));
            for (const std::string& other : test.files())
                if (other.find(".damaged") != std::string::npos)
                    fs::remove(test.file.parent_path() / other);
            page.tree().writePreferences(before);
            ++calls;
        }
    } catch (const std::runtime_error& reason) {
        GTEST_SKIP() << reason.what();
    }
    EXPECT_EQ(test.name(), "Bo");
    // To open, to write, to rename.
    EXPECT_GT(calls, 3);
}

} // namespace

TEST_F(PreferencesFile, IsTheOldOneOrTheNewWheneverThePageIsKilled)
{
    const std::string before = xmlPropertyList("<dict><key>Name</key><string>Ana</string></dict>");
    int old = 0;
    int written = 0;
    killAtEachSystemCall(*this, before, [&](const std::string& contents) {
        if (contents == before) {
            ++old;
        } else {
            ASSERT_EQ(name(), "Bo");
            ++written;
        }
    });
    if (!IsSkipped()) {
        EXPECT_GT(old, 0);
        EXPECT_GT(written, 0);
    }
    // What those who were killed left goes with the next name.
    page.enterName("ana");
    EXPECT_THAT(files(), ElementsAre(plist));
}

TEST_F(PreferencesFile, ThatIsDamagedIsNotLostWheneverThePageIsKilled)
{
    const std::string before = "damaged";
    killAtEachSystemCall(*this, before, [&](const std::string& contents) {
        if (contents == before)
            return;
        ASSERT_EQ(name(), "Bo");
        bool isKept = false;
        for (const std::string& other : files())
            isKept = isKept || (other != plist && readFile(file.parent_path() / other) == before);
        ASSERT_TRUE(isKept);
    });
}
