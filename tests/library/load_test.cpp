#include <dlfcn.h>
#include <gmock/gmock.h>

#include "platform/UIKit/UIApplication.hpp"
#include "simulator/runtime/SimulatedClass.hpp"
#include "tests/support/MessageLog.hpp"
#include "tests/support/Phone.hpp"
#include "tests/support/runtime_calls.hpp"

/// What is in place once SpringBoard has loaded the library.

namespace {

namespace fs = std::filesystem;
using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::Field;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

const fs::path fixtures = FIXTURE_FOLDER;

void put(const char* fixture, const fs::path& place)
{
    fs::copy_file(fixtures / fixture, place, fs::copy_options::overwrite_existing);
}

/// An extension that goes into another process by its filter: only ours asks for it here.
fs::path extension(const Phone& phone, const char* name)
{
    const fs::path library = phone.tree().libraryFolder() / name;
    writeFile(fs::path(library).replace_extension(".plist"),
              xmlPropertyList("<dict><key>Filter</key><dict><key>Bundles</key><array><string>com.apple.mobilesafari</string>"
                              "</array></dict></dict>"));
    return library;
}

std::vector<std::string> names(const std::vector<LoadedLibrary>& libraries)
{
    std::vector<std::string> all;
    for (const LoadedLibrary& library : libraries)
        all.push_back(library.name);
    return all;
}

/// "class selector", a row of the hook table.
std::vector<std::string> rows(const std::vector<InstalledMethod>& methods)
{
    std::vector<std::string> all;
    for (const InstalledMethod& method : methods)
        all.push_back(method.className + ' ' + method.selector);
    return all;
}

Method method(const char* className, const char* selectorName)
{
    return class_getInstanceMethod(objc_getClass(className), sel_registerName(selectorName));
}

bool isHooked(const char* className, const char* selectorName)
{
    return isInLibrary(reinterpret_cast<const void*>(method_getImplementation(method(className, selectorName))));
}

std::string encoding(const char* className, const char* selectorName)
{
    return method_getTypeEncoding(method(className, selectorName));
}

constexpr const char* listView = "SBLockScreenNotificationListView";
constexpr const char* listController = "SBLockScreenNotificationListController";

} // namespace

// Libraries that come first

using LibrariesLoadedFirst = TestOn<Phone>;

TEST_F(LibrariesLoadedFirst, AreThePlugInAndTheTwoExtensionsInThatOrder)
{
    put("recording_library.dylib", phone.tree().artLibrary());
    put("recording_library.dylib", extension(phone, "Hushveil.dylib"));
    put("recording_library.dylib", extension(phone, "Dorrance.dylib"));
    phone.inject();
    EXPECT_THAT(names(loadedLibraries()), ElementsAre("NowPlayingArtLockScreen", "Hushveil.dylib", "Dorrance.dylib"));
}

TEST_F(LibrariesLoadedFirst, AreThereBeforeAnyHook)
{
    put("recording_library.dylib", phone.tree().artLibrary());
    put("recording_library.dylib", extension(phone, "Hushveil.dylib"));
    put("recording_library.dylib", extension(phone, "Dorrance.dylib"));
    phone.inject();
    ASSERT_THAT(loadedLibraries(), SizeIs(3));
    EXPECT_THAT(loadedLibraries(), Not(Contains(Field(&LoadedLibrary::hooksWereInPlace, true))));
    EXPECT_THAT(installedMethods(), Not(IsEmpty()));
}

TEST_F(LibrariesLoadedFirst, NeedNotBeInstalled)
{
    fs::remove(phone.tree().artLibrary());
    phone.inject();
    EXPECT_TRUE(isHooked(listView, "layoutSubviews"));
    EXPECT_EQ(textOf(exportedVariable("morningString")), "Good morning, Pal.");
}

TEST_F(LibrariesLoadedFirst, LeaveTheRestToLoadWhenTheFirstIsMissing)
{
    fs::remove(phone.tree().artLibrary());
    put("recording_library.dylib", extension(phone, "Dorrance.dylib"));
    phone.inject();
    EXPECT_THAT(names(loadedLibraries()), ElementsAre("Dorrance.dylib"));
}

