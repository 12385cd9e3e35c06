#pragma once

#include <cstdint>
#include <functional>
#include <optional>

#include <libical/ical.h>

/// Recurrence rules of iCalendar (RFC 5545, 3.3.10).
namespace simulator {

/// A time as clocks show it: seconds since they showed 1970-01-01T00:00:00.
using WallTime = std::int64_t;

/// How much work a question may still cause. A calendar file may ask for any amount.
class Allowance {
public:
    explicit Allowance(std::int64_t steps) : steps_(steps) {}

    /// Whether there was so much left.
    bool take(std::int64_t steps = 1)
    {
        steps_ -= steps;
        return steps_ >= 0;
    }
    bool isSpent() const { return steps_ < 0; }

private:
    std::int64_t steps_;
};

/// When a rule is followed.
struct Span {
    WallTime from;
    /// Not in it.
    WallTime to;
};

/// Visits the instances of a rule that lie in the span, in their order, until `visit` says no or nothing of the allowance is
/// left. The start is the first instance whether the rule has it or not. The last one is at `until` or before; the rule's own
/// UNTIL is not asked. A rule without COUNT is followed from the span's beginning only.
void followRule(const icalrecurrencetype& rule, WallTime start, std::optional<WallTime> until, Span span, Allowance& allowance,
                const std::function<bool(WallTime)>& visit);

} // namespace simulator
