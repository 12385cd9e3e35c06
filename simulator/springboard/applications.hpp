#pragma once

#include "platform/Foundation/NSString.hpp"
#include "platform/UIKit/UIImage.hpp"

class SBApplication;

namespace simulator {

/// The application with that bundle identifier; nil when none is installed. Systems differ in how it is asked for.
SBApplication* installedApplication(NSString* bundleIdentifier);

/// The icon of the application with that bundle identifier, or the generic one when there is no such application, in one
/// of SpringBoard's formats: 0 is 29 points, 2 is 60 points; any other is 60 points too. Autoreleased.
UIImage* applicationIcon(NSString* bundleIdentifier, int format, CGFloat scale);

} // namespace simulator