TEST_F(LibrariesLoadedFirst, AreBoundAtOnce)
{
    put("unresolved_library.dylib", extension(phone, "Hushveil.dylib"));
    put("recording_library.dylib", extension(phone, "Dorrance.dylib"));
    phone.inject();
    EXPECT_THAT(names(loadedLibraries()), ElementsAre("Dorrance.dylib"));
}

TEST_F(LibrariesLoadedFirst, AreNoLibrariesWhenTheFilesAreRubbish)
{
    writeFile(extension(phone, "Hushveil.dylib"), "no library");
    fs::create_directory(extension(phone, "Dorrance.dylib"));
    phone.inject();
    EXPECT_TRUE(isHooked(listView, "layoutSubviews"));
}

TEST_F(LibrariesLoadedFirst, BringTheArtViewThatNobodyElseLoads)
{
    EXPECT_EQ(objc_getClass("_NowPlayingArtView"), nullptr);
    phone.inject();
    EXPECT_NE(objc_getClass("_NowPlayingArtView"), nullptr);
}

// The hook table

using HookTable = TestOn<Phone>;

TEST_F(HookTable, HasItsTwelveRowsInOrder)
{
    phone.inject();
    EXPECT_THAT(
        rows(installedMethods()),
        ElementsAre("SBLockScreenNotificationListView layoutSubviews", "SBLockScreenNotificationListView cornerRadiusHook",
                    "SBLockScreenNotificationListView normalizePrevTap", "SBLockScreenNotificationListView imgCalenderTapped",
                    "SBLockScreenNotificationListView imgNotificationsTapped", "SBLockScreenNotificationListView initWithFrame:",
                    "SBLockScreenNotificationListController _updateModelAndViewForAdditionOfItem:",
                    "SBLockScreenNotificationListController prepareForTeardown",
                    "SBLockScreenNotificationListController clearItemsForNotificationCenter",
                    "SBLockScreenNotificationListController setInScreenOffMode:",
                    "SBLockScreenView _addLockContentUnderlayWithRequester:", "_NowPlayingArtView initWithFrame:"));
}

TEST_F(HookTable, LooksEachClassUpByName)
{
    phone.inject();
    for (const char* name : {listView, listController, "SBLockScreenView", "_NowPlayingArtView"})
        EXPECT_GE(lookupsOf(name), 1) << name;
}

TEST_F(HookTable, ReplacesEightMethods)
{
    constexpr std::pair<const char*, const char*> replaced[] = {
        {listView, "layoutSubviews"},
        {listView, "initWithFrame:"},
        {listController, "_updateModelAndViewForAdditionOfItem:"},
        {listController, "prepareForTeardown"},
        {listController, "clearItemsForNotificationCenter"},
        {listController, "setInScreenOffMode:"},
        {"SBLockScreenView", "_addLockContentUnderlayWithRequester:"},
    };
    for (const auto& [className, selectorName] : replaced)
        EXPECT_FALSE(isHooked(className, selectorName)) << selectorName;
    phone.inject();
    for (const auto& [className, selectorName] : replaced)
        EXPECT_TRUE(isHooked(className, selectorName)) << selectorName;
    EXPECT_TRUE(isHooked("_NowPlayingArtView", "initWithFrame:"));
}

TEST_F(HookTable, AddsFourMethodsWithoutArgumentsOrResult)
{
    constexpr const char* added[] = {"cornerRadiusHook", "normalizePrevTap", "imgCalenderTapped", "imgNotificationsTapped"};
    for (const char* selectorName : added)
        EXPECT_EQ(class_respondsToSelector(objc_getClass(listView), sel_registerName(selectorName)), NO) << selectorName;
    phone.inject();
    for (const char* selectorName : added) {
        EXPECT_TRUE(isHooked(listView, selectorName)) << selectorName;
        EXPECT_EQ(encoding(listView, selectorName), "v@:") << selectorName;
    }
}

