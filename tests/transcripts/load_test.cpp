#include <gtest/gtest.h>
#include <set>

#include "platform/UIKit/UIApplication.hpp"
#include "simulator/runtime/SimulatedClass.hpp"
#include "tests/support/MorningPhone.hpp"
#include "tests/transcripts/Transcript.hpp"

/// Loading the library, and what it does when its two notifications are posted.

namespace {

constexpr const char* listView = "SBLockScreenNotificationListView";
constexpr const char* listController = "SBLockScreenNotificationListController";

/// Reading the preferences file.
Rows settings(bool fileIsThere, bool nameIsThere)
{
    Rows rows{"NSDictionary dictionaryWithContentsOfFile: '/User/Library/Preferences/org.solvane.Solvane.plist'" +
              std::string(fileIsThere ? " = settings" : "")};
    if (fileIsThere)
        rows.push_back("settings objectForKeyedSubscript: 'Name'");
    if (nameIsThere)
        rows.push_back("settings objectForKeyedSubscript: 'Name'");
    return rows;
}

Rows hookTable(const std::set<std::string>& missing)
{
    struct Row {
        std::string className;
        std::string selector;
        bool isAdded = false;
    };
    Rows rows;
    for (const auto& [className, selector, isAdded] : {
             Row{listView, "layoutSubviews"},
             Row{listView, "cornerRadiusHook", true},
             Row{listView, "normalizePrevTap", true},
             Row{listView, "imgCalenderTapped", true},
             Row{listView, "imgNotificationsTapped", true},
             Row{listView, "initWithFrame:"},
             Row{listController, "_updateModelAndViewForAdditionOfItem:"},
             Row{listController, "prepareForTeardown"},
             Row{listController, "clearItemsForNotificationCenter"},
             Row{listController, "setInScreenOffMode:"},
             Row{"SBLockScreenView", "_addLockContentUnderlayWithRequester:"},
             Row{"_NowPlayingArtView", "initWithFrame:"},
         }) {
        const std::string cls = missing.contains(className) ? "nil" : className;
        rows.push_back("objc_getClass " + className);
        rows.push_back(isAdded ? "class_addMethod " + cls + ' ' + selector + " v@:" : "MSHookMessageEx " + cls + ' ' + selector);
    }
    return rows;
}

Rows greeting(const std::string& time, const std::string& name)
{
    return {"NSString stringWithFormat: 'Good " + time + ", %@.' -> 'Good " + time + ", " + name + ".'"};
}

/// The question whether the library can do its work here.
Rows askingForRoom()
{
    return {"objc_getClass SpringBoard", "objc_getClass APLCalendar", "objc_getClass SVWidget", "objc_getClass SVAppsView",
            "objc_getProtocol APLCalendarDelegate"};
}

Rows loading(const Rows& settings, const std::string& name, const std::set<std::string>& missing = {})
{
    const Rows first =
        askingForRoom() +
        Rows{"objc_autoreleasePoolPush",
             "dlopen /System/Library/SpringBoardPlugins/NowPlayingArtLockScreen.lockbundle/NowPlayingArtLockScreen 2",
             "dlopen /Library/MobileSubstrate/DynamicLibraries/Hushveil.dylib 2",
             "dlopen /Library/MobileSubstrate/DynamicLibraries/Dorrance.dylib 2",
             "CFNotificationCenterGetDarwinNotifyCenter",
             "CFNotificationCenterAddObserver darwin nil loadSettings 'loadSolvaneS' nil 0",
             "CFNotificationCenterGetDarwinNotifyCenter",
             "CFNotificationCenterAddObserver darwin nil respring 'RespringSV' nil 0"} +
        settings + hookTable(missing) + Rows{"objc_autoreleasePoolPop"};
    const Rows second = Rows{"objc_autoreleasePoolPush"} + greeting("morning", name) + greeting("afternoon", name) +
                        greeting("evening", name) + greeting("night", name) + Rows{"objc_autoreleasePoolPop"};
    return first + second;
}

void expectLoading(MorningPhone& phone, const Rows& rows)
{
    Transcript transcript;
    transcript.expect(
        [&] {
            phone.inject();
            transcript.nameCode("loadSettings").nameCode("respring");
        },
        rows);
}

} // namespace

TEST(LoadTranscript, WithoutAPreferencesFile)
{
    MorningPhone phone;
    expectLoading(phone, loading(settings(false, false), "Pal"));
}

TEST(LoadTranscript, WithAName)
{
    MorningPhone phone;
    phone.tree().writePreferencesXML("<dict><key>Name</key><string>Ana</string></dict>");
    expectLoading(phone, loading(settings(true, true), "Ana"));
}

TEST(LoadTranscript, WithoutAName)
{
    MorningPhone phone;
    phone.tree().writePreferencesXML("<dict><key>Nome</key><string>Ana</string></dict>");
    expectLoading(phone, loading(settings(true, false), "Pal"));
}

TEST(LoadTranscript, WithoutTheClassesOfTheLockScreen)
{
    MorningPhone phone;
    const std::set<std::string> missing{listView, listController, "SBLockScreenView", "_NowPlayingArtView"};
    for (const std::string& name : missing)
        hideClass(name);
    expectLoading(phone, loading(settings(false, false), "Pal", missing));
}

TEST(LoadTranscript, InAnotherProcess)
{
    MorningPhone phone;
    hideClass("SpringBoard");
    expectLoading(phone, {"objc_getClass SpringBoard", "objc_autoreleasePoolPush",
                          "NSLog 'Solvane stands aside: this is not SpringBoard'", "objc_autoreleasePoolPop"});
}

TEST(LoadTranscript, WithAClassOfOurName)
{
    MorningPhone phone;
    objc_registerClassPair(objc_allocateClassPair(objc_getClass("UIView"), "SVWidget", 0));
    expectLoading(phone, {"objc_getClass SpringBoard", "objc_getClass APLCalendar", "objc_getClass SVWidget",
                          "objc_autoreleasePoolPush", "class_getImageName SVWidget",
                          "NSLog 'Solvane stands aside: there is a class SVWidget already (made at run time)'",
                          "objc_autoreleasePoolPop"});
}

TEST(LoadTranscript, WithAProtocolOfOurName)
{
    MorningPhone phone;
    objc_registerProtocol(objc_allocateProtocol("APLCalendarDelegate"));
    expectLoading(phone, askingForRoom() + Rows{"objc_autoreleasePoolPush",
                                                "NSLog 'Solvane stands aside: there is a protocol APLCalendarDelegate already'",
                                                "objc_autoreleasePoolPop"});
}

TEST(ReloadTranscript, ReadsTheFileAndNothingElse)
{
    const InjectedMorningPhone phone;
    Transcript transcript;
    phone.tree().writePreferencesXML("<dict><key>Name</key><string>Ana</string></dict>");
    transcript.expect([&] { phone.post("loadSolvaneS"); }, settings(true, true));
    phone.tree().writePreferencesXML("<dict/>");
    transcript.expect([&] { phone.post("loadSolvaneS"); }, settings(true, false));
    phone.tree().writePreferences("not a property list");
    transcript.expect([&] { phone.post("loadSolvaneS"); }, settings(false, false));
}

TEST(RelaunchTranscript, TellsTheApplication)
{
    const InjectedMorningPhone phone;
    simulator::replaceMethod<"_relaunchSpringBoardNow">(objc_getClass("UIApplication"), +[](UIApplication*, SEL) {});
    Transcript().expect([&] { phone.post("RespringSV"); },
                        {"UIApplication sharedApplication = application", "application _relaunchSpringBoardNow"});
}
