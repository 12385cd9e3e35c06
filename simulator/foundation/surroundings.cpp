#include "simulator/foundation/surroundings.hpp"

#include <cstdlib>

namespace simulator {

namespace {

Surroundings initialSurroundings()
{
    Surroundings initial;
    if (const char* const zone = std::getenv("TZ"))
        initial.timeZone = zone;
    return initial;
}

} // namespace

Surroundings& surroundings()
{
    static auto& present = *new Surroundings(initialSurroundings());
    return present;
}

} // namespace simulator