TEST_F(HookTable, GivesEachRowAnImplementationOfItsOwn)
{
    phone.inject();
    std::set<IMP> implementations;
    for (const InstalledMethod& method : installedMethods())
        implementations.insert(method.implementation);
    EXPECT_THAT(implementations, SizeIs(12));
}

TEST_F(HookTable, LeavesOtherClassesAlone)
{
    phone.inject();
    EXPECT_FALSE(isHooked("UIView", "layoutSubviews"));
    EXPECT_FALSE(isHooked("UIView", "initWithFrame:"));
    EXPECT_FALSE(isHooked("UITableView", "layoutSubviews"));
}

TEST_F(HookTable, KeepsTheTypesOfWhatItReplaces)
{
    const std::string init = encoding(listView, "initWithFrame:");
    const std::string screenOff = encoding(listController, "setInScreenOffMode:");
    phone.inject();
    EXPECT_EQ(encoding(listView, "initWithFrame:"), init);
    EXPECT_EQ(encoding(listController, "setInScreenOffMode:"), screenOff);
}

TEST_F(HookTable, PassesOverALockScreenViewThatDoesNotExist)
{
    hideClass("SBLockScreenView");
    phone.inject();
    EXPECT_FALSE(isHooked("SBLockScreenView", "_addLockContentUnderlayWithRequester:"));
    EXPECT_THAT(rows(installedMethods()), AllOf(SizeIs(11), Contains("_NowPlayingArtView initWithFrame:")));
}

TEST_F(HookTable, PassesOverAnArtViewThatDoesNotExist)
{
    fs::remove(phone.tree().artLibrary());
    phone.inject();
    EXPECT_EQ(objc_getClass("_NowPlayingArtView"), nullptr);
    EXPECT_THAT(rows(installedMethods()), AllOf(SizeIs(11), Contains("SBLockScreenView _addLockContentUnderlayWithRequester:")));
}

TEST_F(HookTable, PassesOverAListViewThatDoesNotExist)
{
    hideClass(listView);
    phone.inject();
    EXPECT_FALSE(isHooked(listView, "layoutSubviews"));
    EXPECT_EQ(class_respondsToSelector(objc_getClass(listView), selector<"normalizePrevTap">()), NO);
    EXPECT_TRUE(isHooked(listController, "prepareForTeardown"));
    EXPECT_THAT(installedMethods(), SizeIs(6));
}

TEST_F(HookTable, PassesOverAListControllerThatDoesNotExist)
{
    hideClass(listController);
    phone.inject();
    EXPECT_FALSE(isHooked(listController, "prepareForTeardown"));
    EXPECT_TRUE(isHooked(listView, "initWithFrame:"));
    EXPECT_TRUE(isHooked("_NowPlayingArtView", "initWithFrame:"));
}

TEST_F(HookTable, LeavesAMethodInPlaceThatTheClassAlreadyHas)
{
    static bool wasCalled = false;
    simulator::addMethod<"normalizePrevTap">(objc_getClass(listView), +[](NSObject*, SEL) { wasCalled = true; });
    phone.inject();
    EXPECT_FALSE(isHooked(listView, "normalizePrevTap"));
    EXPECT_TRUE(isHooked(listView, "cornerRadiusHook"));
    simulator::lockScreen();
    send<"normalizePrevTap">(simulator::listView());
    EXPECT_TRUE(wasCalled);
}

TEST_F(HookTable, IsInstalledOnce)
{
    phone.inject();
    phone.inject();
    EXPECT_THAT(installedMethods(), SizeIs(12));
}

// Chaining to what was replaced

using ReplacedMethods = TestOn<Phone>;

