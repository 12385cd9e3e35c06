#include "simulator/quartzcore/quartzcore.hpp"

#include "simulator/quartzcore/CGColor.hpp"
#include "simulator/quartzcore/CGPath.hpp"

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
