#include "simulator/quartzcore/quartzcore.hpp"

#include "simulator/quartzcore/colours.hpp"
#include "simulator/quartzcore/paths.hpp"

namespace simulator {

void registerQuartzCore()
{
    registerCGColor();
    registerCGPath();
    registerCALayer();
    registerCAGradientLayer();
    registerCAShapeLayer();
}

} // namespace simulator
