#include "simulator/quartzcore/CGPath.hpp"

#include <utility>

#include "simulator/runtime/SimulatedClass.hpp"

/// A path of Core Graphics, which is an object here.

namespace simulator {

Owned<CGPath> makePath(Outline outline)
{
    Owned<CGPath> path = adopt(send<"new", CGPathRef>(classNamed<"CGPath">()));
    ivarsOf<Outline>(path.get()) = std::move(outline);
    return path;
}

const Outline& outlineOf(CGPathRef path)
{
    static const auto& empty = *new Outline;
    return path == nullptr ? empty : ivarsOf<Outline>(path);
}

void registerCGPath()
{
    SimulatedClass<Outline>("CGPath", "NSObject").registerClass();
}

} // namespace simulator
