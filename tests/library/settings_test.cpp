#include <dlfcn.h>
#include <gmock/gmock.h>
#include <sys/stat.h>

#include "platform/Foundation/CFNotificationCenter.hpp"
#include "platform/Foundation/NSDictionary.hpp"
#include "platform/UIKit/UIApplication.hpp"
#include "simulator/foundation/system_log.hpp"
#include "simulator/runtime/SimulatedClass.hpp"
#include "tests/support/Phone.hpp"

/// The settings record: what the library makes of the preferences file, at load and when it is told to read it again.

namespace {

namespace fs = std::filesystem;
using testing::IsEmpty;

using Callback = void(CFNotificationCenterRef, void*, NSString*, const void*, NSDictionary*);

NSDictionary*& settings()
{
    return exportedVariable<NSDictionary>("settingsDictionary");
}

NSObject*& userName()
{
    return exportedVariable("userName");
}

NSObject* pal()
{
    return exportedVariable("palString");
}

void reload()
{
    exportedFunction<Callback>("loadSettings")(nullptr, nullptr, nullptr, nullptr, nullptr);
}

/// The name that the library has after loading with that preferences file as another program wrote it.
std::string nameFromXML(Phone& phone, const std::string& root)
{
    phone.tree().writePreferencesXML(root);
    phone.inject();
    return textOf(userName());
}

void expectNoSettings()
{
    EXPECT_EQ(settings(), nullptr);
    EXPECT_EQ(userName(), pal());
    EXPECT_THAT(simulator::takeSystemLog(), IsEmpty());
}

} // namespace

using Settings = TestOn<Phone>;

TEST_F(Settings, KeepTheWholeFile)
{
    phone.tree().writePreferencesXML("<dict><key>Name</key><string>Ana</string><key>Other</key><integer>3</integer></dict>");
    phone.inject();
    EXPECT_EQ(settings()->count(), 2U);
    EXPECT_EQ(textOf(settings()->objectForKey(text("Other"))), "3");
}

TEST_F(Settings, TakeAStringAsTheName)
{
    EXPECT_EQ(nameFromXML(phone, "<dict><key>Name</key><string>Ana</string></dict>"), "Ana");
}

TEST_F(Settings, ReadABinaryPropertyList)
{
    phone.tree().writeBinaryPreferences("{'Name': 'Søren'}");
    phone.inject();
    EXPECT_EQ(textOf(userName()), "Søren");
}

TEST_F(Settings, KeepANumberAsTheName)
{
    EXPECT_EQ(nameFromXML(phone, "<dict><key>Name</key><integer>42</integer></dict>"), "42");
    EXPECT_TRUE(userName()->isKindOfClass(objc_getClass("NSNumber")));
    EXPECT_EQ(textOf(exportedVariable("morningString")), "Good morning, 42.");
}

TEST_F(Settings, KeepADateAsTheName)
{
    phone.tree().writeBinaryPreferences("{'Name': datetime.datetime(2014, 3, 5, 8, 30)}");
    phone.inject();
    EXPECT_TRUE(userName()->isKindOfClass(objc_getClass("NSDate"))) << classNameOf(userName());
    EXPECT_EQ(textOf(exportedVariable("nightString")), "Good night, " + textOf(userName()) + ".");
}

TEST_F(Settings, KeepAnArrayAsTheName)
{
    nameFromXML(phone, "<dict><key>Name</key><array><string>a</string><string>b</string></array></dict>");
    EXPECT_TRUE(userName()->isKindOfClass(objc_getClass("NSArray")));
    EXPECT_EQ(textOf(exportedVariable("eveningString")), "Good evening, " + textOf(userName()) + ".");
}

TEST_F(Settings, KeepAnEmptyName)
{
    EXPECT_EQ(nameFromXML(phone, "<dict><key>Name</key><string></string></dict>"), "");
    EXPECT_EQ(textOf(exportedVariable("morningString")), "Good morning, .");
}

TEST_F(Settings, KeepTheBlanksAroundAName)
{
    EXPECT_EQ(nameFromXML(phone, "<dict><key>Name</key><string>  Ana </string></dict>"), "  Ana ");
}

TEST_F(Settings, TellTheKeyByItsCase)
{
    EXPECT_EQ(nameFromXML(phone, "<dict><key>name</key><string>Ana</string></dict>"), "Pal");
    EXPECT_EQ(settings()->count(), 1U);
}

TEST_F(Settings, GiveTheDefaultNameWhenTheKeyIsAbsent)
{
    EXPECT_EQ(nameFromXML(phone, "<dict><key>Other</key><string>x</string></dict>"), "Pal");
    EXPECT_EQ(userName(), pal());
}

TEST_F(Settings, TakeTheObjectThatTheDictionaryHolds)
{
    nameFromXML(phone, "<dict><key>Name</key><string>a name that is long enough to be an object</string></dict>");
    EXPECT_EQ(userName(), settings()->objectForKey(text("Name")));
}

