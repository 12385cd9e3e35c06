#pragma once

#include "platform/Foundation/NSObject.hpp"

/// The sends that a month is drawn with, written out by hand: selectors registered and constants made beforehand, no C++
/// face, no arithmetic. It draws March 2014 as a user of German sees it on the 5th.

extern "C" {
/// Makes ready. The calendar's title is put where `titleSlot` says. To be called once.
[[gnu::visibility("default")]] void prepareReplay(id calendar, id* titleSlot);
/// Sends what drawHeader and drawDays send, in their order, to the same receivers. The calendar's own methods must do
/// nothing meanwhile: what they would send is sent from here.
[[gnu::visibility("default")]] void replayMonth();
}
