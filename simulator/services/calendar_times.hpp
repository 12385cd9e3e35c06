#pragma once

#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include <libical/ical.h>

#include "simulator/foundation/wall_clock.hpp"
#include "simulator/services/recurrence.hpp"

/// Times and time zones of iCalendar, read by libical.
namespace simulator {

struct ComponentCloser {
    void operator()(icalcomponent* component) const { icalcomponent_free(component); }
};
using ComponentPointer = std::unique_ptr<icalcomponent, ComponentCloser>;

/// The component that a text holds; null when there is none of that kind.
ComponentPointer parseComponent(const std::string& text, icalcomponent_kind kind);

/// A component has one cursor for all who walk its properties, so a walk must be over before anything is done with them.
std::vector<icalproperty*> propertiesOf(icalcomponent* component, icalproperty_kind kind);

/// A time, or a day, in a time zone.
struct CalendarTime {
    /// The day's midnight.
    WallTime wall = 0;
    bool isDate = false;
    const OffsetAt* zone = nullptr;

    /// Seconds since 1970-01-01T00:00:00Z. A time that is skipped is read by the offset before; of two it is the first.
    std::int64_t moment() const { return momentsOfWallClock(wall, *zone).first(); }
    /// What clocks in another zone show then.
    WallTime wallIn(const OffsetAt& other) const;
};

/// Universal time, and that of the phone's user, who has every time and day to which no zone is written.
const OffsetAt& universalZone();
const OffsetAt& userZone();

/// The time zones of one calendar.
class CalendarZones {
public:
    /// Rules are followed until the moment `end`.
    CalendarZones(const std::vector<std::string>& components, std::int64_t end, Allowance& allowance);

    /// One of the calendar's own or else one that ICU knows; the user's for any other name.
    const OffsetAt& named(const std::string& name);

private:
    /// Their addresses last.
    std::unordered_map<std::string, OffsetAt> zones_;
};

/// None for a time that there is not, such as 31 February.
std::optional<WallTime> wallTime(const icaltimetype& time);

/// The time of a property, whose own TZID says in which zone; none as above.
std::optional<CalendarTime> calendarTime(icalproperty* property, const icaltimetype& time, CalendarZones& zones);

/// Until when a rule goes, as clocks in a zone show it; none without an end. A day is meant whole.
std::optional<WallTime> untilIn(const icalrecurrencetype& rule, const OffsetAt& zone);

} // namespace simulator
