#pragma once

#include "appstrip/SVAppsView.hpp"

/// The application behind an item of the lock screen's list: methods of `SVAppsView`. Nothing is kept: each call asks anew.

NSString* identifierForListItem(SVAppsView* self, SEL, NSObject* item);
UIImage* iconForListItem(SVAppsView* self, SEL, NSObject* item);
