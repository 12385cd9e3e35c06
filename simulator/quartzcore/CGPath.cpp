#include <utility>

#include "simulator/quartzcore/paths.hpp"
#include "simulator/runtime/SimulatedClass.hpp"

namespace simulator {

Owned<CGPath> makePath(Outline outline)
{
    Owned<CGPath> path = adopt(send<"new", CGPathRef>(classNamed<"CGPath">()));
    ivarsOf<Outline>(path.get()) = std::move(outline);
    return path;
}

const Outline& outlineOf(CGPathRef path)
{
    static const Outline empty;
    return path == nullptr ? empty : ivarsOf<Outline>(path);
}

void registerCGPath()
{
    SimulatedClass<Outline>("CGPath", "NSObject").registerClass();
}

} // namespace simulator
