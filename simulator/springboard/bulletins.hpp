#pragma once

#include "platform/SpringBoard/SBAwayListItem.hpp"
#include "platform/runtime/Owned.hpp"

namespace simulator {

/// What an application wants its user to know.
struct BulletinContents {
    Owned<NSString> sectionID;
    /// Nil for none, as with the following.
    Owned<NSString> title;
    Owned<NSString> message;
    /// From whom it is. Notifications of one application that are from the same person share an item of the list.
    Owned<NSString> person;
};

/// A new bulletin of its own.
Owned<BBBulletin> newBulletin(const BulletinContents& contents);
/// The same bulletin with other texts, as the bulletin board hands out when one is modified.
Owned<BBBulletin> modifiedBulletin(BBBulletin* bulletin, NSString* title, NSString* message);

/// Whether the two stand for the same bulletin.
bool areTheSame(BBBulletin* one, BBBulletin* other);
/// Nil for none.
NSString* personOf(BBBulletin* bulletin);

} // namespace simulator
