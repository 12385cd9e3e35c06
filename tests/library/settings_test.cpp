#include <dlfcn.h>
#include <gmock/gmock.h>
#include <sys/stat.h>

#include "platform/Foundation/CFNotificationCenter.hpp"
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

std::string classOf(NSObject* object)
{
    return class_getName(object_getClass(object));
}

} // namespace

TEST(Settings, KeepTheWholeFile)
{
    Phone phone;
    phone.tree().writePreferencesXML("<dict><key>Name</key><string>Ana</string><key>Other</key><integer>3</integer></dict>");
    phone.inject();
    EXPECT_EQ(settings()->count(), 2U);
    EXPECT_EQ(textOf(settings()->objectForKey(text("Other"))), "3");
}

TEST(Settings, TakeAStringAsTheName)
{
    Phone phone;
    EXPECT_EQ(nameFromXML(phone, "<dict><key>Name</key><string>Ana</string></dict>"), "Ana");
}

TEST(Settings, ReadABinaryPropertyList)
{
    Phone phone;
    phone.tree().writeBinaryPreferences("{'Name': 'Søren'}");
    phone.inject();
    EXPECT_EQ(textOf(userName()), "Søren");
}

TEST(Settings, KeepANumberAsTheName)
{
    Phone phone;
    EXPECT_EQ(nameFromXML(phone, "<dict><key>Name</key><integer>42</integer></dict>"), "42");
    EXPECT_TRUE(userName()->isKindOfClass(objc_getClass("NSNumber")));
    EXPECT_EQ(textOf(exportedVariable("morningString")), "Good morning, 42.");
}

TEST(Settings, KeepADateAsTheName)
{
    Phone phone;
    phone.tree().writeBinaryPreferences("{'Name': datetime.datetime(2014, 3, 5, 8, 30)}");
    phone.inject();
    EXPECT_TRUE(userName()->isKindOfClass(objc_getClass("NSDate"))) << classOf(userName());
    EXPECT_EQ(textOf(exportedVariable("nightString")), "Good night, " + textOf(userName()) + ".");
}

TEST(Settings, KeepAnArrayAsTheName)
{
    Phone phone;
    nameFromXML(phone, "<dict><key>Name</key><array><string>a</string><string>b</string></array></dict>");
    EXPECT_TRUE(userName()->isKindOfClass(objc_getClass("NSArray")));
    EXPECT_EQ(textOf(exportedVariable("eveningString")), "Good evening, " + textOf(userName()) + ".");
}

TEST(Settings, KeepAnEmptyName)
{
    Phone phone;
    EXPECT_EQ(nameFromXML(phone, "<dict><key>Name</key><string></string></dict>"), "");
    EXPECT_EQ(textOf(exportedVariable("morningString")), "Good morning, .");
}

TEST(Settings, KeepTheBlanksAroundAName)
{
    Phone phone;
    EXPECT_EQ(nameFromXML(phone, "<dict><key>Name</key><string>  Ana </string></dict>"), "  Ana ");
}

TEST(Settings, TellTheKeyByItsCase)
{
    Phone phone;
    EXPECT_EQ(nameFromXML(phone, "<dict><key>name</key><string>Ana</string></dict>"), "Pal");
    EXPECT_EQ(settings()->count(), 1U);
}

TEST(Settings, GiveTheDefaultNameWhenTheKeyIsAbsent)
{
    Phone phone;
    EXPECT_EQ(nameFromXML(phone, "<dict><key>Other</key><string>x</string></dict>"), "Pal");
    EXPECT_EQ(userName(), pal());
}

TEST(Settings, TakeTheObjectThatTheDictionaryHolds)
{
    Phone phone;
    nameFromXML(phone, "<dict><key>Name</key><string>a name that is long enough to be an object</string></dict>");
    EXPECT_EQ(userName(), settings()->objectForKey(text("Name")));
}

// Files that are no dictionary

TEST(Settings, AreNilWithoutAFile)
{
    const InjectedPhone phone;
    expectNoSettings();
    EXPECT_EQ(textOf(userName()), "Pal");
}

