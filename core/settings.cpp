#include "core/settings.hpp"

#include "platform/UIKit/UIApplication.hpp"

constinit Strong<NSDictionary> settingsDictionary;
constinit Strong<NSObject> userName;
constinit Strong<NSString> palString;

void loadSettings(CFNotificationCenterRef, void*, NSString*, const void*, NSDictionary*)
{
    settingsDictionary =
        NSDictionary::dictionaryWithContentsOfFile(constantString<"/User/Library/Preferences/org.solvane.Solvane.plist">());

    if (settingsDictionary->objectForKeyedSubscript(constantString<"Name">()) == nullptr)
        userName = palString;
    else
        userName = settingsDictionary->objectForKeyedSubscript(constantString<"Name">());
}

void respring(CFNotificationCenterRef, void*, NSString*, const void*, NSDictionary*)
{
    UIApplication::sharedApplication()->_relaunchSpringBoardNow();
}
