#include "simulator/console/geometry_report.hpp"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cmath>
#include <stdexcept>
#include <system_error>

#include "simulator/console/report.hpp"
#include "simulator/files/whole_file.hpp"

namespace simulator {

namespace {

/// What a report tells, by the names of the views' variables. A frame is in the coordinates of the superview.
namespace places {
constexpr const char* screen = "/screen";
constexpr const char* dateView = "/frames/_dateView";
constexpr const char* slideToUnlockView = "/frames/_slideToUnlockView";
constexpr const char* notificationView = "/frames/_notificationView";
constexpr const char* container = "/frames/_containerView";
constexpr const char* table = "/frames/_tableView";
constexpr const char* rows = "/insets/_tableView";
} // namespace places

using Place = Json::json_pointer;

Json readJson(const std::string& file)
{
    constexpr std::size_t mostBytes = std::size_t{1} << 20;
    const auto text = readWholeFile(file, mostBytes);
    if (!text)
        throw std::invalid_argument(errno == EINVAL ? "it is no regular file" : std::generic_category().message(errno));
    Json report = Json::parse(*text, nullptr, false);
    if (report.is_discarded())
        throw std::invalid_argument("it is no JSON");
    return report;
}

bool isNull(const Json& report, const char* place)
{
    return report.contains(Place(place)) && report.at(Place(place)).is_null();
}

template <std::size_t Count>
std::array<CGFloat, Count> numbersAt(const Json& report, const char* place)
{
    constexpr double farthest = 10000;
    const std::string name(place + 1);
    if (!report.contains(Place(place)))
        throw std::invalid_argument("it lacks " + name);
    const Json& values = report.at(Place(place));
    const auto isNear = [](const Json& value) { return value.is_number() && std::abs(value.get<double>()) <= farthest; };
    if (!values.is_array() || values.size() != Count || !std::ranges::all_of(values, isNear))
        throw std::invalid_argument(name + " must be " + std::to_string(Count) + " numbers from -10000 to 10000");
    return values.get<std::array<CGFloat, Count>>();
}

CGRect frameAt(const Json& report, const char* place)
{
    const auto [x, y, width, height] = numbersAt<4>(report, place);
    if (width < 0 || height < 0)
        throw std::invalid_argument(std::string(place + 1) + " has a side below 0");
    return CGRect::make(x, y, width, height);
}

UIEdgeInsets insetsOf(CGRect frame, CGSize superview)
{
    return {frame.origin.y, frame.origin.x, superview.height - frame.origin.y - frame.size.height,
            superview.width - frame.origin.x - frame.size.width};
}

void requireScreen(const Json& report, const ScreenSize& screen)
{
    const auto [width, height] = numbersAt<2>(report, places::screen);
    if (width != screen.width || height != screen.height)
        throw std::invalid_argument("it is of a screen of " + oneLine(inspect(double{width})) + 'x' +
                                    oneLine(inspect(double{height})) + " points: choose that with --screen");
}

Geometry geometryIn(const Json& report)
{
    const CGRect notificationView = frameAt(report, places::notificationView);
    const CGRect container = frameAt(report, places::container);
    const auto [top, left, bottom, right] = numbersAt<4>(report, places::rows);
    Geometry geometry{
        .name = {},
        .dateView = frameAt(report, places::dateView),
        .slideToUnlockView = std::nullopt,
        .notificationView = notificationView,
        .container = insetsOf(container, notificationView.size),
        .table = insetsOf(frameAt(report, places::table), container.size),
        .rows = {top, left, bottom, right},
    };
    if (!isNull(report, places::slideToUnlockView))
        geometry.slideToUnlockView = frameAt(report, places::slideToUnlockView);
    return geometry;
}

struct Named {
    const char* name;
    Geometry (*geometry)(CGSize screen);
};

constexpr Named named[] = {{"desk", deskGeometry}, {"phone", phoneGeometry}};

} // namespace

Geometry geometryNamed(const std::string& nameOrFile, const ScreenSize& screen)
{
    for (const auto& [name, geometry] : named) {
        if (nameOrFile == name)
            return geometry({screen.width, screen.height});
    }
    try {
        const Json report = readJson(nameOrFile);
        requireScreen(report, screen);
        Geometry geometry = geometryIn(report);
        geometry.name = nameOrFile;
        return geometry;
    } catch (const std::invalid_argument& why) {
        throw std::invalid_argument("--geometry: " + nameOrFile + ": " + why.what());
    }
}

Json reportOf(const Geometry& geometry, CGSize screen)
{
    const CGRect container = frameWithin(geometry.notificationView.size, geometry.container);
    const auto& slider = geometry.slideToUnlockView;
    Json report{{"name", geometry.name}};
    report[Place(places::screen)] = inspect(screen);
    report[Place(places::dateView)] = inspect(geometry.dateView);
    report[Place(places::slideToUnlockView)] = slider ? inspect(*slider) : Json();
    report[Place(places::notificationView)] = inspect(geometry.notificationView);
    report[Place(places::container)] = inspect(container);
    report[Place(places::table)] = inspect(frameWithin(container.size, geometry.table));
    // Four numbers, as a rectangle's.
    report[Place(places::rows)] =
        inspect(CGRect::make(geometry.rows.top, geometry.rows.left, geometry.rows.bottom, geometry.rows.right));
    return report;
}

} // namespace simulator
