#pragma once

#include <optional>
#include <set>
#include <string>
#include <vector>

#include "simulator/services/calendar_times.hpp"

namespace simulator {

/// How long an event lasts: days of the calendar, then seconds, whatever the clocks do in between.
struct EventLength {
    std::int64_t days = 0;
    std::int64_t seconds = 0;

    /// The moment at which an event of that length ends.
    std::int64_t endFrom(const CalendarTime& start) const;
};

/// A VEVENT: an event, or what becomes of one instance of a recurring event, or of it and all later ones.
struct EventDefinition {
    struct Extra {
        CalendarTime start;
        EventLength length;
    };

    /// Empty for an event without one.
    std::string identity;
    std::optional<std::string> title;
    CalendarTime start;
    EventLength length;
    std::vector<icalrecurrencetype> rules;
    std::vector<Extra> extras;
    std::set<std::int64_t> exceptions;
    /// Which instance it takes the place of.
    std::optional<CalendarTime> replaced;
    bool replacesLater = false;
};

/// None for a text that makes no sense: without a beginning, or with one or an end that there is not.
std::optional<EventDefinition> readEvent(const std::string& text, CalendarZones& zones);

} // namespace simulator