// Files that are no dictionary

TEST_F(Settings, AreNilWithoutAFile)
{
    phone.inject();
    expectNoSettings();
    EXPECT_EQ(textOf(userName()), "Pal");
}

TEST_F(Settings, AreNilWhenAFolderStandsInTheFilesPlace)
{
    fs::create_directory(phone.tree().preferencesFile());
    phone.inject();
    expectNoSettings();
}

TEST_F(Settings, AreNilWhenAPipeStandsInTheFilesPlace)
{
    ASSERT_EQ(::mkfifo(phone.tree().preferencesFile().c_str(), 0600), 0);
    phone.inject();
    expectNoSettings();
}

TEST_F(Settings, AreNilWhenALinkLeadsNowhere)
{
    fs::create_symlink("nowhere", phone.tree().preferencesFile());
    phone.inject();
    expectNoSettings();
}

TEST_F(Settings, AreReadThroughALink)
{
    phone.tree().writePreferencesXML("<dict><key>Name</key><string>Ana</string></dict>");
    const fs::path elsewhere = phone.tree().root() / "elsewhere.plist";
    fs::rename(phone.tree().preferencesFile(), elsewhere);
    fs::create_symlink(elsewhere, phone.tree().preferencesFile());
    phone.inject();
    EXPECT_EQ(textOf(userName()), "Ana");
}

TEST_F(Settings, AreNilWithAnEmptyFile)
{
    phone.tree().writePreferences("");
    phone.inject();
    expectNoSettings();
}

TEST_F(Settings, AreNilWhenTheRootIsAnArray)
{
    phone.tree().writePreferencesXML("<array><string>Name</string><string>Ana</string></array>");
    phone.inject();
    expectNoSettings();
}

TEST_F(Settings, AreNilWhenTheRootIsAString)
{
    phone.tree().writePreferencesXML("<string>Ana</string>");
    phone.inject();
    expectNoSettings();
}

TEST_F(Settings, AreNilWhenTheRootOfABinaryFileIsAnArray)
{
    phone.tree().writeBinaryPreferences("['Name', 'Ana']");
    phone.inject();
    expectNoSettings();
}

TEST_F(Settings, AreNilWithAMegabyteOfRubbish)
{
    std::string rubbish;
    for (unsigned state = 1; rubbish.size() < 1'000'000;) {
        state = state * 1664525 + 1013904223;
        rubbish += static_cast<char>(state >> 24);
    }
    phone.tree().writePreferences(rubbish);
    phone.inject();
    expectNoSettings();
}

TEST_F(Settings, AreNilWhenRubbishFollowsABinaryFilesMark)
{
    phone.tree().writePreferences("bplist00" + std::string(5000, '\xEE'));
    phone.inject();
    expectNoSettings();
}

TEST_F(Settings, AreNilWhenABinaryFileIsCutShort)
{
    phone.tree().writeBinaryPreferences("{'Name': 'Ana', 'Other': list(range(100))}");
    const std::string whole = readFile(phone.tree().preferencesFile());
    phone.tree().writePreferences(whole.substr(0, whole.size() - 20));
    phone.inject();
    expectNoSettings();
}

TEST_F(Settings, SurviveABinaryFileCutAtAnyLength)
{
    phone.tree().writeBinaryPreferences("{'Name': 'Ana', 'Other': [1, 2.5, 'three', b'four']}");
    const std::string whole = readFile(phone.tree().preferencesFile());
    phone.inject();
    for (std::size_t length = 0; length < whole.size(); ++length) {
        const AutoreleasePool pool;
        phone.tree().writePreferences(whole.substr(0, length));
        reload();
        EXPECT_EQ(userName(), pal()) << length;
    }
    EXPECT_THAT(simulator::takeSystemLog(), IsEmpty());
}

TEST_F(Settings, AreNilWhenATagIsNotClosed)
{
    phone.tree().writePreferences(
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\"><dict><key>Name</key><string>Ana");
    phone.inject();
    expectNoSettings();
}

// Reading again

TEST_F(Settings, AreReadAgainOnTheNotification)
{
    phone.inject();
    phone.tree().writePreferencesXML("<dict><key>Name</key><string>Ana</string></dict>");
    EXPECT_EQ(textOf(userName()), "Pal");
    phone.post("loadSolvaneS");
    EXPECT_EQ(textOf(userName()), "Ana");
}

TEST_F(Settings, AreNotReadAgainOnAnotherNotification)
{
    phone.inject();
    phone.tree().writePreferencesXML("<dict><key>Name</key><string>Ana</string></dict>");
    phone.post("loadSolvane");
    phone.post("loadsolvanes");
    EXPECT_EQ(textOf(userName()), "Pal");
}

TEST_F(Settings, AreReplacedWhole)
{
    phone.tree().writePreferencesXML("<dict><key>Name</key><string>Ana</string><key>Old</key><true/></dict>");
    phone.inject();
    phone.tree().writePreferencesXML("<dict><key>New</key><true/></dict>");
    phone.post("loadSolvaneS");
    EXPECT_EQ(settings()->count(), 1U);
    EXPECT_NE(settings()->objectForKey(text("New")), nullptr);
    EXPECT_EQ(userName(), pal());
}

