#include <cstdlib>
#include <gmock/gmock.h>

#include "platform/Foundation/NSDictionary.hpp"
#include "simulator/foundation/property_lists.hpp"
#include "simulator/preferences/stock_preferences.hpp"
#include "simulator/runtime/SimulatedClass.hpp"
#include "tests/support/Console.hpp"
#include "tests/support/SettingsPage.hpp"

/// Solvane's page in the Settings, used by touches as on the phone.

namespace {

using testing::ElementsAre;
using testing::EndsWith;
using testing::IsEmpty;
using testing::StartsWith;

struct Page : testing::Test {
    Page() { page.open(); }

    SettingsPage page;

    NSDictionary* file() const { return simulator::readPropertyList(page.tree().preferencesFile()); }
    std::string nameInFile() const { return textOf(file()->objectForKey(text("Name"))); }
};

/// The page that the settings had before they had a bundle: the Settings themselves write what is edited on it.
constexpr const char* stockPage = "<dict><key>entry</key><dict><key>cell</key><string>PSLinkCell</string>"
                                  "<key>label</key><string>Stock</string></dict>"
                                  "<key>items</key><array><dict><key>cell</key><string>PSEditTextCell</string>"
                                  "<key>label</key><string>Name</string><key>key</key><string>Name</string>"
                                  "<key>defaults</key><string>org.solvane.Solvane</string>"
                                  "<key>autoCaps</key><string>words</string>"
                                  "<key>PostNotification</key><string>loadSolvaneS</string></dict></array></dict>";

/// What SpringBoard greets with after a name was typed on the page of that entry, on that system, and SpringBoard was relaunched.
struct Greetings {
    std::string page;
    std::string stock;
};

std::string greetingAfterTyping(SettingsPage& page, const std::string& name, LiveConsole& springboard)
{
    page.enterName(name);
    if (page.controller()->specifiers()->count() > 1) {
        page.tapCell("Relaunch");
        page.tapButton("Relaunch");
    } else {
        postFromOutside(page.tree().root(), "RespringSV");
    }
    return springboard.ask("show morningString");
}

Greetings greetingsOn(const char* version)
{
    ::setenv("SOLVANE_SYSTEM", version, 1);
    SettingsPage page;
    writeFile(page.tree().root() / "Library/PreferenceLoader/Preferences/Stock.plist", xmlPropertyList(stockPage));
    LiveConsole springboard(page.tree().root());
    EXPECT_EQ(springboard.ask("show morningString"), "Good morning, Pal.");
    page.open();
    Greetings greetings{.page = greetingAfterTyping(page, "ana", springboard), .stock = {}};
    page.open("Stock");
    greetings.stock = greetingAfterTyping(page, "bo", springboard);
    springboard.end();
    return greetings;
}

} // namespace

TEST(NameTypedOnThePage, GreetsAfterTheButtonOn7_0)
{
    const auto [page, stock] = greetingsOn("7.0");
    EXPECT_EQ(page, "Good morning, Ana.");
    EXPECT_EQ(stock, "Good morning, Bo.");
}

TEST(NameTypedOnThePage, GreetsAfterTheButtonOn7_0_4)
{
    const auto [page, stock] = greetingsOn("7.0.4");
    EXPECT_EQ(page, "Good morning, Ana.");
    EXPECT_EQ(stock, "Good morning, Bo.");
}

TEST(NameTypedOnThePage, GreetsAfterTheButtonOn7_1)
{
    const auto [page, stock] = greetingsOn("7.1");
    EXPECT_EQ(page, "Good morning, Ana.");
    EXPECT_EQ(stock, "Good morning, Bo.");
}

TEST(NameTypedOnThePage, GreetsAfterTheButtonOn8_1WhereTheSettingsWriteTooLate)
{
    const auto [page, stock] = greetingsOn("8.1");
    EXPECT_EQ(page, "Good morning, Ana.");
    EXPECT_EQ(stock, "Good morning, Ana.");
}

TEST(NameTypedOnThePage, GreetsAfterTheButtonOn8_4WhereTheSettingsWriteTooLate)
{
    const auto [page, stock] = greetingsOn("8.4");
    EXPECT_EQ(page, "Good morning, Ana.");
    EXPECT_EQ(stock, "Good morning, Ana.");
}

TEST(NameTypedOnAPageOfTheSettings, GreetsOn8_1OnceTheDaemonHasWrittenIt)
{
    ::setenv("SOLVANE_SYSTEM", "8.1", 1);
    SettingsPage page;
    writeFile(page.tree().root() / "Library/PreferenceLoader/Preferences/Stock.plist", xmlPropertyList(stockPage));
    LiveConsole springboard(page.tree().root());
    EXPECT_EQ(springboard.ask("show morningString"), "Good morning, Pal.");
    page.open("Stock");
    EXPECT_EQ(greetingAfterTyping(page, "bo", springboard), "Good morning, Pal.");
    EXPECT_EQ(page.shown("Name"), "Bo");
    simulator::flushStockPreferences();
    postFromOutside(page.tree().root(), "RespringSV");
    EXPECT_EQ(springboard.ask("show morningString"), "Good morning, Bo.");
    springboard.end();
}