TEST_F(ReplacedMethods, InitialiseTheListViewAsSpringBoardDoes)
{
    Noted<"SBLockScreenNotificationListView", "initWithFrame:", id, CGRect>::install();
    phone.inject();
    UIView* const allocated = send<"alloc", UIView*>(objc_getClass(listView));
    MessageLog::name(allocated, "view");
    UIView* const view = allocated->initWithFrame(CGRect::make(1, 2, 300, 400));
    EXPECT_EQ(view, allocated);
    EXPECT_THAT(MessageLog::messages(), ElementsAre("view initWithFrame: 1,2,300,400"));
    EXPECT_EQ(view->frame(), CGRect::make(1, 2, 300, 400));
}

TEST_F(ReplacedMethods, LayTheListViewOutAsSpringBoardDoes)
{
    Noted<"SBLockScreenNotificationListView", "layoutSubviews", void>::install();
    phone.inject();
    simulator::lockScreen();
    MessageLog::name(simulator::listView(), "view");
    MessageLog::messages().clear();
    simulator::listView()->setNeedsLayout();
    simulator::listView()->layoutIfNeeded();
    EXPECT_THAT(MessageLog::messages(), ElementsAre("view layoutSubviews"));
}

TEST_F(ReplacedMethods, PassAnAddedItemOn)
{
    Noted<"SBLockScreenNotificationListController", "_updateModelAndViewForAdditionOfItem:", void, id>::install();
    phone.inject();
    simulator::lockScreen();
    const auto item = simulator::bulletinItem(text("com.example.mail"), nullptr, nullptr);
    MessageLog::name(simulator::listController(), "controller");
    MessageLog::name(item, "item");
    simulator::addListItem(item);
    EXPECT_THAT(MessageLog::messages(), ElementsAre("controller _updateModelAndViewForAdditionOfItem: item"));
}

TEST_F(ReplacedMethods, PassATeardownOn)
{
    Noted<"SBLockScreenNotificationListController", "prepareForTeardown", void>::install();
    phone.inject();
    simulator::lockScreen();
    MessageLog::name(simulator::listController(), "controller");
    send<"prepareForTeardown">(simulator::listController());
    EXPECT_THAT(MessageLog::messages(), ElementsAre("controller prepareForTeardown"));
}

TEST_F(ReplacedMethods, PassAClearingOn)
{
    Noted<"SBLockScreenNotificationListController", "clearItemsForNotificationCenter", void>::install();
    phone.inject();
    simulator::lockScreen();
    MessageLog::name(simulator::listController(), "controller");
    send<"clearItemsForNotificationCenter">(simulator::listController());
    EXPECT_THAT(MessageLog::messages(), ElementsAre("controller clearItemsForNotificationCenter"));
}

TEST_F(ReplacedMethods, PassTheScreenModeOn)
{
    Noted<"SBLockScreenNotificationListController", "setInScreenOffMode:", void, BOOL>::install();
    phone.inject();
    simulator::lockScreen();
    MessageLog::name(simulator::listController(), "controller");
    send<"setInScreenOffMode:">(simulator::listController(), YES);
    send<"setInScreenOffMode:">(simulator::listController(), NO);
    EXPECT_THAT(MessageLog::messages(), ElementsAre("controller setInScreenOffMode: YES", "controller setInScreenOffMode: NO"));
}

TEST_F(ReplacedMethods, NeverAskForTheUnderlay)
{
    Noted<"SBLockScreenView", "_addLockContentUnderlayWithRequester:", void, id>::install();
    phone.inject();
    simulator::lockScreen();
    const NSUInteger before = simulator::lockScreenView()->subviews()->count();
    send<"_addLockContentUnderlayWithRequester:">(simulator::lockScreenView(), id{simulator::listController()});
    EXPECT_THAT(MessageLog::messages(), IsEmpty());
    EXPECT_EQ(simulator::lockScreenView()->subviews()->count(), before);
}

TEST_F(ReplacedMethods, GiveTheArtViewThatSpringBoardMakes)
{
    dlopen(phone.tree().artLibrary().c_str(), RTLD_NOW);
    static UIView* const other = UIView::alloc()->initWithFrame({});
    static CGRect given;
    simulator::replaceMethod<"initWithFrame:">(
        objc_getClass("_NowPlayingArtView"), +[](NSObject*, SEL, CGRect frame) -> UIView* {
            given = frame;
            return other;
        });
    phone.inject();
    UIView* const art = send<"alloc", UIView*>(objc_getClass("_NowPlayingArtView"))->initWithFrame(CGRect::make(3, 4, 50, 60));
    EXPECT_EQ(art, other);
    EXPECT_EQ(given, CGRect::make(3, 4, 50, 60));
}

