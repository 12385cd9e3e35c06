#include "simulator/springboard/applications.hpp"

#include <map>
#include <string>

#include "platform/Foundation/NSDictionary.hpp"
#include "platform/SpringBoard/SBApplication.hpp"
#include "platform/UIKit/UIScreen.hpp"
#include "simulator/foundation/phone_root.hpp"
#include "simulator/foundation/phone_system.hpp"
#include "simulator/foundation/property_lists.hpp"
#include "simulator/foundation/strings.hpp"
#include "simulator/graphics/pictures.hpp"
#include "simulator/runtime/SimulatedClass.hpp"
#include "simulator/springboard/springboard_classes.hpp"
#include "simulator/uikit/UIImage.hpp"

/// The applications in the phone's "/Applications", one bundle each, and their icons.

namespace simulator {

namespace {

struct ApplicationState {
    Owned<NSString> bundleIdentifier;
    Owned<NSString> displayName;
    std::filesystem::path iconFile;
};

struct ApplicationControllerState {
    std::map<std::string, Owned<SBApplication>> applications;
};

struct IconState {};
struct LeafIconState {};

struct ApplicationIconState {
    Owned<SBApplication> application;
};

/// Nil for a bundle without a readable Info.plist or without an identifier.
Owned<SBApplication> applicationInBundle(const std::filesystem::path& bundle)
{
    NSDictionary* const description = readPropertyList(bundle / "Info.plist");
    auto* const identifier = valueOfClass<NSString>(description, constantString<"CFBundleIdentifier">());
    if (identifier == nullptr)
        return nullptr;
    Owned<SBApplication> application = adopt(send<"new", SBApplication*>(classNamed<"SBApplication">()));
    ivarsOf<ApplicationState>(application.get()) = {
        identifier, valueOfClass<NSString>(description, constantString<"CFBundleDisplayName">()), bundle / "Icon.png"};
    return application;
}

void findApplications(SBApplicationController* controller)
{
    auto& applications = ivarsOf<ApplicationControllerState>(controller).applications;
    std::error_code missing;
    for (const auto& bundle : std::filesystem::directory_iterator(onThisMachine("/Applications"), missing)) {
        if (const Owned<SBApplication> application = applicationInBundle(bundle.path()))
            applications[toUTF8(application->bundleIdentifier())] = application;
    }
}

SBApplicationController* sharedInstance(Class cls, SEL)
{
    static auto* const controller = [cls] {
        auto* const made = send<"new", SBApplicationController*>(cls);
        findApplications(made);
        return made;
    }();
    return controller;
}

SBApplication* applicationWithIdentifier(SBApplicationController* self, SEL, NSString* identifier)
{
    const auto& applications = ivarsOf<ApplicationControllerState>(self).applications;
    const auto found = applications.find(toUTF8(identifier));
    return found == applications.end() ? nullptr : found->second.get();
}

SBApplicationIcon* initWithApplication(SBApplicationIcon* self, SEL, SBApplication* application)
{
    ivarsOf<ApplicationIconState>(self).application = application;
    return self;
}

CGFloat sideInFormat(int format)
{
    constexpr CGFloat small = 29;
    constexpr CGFloat home = 60;
    return format == 0 ? small : home;
}

UIImage* iconOf(SBApplication* application, int format, CGFloat scale)
{
    const auto generic = onThisMachine("/System/Library/CoreServices/SpringBoard.app/GenericIcon.png");
    Owned<UIImage> icon;
    if (application != nullptr)
        icon = imageInFile(ivarsOf<ApplicationState>(application).iconFile);
    if (icon == nullptr)
        icon = imageInFile(generic);
    if (icon == nullptr)
        return nullptr;
    const CGFloat side = sideInFormat(format);
    const CGSize size{side, side};
    const Fitting fitting{.size = size, .scale = scale, .rect = {{0, 0}, size}, .opaque = false};
    return imageWithBitmap(fitted(ivarsOf<ImageState>(icon.get()).bitmap, fitting)).autorelease();
}

/// Nil for an icon that stands for no application.
UIImage* generateIconImage(SBApplicationIcon* self, SEL, int format)
{
    SBApplication* const application = ivarsOf<ApplicationIconState>(self).application;
    return application == nullptr ? nullptr : iconOf(application, format, UIScreen::mainScreen()->scale());
}

UIImage* applicationIconImage(Class, SEL, NSString* bundleIdentifier, int format, CGFloat scale)
{
    return applicationIcon(bundleIdentifier, format, scale);
}

} // namespace

SBApplication* installedApplication(NSString* bundleIdentifier)
{
    return applicationWithIdentifier(SBApplicationController::sharedInstance(), nullptr, bundleIdentifier);
}

UIImage* applicationIcon(NSString* bundleIdentifier, int format, CGFloat scale)
{
    return iconOf(installedApplication(bundleIdentifier), format, scale);
}

void registerApplications()
{
    SimulatedClass<ApplicationState>("SBApplication", "NSObject")
        .readOnly<&ApplicationState::bundleIdentifier>("bundleIdentifier")
        .readOnly<&ApplicationState::displayName>("displayName")
        .registerClass();
    const Class controller = SimulatedClass<ApplicationControllerState>("SBApplicationController", "NSObject")
                                 .classMethod<"sharedInstance">(sharedInstance)
                                 .registerClass();
    if (phoneSystem() < System::v8_1)
        addMethod<"applicationWithDisplayIdentifier:">(controller, &applicationWithIdentifier);
    else
        addMethod<"applicationWithBundleIdentifier:">(controller, &applicationWithIdentifier);
    SimulatedClass<IconState>("SBIcon", "NSObject").registerClass();
    SimulatedClass<LeafIconState>("SBLeafIcon", "SBIcon").registerClass();
    SimulatedClass<ApplicationIconState>("SBApplicationIcon", "SBLeafIcon")
        .method<"initWithApplication:">(initWithApplication)
        .method<"generateIconImage:">(generateIconImage)
        .registerClass();
    addMethod<"_applicationIconImageForBundleIdentifier:format:scale:">(metaclassOf(classNamed<"UIImage">()),
                                                                        &applicationIconImage);
}

} // namespace simulator
