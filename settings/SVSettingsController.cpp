#include "settings/SVSettingsController.hpp"

#include "platform/Foundation/CFNotificationCenter.hpp"
#include "platform/Preferences/PSListController.hpp"
#include "platform/UIKit/UIAlertView.hpp"
#include "platform/runtime/ClassBuilder.hpp"
#include "platform/runtime/instance_variable.hpp"
#include "settings/greeting_name.hpp"

/// The page: what its cells show, and what happens when they are used. Which cells there are stands in the bundle's
/// Solvane.plist.

namespace {

struct SVSettingsControllerIvars {
    /// Whether there was something to tell about the name that was edited last.
    BOOL toldOfName = NO;
};

/// The bundle of a class that is made at run time would be the application's.
NSBundle* bundle(PSListController*, SEL)
{
    return NSBundle::bundleWithPath(constantString<"/Library/PreferenceBundles/Solvane.bundle">());
}

NSArray* specifiers(PSListController* self, SEL)
{
    auto& kept = instanceVariable<NSArray>(self, "_specifiers");
    if (kept == nullptr)
        kept = Owned<NSArray>(self->loadSpecifiersFromPlistName_target(constantString<"Solvane">(), self)).leak();
    return kept;
}

NSObject* name(PSListController*)
{
    return greetingName();
}

NSObject* greeting(PSListController*)
{
    NSString* const name = greetingName();
    return NSString::stringWithFormat(constantString<"Good morning, %@.">(), name == nullptr ? constantString<"Pal">() : name);
}

NSObject* version(PSListController* self)
{
    return self->bundle()->objectForInfoDictionaryKey(constantString<"CFBundleShortVersionString">());
}

/// What a cell shows, by its key.
struct Value {
    const char* key;
    NSObject* (*read)(PSListController* self);
};

constexpr Value values[] = {{"Name", name}, {"Greeting", greeting}, {"Version", version}};

NSObject* readPreferenceValue(PSListController* self, SEL, PSSpecifier* specifier)
{
    NSObject* const key = specifier->propertyForKey(constantString<"key">());
    for (const Value& value : values) {
        if (key->isEqual(NSString::stringWithUTF8String(value.key)))
            return value.read(self);
    }
    return nullptr;
}

void tell(PSListController* self, NSString* title, NSString* message)
{
    ivarsOf<SVSettingsControllerIvars>(self).toldOfName = YES;
    const auto alert = adopt(UIAlertView::alloc()->init());
    alert->setTitle(title);
    alert->setMessage(message);
    alert->addButtonWithTitle(constantString<"OK">());
    alert->show();
}

void post(NSString* name)
{
    CFNotificationCenterPostNotification(CFNotificationCenterGetDarwinNotifyCenter(), name, nullptr, nullptr, 1);
}

/// The name alone can be changed. It is in the file before anybody is told: what the Settings write themselves may come later.
void setPreferenceValue_specifier(PSListController* self, SEL, NSString* value, PSSpecifier*)
{
    ivarsOf<SVSettingsControllerIvars>(self).toldOfName = NO;
    const NameWriting writing = writeGreetingName(value);
    if (writing.failure != nullptr)
        tell(self, constantString<"The name was not saved">(), writing.failure);
    else
        post(constantString<"loadSolvaneS">());
    if (writing.keptDamagedFile != nullptr)
        tell(self, constantString<"The settings were damaged">(),
             NSString::stringWithFormat(constantString<"What was there is kept in %@.">(), writing.keptDamagedFile));
    self->reloadSpecifierID(constantString<"Greeting">());
}

/// A name that is still being edited is saved first. What is to be told about it would be lost with this process, which ends with
/// SpringBoard.
void relaunch(PSListController* self, SEL, PSSpecifier*)
{
    ivarsOf<SVSettingsControllerIvars>(self).toldOfName = NO;
    self->view()->endEditing(true);
    if (ivarsOf<SVSettingsControllerIvars>(self).toldOfName == NO)
        post(constantString<"RespringSV">());
}

} // namespace

void registerSVSettingsController()
{
    ClassBuilder<SVSettingsControllerIvars>("SVSettingsController", "PSListController")
        .ivar<&SVSettingsControllerIvars::toldOfName>("toldOfName")
        .method<"bundle">(bundle)
        .method<"specifiers">(specifiers)
        .method<"readPreferenceValue:">(readPreferenceValue)
        .method<"setPreferenceValue:specifier:">(setPreferenceValue_specifier)
        .method<"relaunch:">(relaunch)
        .registerClass();
}
