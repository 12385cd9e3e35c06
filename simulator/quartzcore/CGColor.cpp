#include "simulator/quartzcore/CGColor.hpp"

#include "simulator/runtime/SimulatedClass.hpp"

/// A colour of Core Graphics, which is an object here.

namespace simulator {

Owned<CGColor> makeColor(const Colour& colour)
{
    Owned<CGColor> color = adopt(send<"new", CGColorRef>(classNamed<"CGColor">()));
    ivarsOf<Colour>(color.get()) = colour;
    return color;
}

Colour colourOf(CGColorRef color)
{
    return color == nullptr ? Colour{} : ivarsOf<Colour>(color);
}

void registerCGColor()
{
    SimulatedClass<Colour>("CGColor", "NSObject").registerClass();
}

} // namespace simulator