TEST(Settings, AreNilWhenAFolderStandsInTheFilesPlace)
{
    Phone phone;
    fs::create_directory(phone.tree().preferencesFile());
    phone.inject();
    expectNoSettings();
}

TEST(Settings, AreNilWhenAPipeStandsInTheFilesPlace)
{
    Phone phone;
    ASSERT_EQ(::mkfifo(phone.tree().preferencesFile().c_str(), 0600), 0);
    phone.inject();
    expectNoSettings();
}

TEST(Settings, AreNilWhenALinkLeadsNowhere)
{
    Phone phone;
    fs::create_symlink("nowhere", phone.tree().preferencesFile());
    phone.inject();
    expectNoSettings();
}

TEST(Settings, AreReadThroughALink)
{
    Phone phone;
    phone.tree().writePreferencesXML("<dict><key>Name</key><string>Ana</string></dict>");
    const fs::path elsewhere = phone.tree().root() / "elsewhere.plist";
    fs::rename(phone.tree().preferencesFile(), elsewhere);
    fs::create_symlink(elsewhere, phone.tree().preferencesFile());
    phone.inject();
    EXPECT_EQ(textOf(userName()), "Ana");
}

TEST(Settings, AreNilWithAnEmptyFile)
{
    Phone phone;
    phone.tree().writePreferences("");
    phone.inject();
    expectNoSettings();
}

TEST(Settings, AreNilWhenTheRootIsAnArray)
{
    Phone phone;
    phone.tree().writePreferencesXML("<array><string>Name</string><string>Ana</string></array>");
    phone.inject();
    expectNoSettings();
}

TEST(Settings, AreNilWhenTheRootIsAString)
{
    Phone phone;
    phone.tree().writePreferencesXML("<string>Ana</string>");
    phone.inject();
    expectNoSettings();
}

TEST(Settings, AreNilWhenTheRootOfABinaryFileIsAnArray)
{
    Phone phone;
    phone.tree().writeBinaryPreferences("['Name', 'Ana']");
    phone.inject();
    expectNoSettings();
}

TEST(Settings, AreNilWithAMegabyteOfRubbish)
{
    Phone phone;
    std::string rubbish;
    for (unsigned state = 1; rubbish.size() < 1'000'000;) {
        state = state * 1664525 + 1013904223;
        rubbish += static_cast<char>(state >> 24);
    }
    phone.tree().writePreferences(rubbish);
    phone.inject();
    expectNoSettings();
}

TEST(Settings, AreNilWhenRubbishFollowsABinaryFilesMark)
{
    Phone phone;
    phone.tree().writePreferences("bplist00" + std::string(5000, '\xEE'));
    phone.inject();
    expectNoSettings();
}

TEST(Settings, AreNilWhenABinaryFileIsCutShort)
{
    Phone phone;
    phone.tree().writeBinaryPreferences("{'Name': 'Ana', 'Other': list(range(100))}");
    const std::string whole = readFile(phone.tree().preferencesFile());
    phone.tree().writePreferences(whole.substr(0, whole.size() - 20));
    phone.inject();
    expectNoSettings();
}

