#pragma once

#include "platform/Foundation/NSString.hpp"
#include "platform/UIKit/UIImage.hpp"

/// SpringBoard's private classes for what stands in the lock screen's list.

/// A notification as the bulletin board keeps it.
class BBBulletin : public NSObject {
public:
    /// The bundle identifier of the application that posted it.
    NSString* sectionID() const { return send<"sectionID", NSString*>(this); }
    NSString* title() const { return send<"title", NSString*>(this); }
    NSString* message() const { return send<"message", NSString*>(this); }
};

class SBAwayListItem : public NSObject {};

/// A notification of an application.
class SBAwayBulletinListItem : public SBAwayListItem {
public:
    BBBulletin* activeBulletin() const { return send<"activeBulletin", BBBulletin*>(this); }
    UIImage* iconImage() const { return send<"iconImage", UIImage*>(this); }
};

/// A card, such as a boarding pass.
class SBSCardItem : public NSObject {
public:
    NSString* identifier() const { return send<"identifier", NSString*>(this); }
};

class SBAwayCardListItem : public SBAwayListItem {
public:
    SBSCardItem* cardItem() const { return send<"cardItem", SBSCardItem*>(this); }
    UIImage* cardThumbnail() const { return send<"cardThumbnail", UIImage*>(this); }
};

/// An alert of the system itself.
class SBAwaySystemAlertItem : public SBAwayListItem {
public:
    NSString* title() const { return send<"title", NSString*>(this); }
    UIImage* iconImage() const { return send<"iconImage", UIImage*>(this); }
};
