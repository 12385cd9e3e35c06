#pragma once

#include "platform/Foundation/NSString.hpp"
#include "platform/UIKit/UIImage.hpp"

/// SpringBoard's private classes for what stands in the lock screen's list.

/// A notification as the bulletin board keeps it.
class BBBulletin : public NSObject {
public:
    /// The bundle identifier of the application that posted it.
    NSString* sectionID() { return send<"sectionID", NSString*>(this); }
    NSString* title() { return send<"title", NSString*>(this); }
    NSString* message() { return send<"message", NSString*>(this); }
};

class SBAwayListItem : public NSObject {};

/// A notification of an application.
class SBAwayBulletinListItem : public SBAwayListItem {
public:
    BBBulletin* activeBulletin() { return send<"activeBulletin", BBBulletin*>(this); }
    UIImage* iconImage() { return send<"iconImage", UIImage*>(this); }
};