TEST_F(Settings, LetGoOfThePreviousDictionary)
{
    id previous = nullptr;
    {
        const AutoreleasePool pool;
        phone.tree().writePreferencesXML("<dict><key>Name</key><string>Ana</string></dict>");
        phone.inject();
        objc_storeWeak(&previous, settings());
    }
    ASSERT_NE(previous, nullptr);
    {
        const AutoreleasePool pool;
        reload();
    }
    EXPECT_EQ(previous, nullptr);
}

TEST_F(Settings, OwnTheirDictionaryOnce)
{
    {
        const AutoreleasePool pool;
        phone.tree().writePreferencesXML("<dict><key>Name</key><string>Ana</string></dict>");
        phone.inject();
    }
    EXPECT_EQ(retainCount(settings()), 1U);
}

TEST_F(Settings, LeaveNothingOfTheirFirstReadingToAPoolOfTheLoaders)
{
    phone.tree().writePreferencesXML("<dict><key>Name</key><string>Ana</string></dict>");
    phone.inject();
    EXPECT_EQ(retainCount(settings()), 1U);
}

TEST_F(Settings, LetGoOfThePreviousName)
{
    id previous = nullptr;
    {
        const AutoreleasePool pool;
        phone.tree().writePreferencesXML("<dict><key>Name</key><array><string>x</string></array></dict>");
        phone.inject();
        objc_storeWeak(&previous, userName());
    }
    ASSERT_NE(previous, nullptr);
    {
        const AutoreleasePool pool;
        fs::remove(phone.tree().preferencesFile());
        reload();
    }
    EXPECT_EQ(previous, nullptr);
}

TEST_F(Settings, KeepTheNameWhenTheirDictionaryGoes)
{
    {
        const AutoreleasePool pool;
        phone.tree().writePreferencesXML("<dict><key>Name</key><array><string>x</string></array></dict>");
        phone.inject();
    }
    NSDictionary* const dictionary = settings();
    settings() = nullptr;
    objc_release(dictionary);
    EXPECT_TRUE(userName()->isKindOfClass(objc_getClass("NSArray")));
}

TEST_F(Settings, BecomeNilWhenTheFileIsGone)
{
    phone.tree().writePreferencesXML("<dict><key>Name</key><string>Ana</string></dict>");
    phone.inject();
    fs::remove(phone.tree().preferencesFile());
    phone.post("loadSolvaneS");
    expectNoSettings();
    EXPECT_EQ(textOf(exportedVariable("eveningString")), "Good evening, Ana.");
}

TEST_F(Settings, GiveTheDefaultNameThatTheVariableHoldsNow)
{
    phone.inject();
    auto& palString = exportedVariable<NSString>("palString");
    palString = NSString::alloc()->initWithUTF8String("Chum");
    reload();
    EXPECT_EQ(textOf(userName()), "Chum");
}

TEST_F(Settings, DoNotLookAtTheCallbacksArguments)
{
    phone.inject();
    phone.tree().writePreferencesXML("<dict><key>Name</key><string>Ana</string></dict>");
    int nothing = 0;
    exportedFunction<Callback>("loadSettings")(nullptr, &nothing, text("another"), &nothing, nullptr);
    EXPECT_EQ(textOf(userName()), "Ana");
}

// Relaunching

using Respring = TestOn<InjectedPhone>;

TEST_F(Respring, AsksTheApplicationToRelaunch)
{
    static int relaunches = 0;
    simulator::setRelaunchHandler([] { ++relaunches; });
    exportedFunction<Callback>("respring")(nullptr, nullptr, nullptr, nullptr, nullptr);
    EXPECT_EQ(relaunches, 1);
}

TEST_F(Respring, AsksTheSharedApplication)
{
    static NSObject* asked = nullptr;
    simulator::replaceMethod<"_relaunchSpringBoardNow">(objc_getClass("SpringBoard"), +[](NSObject* self, SEL) { asked = self; });
    exportedFunction<Callback>("respring")(nullptr, nullptr, nullptr, nullptr, nullptr);
    EXPECT_EQ(asked, UIApplication::sharedApplication());
    EXPECT_NE(asked, nullptr);
}

TEST_F(Respring, ComesWithItsNotification)
{
    static int relaunches = 0;
    simulator::setRelaunchHandler([] { ++relaunches; });
    phone.post("RespringSV");
    EXPECT_EQ(relaunches, 1);
}

TEST_F(Respring, DoesNotReadTheSettings)
{
    simulator::setRelaunchHandler([] {});
    phone.tree().writePreferencesXML("<dict><key>Name</key><string>Ana</string></dict>");
    phone.post("RespringSV");
    EXPECT_EQ(textOf(userName()), "Pal");
}
