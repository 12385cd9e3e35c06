#include "simulator/uikit/scroll_glide.hpp"

#include <cmath>
#include <optional>

namespace simulator {

namespace {

/// How hard the rubber band is to draw at its beginning.
constexpr double stretch = 0.55;
/// Of the spring, a second: as strong as 100 for a mass of 1, and damped so that it just does not swing.
constexpr double springRate = 10;
/// What is left of the way when it is called done.
constexpr double nearlyThere = 0.5;
constexpr double nearlyBack = 0.1;

/// What remains of a step that ends early.
using Rest = double;

/// How far beyond the range; negative below it.
double beyond(double offset, OffsetRange range)
{
    return offset - range.nearest(offset);
}

/// Where a spring draws the contents, when they are beyond their range or leave it.
std::optional<double> endFor(const ScrollGlide& glide, OffsetRange range)
{
    if (glide.offset < range.least || (glide.offset == range.least && glide.velocity < 0))
        return range.least;
    if (glide.offset > range.most || (glide.offset == range.most && glide.velocity > 0))
        return range.most;
    return std::nullopt;
}

void stopAt(ScrollGlide& glide, double offset)
{
    glide = {offset, 0};
}

/// The speed falls by the same share in each span of time, until the contents stand or come to an end of their range.
Rest slowDown(ScrollGlide& glide, double seconds, OffsetRange range, double decelerationRate)
{
    constexpr double millisecondsInASecond = 1000;
    const double fall = -millisecondsInASecond * std::log(decelerationRate);
    const double way = glide.velocity / fall;
    const double wayToEnd = (glide.velocity < 0 ? range.least : range.most) - glide.offset;
    if (std::abs(way) > std::abs(wayToEnd)) {
        const double timeToEnd = -std::log1p(-wayToEnd / way) / fall;
        if (timeToEnd <= seconds) {
            glide = {glide.offset + wayToEnd, glide.velocity - wayToEnd * fall};
            return seconds - timeToEnd;
        }
    }
    const double left = std::exp(-fall * seconds);
    glide = {glide.offset + way * (1 - left), glide.velocity * left};
    if (std::abs(way * left) < nearlyThere)
        stopAt(glide, range.nearest(glide.offset + way * left));
    return 0;
}

/// A critically damped spring. It lets go of contents that come back into their range faster than it would draw them.
Rest springBack(ScrollGlide& glide, double seconds, double end)
{
    const double distance = glide.offset - end;
    const double push = glide.velocity + springRate * distance;
    const double timeToEnd = -distance / push;
    if (timeToEnd > 0 && timeToEnd <= seconds) {
        glide = {end, push * std::exp(-springRate * timeToEnd)};
        return seconds - timeToEnd;
    }
    const double left = std::exp(-springRate * seconds);
    const double present = (distance + push * seconds) * left;
    glide = {end + present, push * left - springRate * present};
    if (std::abs(present) < nearlyBack && std::abs(glide.velocity) < springRate * nearlyBack)
        stopAt(glide, end);
    return 0;
}

} // namespace

double rubberBanded(double drawn, OffsetRange range, double length)
{
    const double distance = std::abs(beyond(drawn, range));
    const double shown = length * (1 - 1 / (distance * stretch / length + 1));
    return range.nearest(drawn) + std::copysign(distance == 0 ? 0 : shown, beyond(drawn, range));
}

double drawnTo(double offset, OffsetRange range, double length)
{
    const double shown = std::min(std::abs(beyond(offset, range)), length * 0.999);
    return range.nearest(offset) + std::copysign(shown == 0 ? 0 : shown / stretch / (1 - shown / length), beyond(offset, range));
}

double followingSpeed(double offset, OffsetRange range, double length)
{
    const double drawn = std::abs(beyond(drawnTo(offset, range, length), range));
    return drawn == 0 ? 1 : stretch / std::pow(drawn * stretch / length + 1, 2);
}

void ScrollGlide::advance(double seconds, OffsetRange range, Manner manner)
{
    while (seconds > 0 && !isAtRest(range)) {
        const auto end = endFor(*this, range);
        if (!end)
            seconds = slowDown(*this, seconds, range, manner.decelerationRate);
        else if (manner.bounces)
            seconds = springBack(*this, seconds, *end);
        else
            stopAt(*this, *end);
    }
}

/// What is no number is at rest, too.
bool ScrollGlide::isAtRest(OffsetRange range) const
{
    const bool moves = std::abs(velocity) > 0 || std::abs(beyond(offset, range)) > 0;
    return !moves;
}

} // namespace simulator