TEST_F(Page, ShowsTheNameTheGreetingAndTheVersion)
{
    EXPECT_EQ(page.shown("Name"), "");
    EXPECT_EQ(page.shown("Greeting"), "Good morning, Pal.");
    EXPECT_EQ(page.shown("Version"), SOLVANE_VERSION);
}

TEST_F(Page, IsOfItsBundleThoughItsClassIsOfNone)
{
    PSListController* const controller = page.controller();
    EXPECT_THAT(textOf(controller->bundle()->bundlePath()), EndsWith("/Library/PreferenceBundles/Solvane.bundle"));
    auto* const ofClass = send<"bundleForClass:", NSBundle*>(objc_getClass("NSBundle"), object_getClass(controller));
    EXPECT_EQ(ofClass, (send<"mainBundle", NSBundle*>(objc_getClass("NSBundle"))));
}

TEST_F(Page, WritesNamesWithCapitalsAndWithoutCorrection)
{
    page.enterName("ana maria");
    EXPECT_EQ(nameInFile(), "Ana Maria");
    EXPECT_EQ(page.shown("Greeting"), "Good morning, Ana Maria.");
    UITextField* const field = simulator::fieldOf(simulator::cellOf(page.controller(), text("Name")));
    EXPECT_EQ((send<"autocorrectionType", UITextAutocorrectionType>(field)), UITextAutocorrectionTypeNo);
    EXPECT_EQ(textOf(send<"placeholder", NSObject*>(field)), "Pal");
}

TEST_F(Page, ForgetsANameThatIsEmptied)
{
    page.tree().writePreferencesXML("<dict><key>Name</key><string>Ana</string><key>Other</key><integer>7</integer></dict>");
    page.reopen();
    EXPECT_EQ(page.shown("Name"), "Ana");
    page.enterName("");
    EXPECT_EQ(nameInFile(), "nil");
    EXPECT_EQ(textOf(file()->objectForKey(text("Other"))), "7");
    EXPECT_EQ(page.shown("Greeting"), "Good morning, Pal.");
}

TEST_F(Page, KeepsWhatItDoesNotKnow)
{
    page.tree().writeBinaryPreferences(
        "{'Name': 'Ana', 'Other': [1, 2.5, b'x', True, datetime.datetime(2014, 3, 5)], 'Far': {'a': 'b'}}");
    const std::string before = textOf(file());
    page.enterName("bo");
    EXPECT_EQ(nameInFile(), "Bo");
    page.enterName("ana");
    EXPECT_EQ(textOf(file()), before);
}

TEST_F(Page, ReadsTheFileEachTimeItIsOpened)
{
    page.tree().writePreferencesXML("<dict><key>Name</key><integer>42</integer></dict>");
    page.reopen();
    EXPECT_EQ(page.shown("Name"), "42");
    EXPECT_EQ(page.shown("Greeting"), "Good morning, 42.");
}

TEST_F(Page, AsksBeforeItRelaunches)
{
    LiveConsole springboard(page.tree().root());
    EXPECT_EQ(springboard.ask("show morningString"), "Good morning, Pal.");
    page.enterName("ana");
    page.tapCell("Relaunch");
    EXPECT_THAT(SettingsPage::alerts(), ElementsAre(StartsWith("Relaunch SpringBoard?: ")));
    page.tapButton("Cancel");
    EXPECT_THAT(SettingsPage::alerts(), IsEmpty());
    EXPECT_EQ(springboard.ask("show morningString"), "Good morning, Pal.");
    springboard.end();
}

TEST_F(Page, SavesANameThatIsStillBeingEditedBeforeItRelaunches)
{
    LiveConsole springboard(page.tree().root());
    EXPECT_EQ(springboard.ask("show morningString"), "Good morning, Pal.");
    page.tapCell("Name");
    page.type("ana");
    EXPECT_EQ(nameInFile(), "nil");
    page.tapCell("Relaunch");
    page.tapButton("Relaunch");
    EXPECT_EQ(springboard.ask("show morningString"), "Good morning, Ana.");
    springboard.end();
}

TEST_F(Page, TellsSpringBoardOfANameWhenTheFileHasIt)
{
    LiveConsole springboard(page.tree().root());
    EXPECT_EQ(springboard.ask("show userName"), "Pal");
    page.enterName("ana");
    EXPECT_EQ(springboard.ask("show userName"), "Ana");
    springboard.end();
}

namespace {

NSUInteger writtenOptions;
BOOL (*previousWrite)(NSObject*, SEL, NSString*, NSUInteger, void*);

BOOL noteOptions(NSObject* self, SEL selector, NSString* path, NSUInteger options, void* error)
{
    writtenOptions = options;
    return previousWrite(self, selector, path, options, error);
}

} // namespace

TEST_F(Page, WritesTheFileWholeAndReadableBeforeTheFirstUnlock)
{
    previousWrite = simulator::replaceMethod<"writeToFile:options:error:">(objc_getClass("NSDataMalloc"), &noteOptions);
    page.enterName("ana");
    constexpr NSUInteger atomic = 1;
    constexpr NSUInteger withoutProtection = 0x10000000;
    EXPECT_EQ(writtenOptions, atomic | withoutProtection);
}
