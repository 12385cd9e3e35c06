#include "tests/support/MorningPhone.hpp"

#include <cstdlib>

#include "simulator/foundation/surroundings.hpp"

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
    simulator::surroundings().weather = simulator::LocalWeather{"21", 26};
}
