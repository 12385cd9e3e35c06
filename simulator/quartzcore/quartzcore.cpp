#include "simulator/quartzcore/quartzcore.hpp"

#include "simulator/quartzcore/colours.hpp"

namespace simulator {

void registerQuartzCore()
{
    registerCGColor();
    registerCALayer();
    registerCAGradientLayer();
}

} // namespace simulator
