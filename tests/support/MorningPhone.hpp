#pragma once

#include "tests/support/Phone.hpp"

/// A phone on a spring morning: half past eight on 5 March 2014 in universal time, 21 degrees Celsius and cloudy. Nothing is
/// injected yet.
class MorningPhone : public Phone {
public:
    explicit MorningPhone(const simulator::ScreenSize& screen = {});
};

/// The same with the library in it, not locked yet.
class InjectedMorningPhone : public MorningPhone {
public:
    explicit InjectedMorningPhone(const simulator::ScreenSize& screen = {}) : MorningPhone(screen) { inject(); }
};

/// The same with its lock screen.
class LockedPhone : public InjectedMorningPhone {
public:
    explicit LockedPhone(const simulator::ScreenSize& screen = {}) : InjectedMorningPhone(screen) { simulator::lockScreen(); }
};

/// What the weather sentence reads on that morning.
inline constexpr const char* morningWeather = "It's 21° C and Cloudy.";
