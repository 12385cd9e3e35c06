#include "simulator/quartzcore/damage.hpp"

#include <utility>

namespace simulator {

namespace {

bool damaged = true;

} // namespace

void damageScreen()
{
    damaged = true;
}

bool takeScreenDamage()
{
    return std::exchange(damaged, false);
}

} // namespace simulator
