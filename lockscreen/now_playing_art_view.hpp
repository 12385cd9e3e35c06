#pragma once

#include "platform/SpringBoard/SBLockScreen.hpp"

/// What replaces the initialiser of `_NowPlayingArtView`, and the replaced implementation. Every such view starts hidden; the
/// newest is remembered.
extern _NowPlayingArtView* (*previousInitNowPlayingArtViewWithFrame)(_NowPlayingArtView*, SEL, CGRect);
_NowPlayingArtView* initNowPlayingArtViewWithFrame(_NowPlayingArtView* self, SEL selector, CGRect frame);
