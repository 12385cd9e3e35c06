#pragma once

#include "platform/Foundation/NSString.hpp"
#include "platform/UIKit/UIImage.hpp"

/// SpringBoard's private classes for the installed applications and their icons.

class SBApplication : public NSObject {
public:
    NSString* bundleIdentifier() const { return send<"bundleIdentifier", NSString*>(this); }
    NSString* displayName() const { return send<"displayName", NSString*>(this); }
};

class SBApplicationController : public NSObject {
public:
    static SBApplicationController* sharedInstance()
    {
        return send<"sharedInstance", SBApplicationController*>(classNamed<"SBApplicationController">());
    }
    /// Nil when no such application is installed.
    SBApplication* applicationWithBundleIdentifier(NSString* identifier) const
    {
        return send<"applicationWithBundleIdentifier:", SBApplication*>(this, identifier);
    }
    /// The name of that message on older systems.
    SBApplication* applicationWithDisplayIdentifier(NSString* identifier) const
    {
        return send<"applicationWithDisplayIdentifier:", SBApplication*>(this, identifier);
    }
};

class SBIcon : public NSObject {};

/// An icon that stands for one thing, as a folder's does not.
class SBLeafIcon : public SBIcon {};

class SBApplicationIcon : public SBLeafIcon {
public:
    static SBApplicationIcon* alloc() { return send<"alloc", SBApplicationIcon*>(classNamed<"SBApplicationIcon">()); }
    SBApplicationIcon* initWithApplication(SBApplication* application)
    {
        return send<"initWithApplication:", SBApplicationIcon*>(this, application);
    }
    /// In one of SpringBoard's own image formats; may be nil.
    UIImage* generateIconImage(int format) const { return send<"generateIconImage:", UIImage*>(this, format); }
};

/// SpringBoard's addition to UIImage.
namespace SBApplicationIconImage {

/// The icon of an application in one of SpringBoard's own formats; a nil identifier gives the generic icon.
inline UIImage* _applicationIconImageForBundleIdentifier_format_scale(NSString* identifier, int format, CGFloat scale)
{
    return send<"_applicationIconImageForBundleIdentifier:format:scale:", UIImage*>(classNamed<"UIImage">(), identifier, format,
                                                                                    scale);
}

} // namespace SBApplicationIconImage
