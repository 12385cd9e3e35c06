#include "simulator/console/arguments.hpp"

#include <cmath>

#include "platform/UIKit/UIWindow.hpp"
#include "simulator/files/numbers.hpp"
#include "simulator/foundation/clock.hpp"
#include "simulator/foundation/strings.hpp"
#include "simulator/springboard/SpringBoard.hpp"

namespace simulator {

double momentIn(const std::string& localTime)
{
    const auto moment = momentOfLocalTime(localTime);
    if (!moment)
        throw BadLine('"' + localTime + "\" is no time: write it like 2014-03-05T08:30:00");
    return *moment;
}

double secondsIn(const std::string& text, int longest)
{
    const auto seconds = parseNumber<double>(text);
    if (!seconds || !(*seconds >= 0 && *seconds <= longest))
        throw BadLine('"' + text + "\" is no number of seconds from 0 to " + std::to_string(longest));
    return *seconds;
}

NSString* optionalText(Words arguments, std::size_t index)
{
    return index < arguments.size() ? toNSString(arguments[index]) : nullptr;
}

std::optional<CGPoint> pointIn(const std::string& text)
{
    const auto numbers = parseNumbers<CGFloat, 2>(text);
    if (!numbers)
        return std::nullopt;
    const auto [x, y] = *numbers;
    if (!std::isfinite(x) || !std::isfinite(y))
        throw BadLine('"' + text + "\" is no point");
    return CGPoint{x, y};
}

UIView* viewIn(id object, const std::string& path)
{
    if (object == nullptr)
        throw BadLine('"' + path + "\" is nil");
    if (!object->isKindOfClass(classNamed<"UIView">()))
        throw BadLine('"' + path + "\" is not a view");
    return static_cast<UIView*>(object);
}

CGPoint placeIn(const Console& console, const std::string& text)
{
    if (const auto point = pointIn(text))
        return *point;
    UIView* const view = viewIn(objectAtPath(text, console.kept), text);
    if (view != springBoardWindow() && view->window() != springBoardWindow())
        throw BadLine('"' + text + "\" is not in the window");
    const CGRect bounds = view->bounds();
    const CGPoint centre{bounds.origin.x + bounds.size.width / 2, bounds.origin.y + bounds.size.height / 2};
    return view->convertPoint_toView(centre, springBoardWindow());
}

} // namespace simulator
