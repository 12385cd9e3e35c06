#include "lockscreen/lock_screen_view.hpp"

void (*previousAddLockContentUnderlayWithRequester)(SBLockScreenView*, SEL, id) = nullptr;

void addLockContentUnderlayWithRequester(SBLockScreenView*, SEL, id)
{
}
