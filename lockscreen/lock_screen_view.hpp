#pragma once

#include "platform/SpringBoard/SBLockScreen.hpp"

/// The replaced implementation. It is kept like every other, and never called.
extern void (*previousAddLockContentUnderlayWithRequester)(SBLockScreenView*, SEL, id);

/// Replaces the method of `SBLockScreenView` that dims what lies behind the lock screen's contents: with the panel there
/// it does nothing.
void addLockContentUnderlayWithRequester(SBLockScreenView* self, SEL selector, id requester);
