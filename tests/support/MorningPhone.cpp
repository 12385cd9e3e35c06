#include "tests/support/MorningPhone.hpp"

#include <cstdlib>

#include "simulator/services/weather.hpp"

namespace {

simulator::ScreenSize inUniversalTime(const simulator::ScreenSize& screen)
{
    ::setenv("TZ", "UTC", 1);
    return screen;
}

} // namespace

MorningPhone::MorningPhone(const simulator::ScreenSize& screen) : Phone(inUniversalTime(screen))
{
    freezeClockAtUniversalTime("2014-03-05T08:30:00");
    simulator::setLocalWeather(simulator::LocalWeather{"21", 26});
}
