#include "lockscreen/hooks.hpp"

constinit hooks::Replacement<void(SBLockScreenView*, id)> hooks::addLockContentUnderlayWithRequester{
    [](SBLockScreenView*, SEL, id) {}};