TEST(StockLockScreen, ShowsTheUnderlayWithoutTheLibrary)
{
    const Phone phone;
    simulator::lockScreen();
    const NSUInteger before = simulator::lockScreenView()->subviews()->count();
    send<"_addLockContentUnderlayWithRequester:">(simulator::lockScreenView(), id{simulator::listController()});
    EXPECT_EQ(simulator::lockScreenView()->subviews()->count(), before + 1);
}

// Greetings

using Greetings = TestOn<Phone>;

TEST_F(Greetings, CarryTheNameFromThePreferences)
{
    phone.tree().writePreferencesXML("<dict><key>Name</key><string>Ana</string></dict>");
    phone.inject();
    EXPECT_EQ(textOf(exportedVariable("morningString")), "Good morning, Ana.");
    EXPECT_EQ(textOf(exportedVariable("afternoonString")), "Good afternoon, Ana.");
    EXPECT_EQ(textOf(exportedVariable("eveningString")), "Good evening, Ana.");
    EXPECT_EQ(textOf(exportedVariable("nightString")), "Good night, Ana.");
}

TEST_F(Greetings, CarryPalWithoutPreferences)
{
    phone.inject();
    EXPECT_EQ(textOf(exportedVariable("morningString")), "Good morning, Pal.");
    EXPECT_EQ(textOf(exportedVariable("afternoonString")), "Good afternoon, Pal.");
    EXPECT_EQ(textOf(exportedVariable("eveningString")), "Good evening, Pal.");
    EXPECT_EQ(textOf(exportedVariable("nightString")), "Good night, Pal.");
}

TEST_F(Greetings, AreBuiltFromTheNameThatTheHookInstallerRead)
{
    // The name is there at load already: no notification has come yet.
    phone.tree().writePreferencesXML("<dict><key>Name</key><string>Zoë</string></dict>");
    phone.inject();
    EXPECT_EQ(textOf(exportedVariable("userName")), "Zoë");
    EXPECT_EQ(textOf(exportedVariable("nightString")), "Good night, Zoë.");
}

TEST_F(Greetings, StayTheSameObjectsWhenTheSettingsAreReadAgain)
{
    phone.tree().writePreferencesXML("<dict><key>Name</key><string>Ana</string></dict>");
    phone.inject();
    constexpr const char* greetings[] = {"morningString", "afternoonString", "eveningString", "nightString"};
    std::vector<NSObject*> before;
    for (const char* name : greetings)
        before.push_back(exportedVariable(name));
    phone.tree().writePreferencesXML("<dict><key>Name</key><string>Bo</string></dict>");
    phone.post("loadSolvaneS");
    ASSERT_EQ(textOf(exportedVariable("userName")), "Bo");
    for (std::size_t i = 0; i < before.size(); ++i)
        EXPECT_EQ(exportedVariable(greetings[i]), before[i]);
    EXPECT_EQ(textOf(exportedVariable("eveningString")), "Good evening, Ana.");
}

TEST_F(Greetings, TakeAFormatDirectiveInTheNameVerbatim)
{
    phone.tree().writePreferencesXML("<dict><key>Name</key><string>%@ %n 100%</string></dict>");
    phone.inject();
    EXPECT_EQ(textOf(exportedVariable("morningString")), "Good morning, %@ %n 100%.");
}

TEST_F(Greetings, OutliveThePoolTheyWereBuiltIn)
{
    {
        const AutoreleasePool pool;
        phone.inject();
    }
    EXPECT_EQ(textOf(exportedVariable("morningString")), "Good morning, Pal.");
    EXPECT_EQ(retainCount(exportedVariable("morningString")), 1U);
}
