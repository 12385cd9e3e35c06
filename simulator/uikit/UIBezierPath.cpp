#include "platform/UIKit/UIBezierPath.hpp"

#include <algorithm>

#include "simulator/quartzcore/CGPath.hpp"
#include "simulator/runtime/SimulatedClass.hpp"
#include "simulator/uikit/uikit.hpp"

/// An outline: a rectangle of which some corners are rounded.

namespace simulator {

namespace {

struct BezierPathState {
    Owned<CGPath> path;
};

/// One corner of a rectangle: where it is, and the ways along the edges that meet there, clockwise.
struct Corner {
    UIRectCorner name;
    CGPoint place;
    CGPoint comingFrom;
    CGPoint goingTo;
};

/// How far along its control points lie for a curve to be close to a quarter of an ellipse.
constexpr CGFloat quarterEllipse = 0.5523;

CGPoint along(CGPoint place, CGPoint way, CGSize radii, CGFloat share)
{
    return {place.x + way.x * radii.width * share, place.y + way.y * radii.height * share};
}

Outline roundedRectangle(CGRect rect, NSUInteger rounded, CGSize radii)
{
    radii = {std::min(radii.width, rect.size.width / 2), std::min(radii.height, rect.size.height / 2)};
    const CGFloat left = rect.origin.x;
    const CGFloat top = rect.origin.y;
    const CGFloat right = left + rect.size.width;
    const CGFloat bottom = top + rect.size.height;
    const Corner corners[] = {
        {UIRectCornerTopLeft, {left, top}, {0, 1}, {1, 0}},
        {UIRectCornerTopRight, {right, top}, {-1, 0}, {0, 1}},
        {UIRectCornerBottomRight, {right, bottom}, {0, -1}, {-1, 0}},
        {UIRectCornerBottomLeft, {left, bottom}, {1, 0}, {0, -1}},
    };
    Outline outline;
    bool isFirst = true;
    for (const Corner& corner : corners) {
        const CGSize reach = (rounded & corner.name) != 0 ? radii : CGSize{};
        const CGPoint start = along(corner.place, corner.comingFrom, reach, 1);
        if (isFirst)
            outline.moveTo(start);
        else
            outline.lineTo(start);
        isFirst = false;
        outline.curveTo(along(corner.place, corner.comingFrom, reach, 1 - quarterEllipse),
                        along(corner.place, corner.goingTo, reach, 1 - quarterEllipse),
                        along(corner.place, corner.goingTo, reach, 1));
    }
    outline.close();
    return outline;
}

UIBezierPath* bezierPathWithRoundedRect_byRoundingCorners_cornerRadii(Class cls, SEL, CGRect rect, NSUInteger corners,
                                                                      CGSize radii)
{
    Owned<UIBezierPath> path = adopt(send<"new", UIBezierPath*>(cls));
    ivarsOf<BezierPathState>(path.get()).path = makePath(roundedRectangle(rect, corners, radii));
    return path.autorelease();
}

} // namespace

void registerUIBezierPath()
{
    SimulatedClass<BezierPathState>("UIBezierPath", "NSObject")
        .classMethod<"bezierPathWithRoundedRect:byRoundingCorners:cornerRadii:">(
            bezierPathWithRoundedRect_byRoundingCorners_cornerRadii)
        .readOnly<&BezierPathState::path>("CGPath")
        .registerClass();
}

} // namespace simulator