TEST(Settings, SurviveABinaryFileCutAtAnyLength)
{
    Phone phone;
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

TEST(Settings, AreNilWhenATagIsNotClosed)
{
    Phone phone;
    phone.tree().writePreferences(
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\"><dict><key>Name</key><string>Ana");
    phone.inject();
    expectNoSettings();
}

// Reading again

TEST(Settings, AreReadAgainOnTheNotification)
{
    const InjectedPhone phone;
    phone.tree().writePreferencesXML("<dict><key>Name</key><string>Ana</string></dict>");
    EXPECT_EQ(textOf(userName()), "Pal");
    phone.post("loadSolvaneS");
    EXPECT_EQ(textOf(userName()), "Ana");
}

TEST(Settings, AreNotReadAgainOnAnotherNotification)
{
    const InjectedPhone phone;
    phone.tree().writePreferencesXML("<dict><key>Name</key><string>Ana</string></dict>");
    phone.post("loadSolvane");
    phone.post("loadsolvanes");
    EXPECT_EQ(textOf(userName()), "Pal");
}

TEST(Settings, AreReplacedWhole)
{
    Phone phone;
    phone.tree().writePreferencesXML("<dict><key>Name</key><string>Ana</string><key>Old</key><true/></dict>");
    phone.inject();
    phone.tree().writePreferencesXML("<dict><key>New</key><true/></dict>");
    phone.post("loadSolvaneS");
    EXPECT_EQ(settings()->count(), 1U);
    EXPECT_NE(settings()->objectForKey(text("New")), nullptr);
    EXPECT_EQ(userName(), pal());
}

TEST(Settings, LetGoOfThePreviousDictionary)
{
    Phone phone;
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

TEST(Settings, OwnTheirDictionaryOnce)
{
    Phone phone;
    {
        const AutoreleasePool pool;
        phone.tree().writePreferencesXML("<dict><key>Name</key><string>Ana</string></dict>");
        phone.inject();
    }
    EXPECT_EQ(retainCount(settings()), 1U);
}

TEST(Settings, LetGoOfThePreviousName)
{
    Phone phone;
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

TEST(Settings, KeepTheNameWhenTheirDictionaryGoes)
{
    Phone phone;
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

TEST(Settings, BecomeNilWhenTheFileIsGone)
{
    Phone phone;
    phone.tree().writePreferencesXML("<dict><key>Name</key><string>Ana</string></dict>");
    phone.inject();
    fs::remove(phone.tree().preferencesFile());
    phone.post("loadSolvaneS");
    expectNoSettings();
    EXPECT_EQ(textOf(exportedVariable("eveningString")), "Good evening, Ana.");
}

TEST(Settings, GiveTheDefaultNameThatTheVariableHoldsNow)
{
    const InjectedPhone phone;
    auto& palString = exportedVariable<NSString>("palString");
    palString = NSString::alloc()->initWithUTF8String("Chum");
    reload();
    EXPECT_EQ(textOf(userName()), "Chum");
}

TEST(Settings, DoNotLookAtTheCallbacksArguments)
{
    Phone phone;
    phone.inject();
    phone.tree().writePreferencesXML("<dict><key>Name</key><string>Ana</string></dict>");
    int nothing = 0;
    exportedFunction<Callback>("loadSettings")(nullptr, &nothing, text("another"), &nothing, nullptr);
    EXPECT_EQ(textOf(userName()), "Ana");
}

// Relaunching

TEST(Respring, AsksTheApplicationToRelaunch)
{
    const InjectedPhone phone;
    static int relaunches = 0;
    simulator::setRelaunchHandler([] { ++relaunches; });
    exportedFunction<Callback>("respring")(nullptr, nullptr, nullptr, nullptr, nullptr);
    EXPECT_EQ(relaunches, 1);
}

TEST(Respring, AsksTheSharedApplication)
{
    const InjectedPhone phone;
    static NSObject* asked = nullptr;
    simulator::replaceMethod<"_relaunchSpringBoardNow">(objc_getClass("SpringBoard"), +[](NSObject* self, SEL) { asked = self; });
    exportedFunction<Callback>("respring")(nullptr, nullptr, nullptr, nullptr, nullptr);
    EXPECT_EQ(asked, UIApplication::sharedApplication());
    EXPECT_NE(asked, nullptr);
}

TEST(Respring, ComesWithItsNotification)
{
    const InjectedPhone phone;
    static int relaunches = 0;
    simulator::setRelaunchHandler([] { ++relaunches; });
    phone.post("RespringSV");
    EXPECT_EQ(relaunches, 1);
}

TEST(Respring, DoesNotReadTheSettings)
{
    const InjectedPhone phone;
    simulator::setRelaunchHandler([] {});
    phone.tree().writePreferencesXML("<dict><key>Name</key><string>Ana</string></dict>");
    phone.post("RespringSV");
    EXPECT_EQ(textOf(userName()), "Pal");
}
