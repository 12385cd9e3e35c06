#include "simulator/services/calendar_events.hpp"

#include <algorithm>
#include <cstring>

namespace simulator {

namespace {

constexpr std::int64_t secondsPerDay = 86400;

EventLength lengthOf(const icaldurationtype& duration)
{
    if (duration.is_neg != 0)
        return {};
    return {std::int64_t{duration.weeks} * 7 + duration.days,
            (std::int64_t{duration.hours} * 60 + duration.minutes) * 60 + duration.seconds};
}

EventLength lengthBetween(const CalendarTime& start, const CalendarTime& end)
{
    if (start.isDate)
        return {std::max<std::int64_t>(1, (end.wall - start.wall) / secondsPerDay), 0};
    return {0, std::max<std::int64_t>(0, end.moment() - start.moment())};
}

/// None for an end that there is not. An event that says nothing of its end lasts for its day, or is a moment.
std::optional<EventLength> lengthOf(icalcomponent* event, const CalendarTime& start, CalendarZones& zones)
{
    if (icalproperty* const end = icalcomponent_get_first_property(event, ICAL_DTEND_PROPERTY)) {
        const auto time = calendarTime(end, icalproperty_get_dtend(end), zones);
        return time ? std::optional(lengthBetween(start, *time)) : std::nullopt;
    }
    EventLength length;
    if (icalproperty* const duration = icalcomponent_get_first_property(event, ICAL_DURATION_PROPERTY))
        length = lengthOf(icalproperty_get_duration(duration));
    if (start.isDate)
        length = {std::max<std::int64_t>(1, length.days), 0};
    return length;
}

EventDefinition::Extra extraOf(const CalendarTime& start, icalproperty* property, const EventLength& usual, CalendarZones& zones)
{
    const icalperiodtype period = icalproperty_get_rdate(property).period;
    if (icalperiodtype_is_null_period(period) != 0)
        return {start, usual};
    if (const auto end = calendarTime(property, period.end, zones))
        return {start, lengthBetween(start, *end)};
    return {start, lengthOf(period.duration)};
}

/// libical takes a property that it cannot read for an error, which names it.
bool cannotBeRead(icalcomponent* event, std::string_view name)
{
    return std::ranges::any_of(propertiesOf(event, ICAL_XLICERROR_PROPERTY), [&](icalproperty* error) {
        const char* const text = icalproperty_get_xlicerror(error);
        return text != nullptr && std::string_view(text).find(name) != std::string_view::npos;
    });
}

} // namespace

std::int64_t EventLength::endFrom(const CalendarTime& start) const
{
    return CalendarTime{start.wall + days * secondsPerDay, start.isDate, start.zone}.moment() + seconds;
}

std::optional<EventDefinition> readEvent(const std::string& text, CalendarZones& zones)
{
    const ComponentPointer event = parseComponent(text, ICAL_VEVENT_COMPONENT);
    icalproperty* const property =
        event == nullptr ? nullptr : icalcomponent_get_first_property(event.get(), ICAL_DTSTART_PROPERTY);
    const auto start = property == nullptr ? std::nullopt : calendarTime(property, icalproperty_get_dtstart(property), zones);
    const auto length = start && !cannotBeRead(event.get(), "DTEND") ? lengthOf(event.get(), *start, zones) : std::nullopt;
    if (!length)
        return std::nullopt;

    EventDefinition read;
    read.start = *start;
    read.length = *length;
    if (const char* const identity = icalcomponent_get_uid(event.get()))
        read.identity = identity;
    const char* const title = icalcomponent_get_summary(event.get());
    if (title != nullptr && *title != '\0')
        read.title = title;
    for (icalproperty* rule : propertiesOf(event.get(), ICAL_RRULE_PROPERTY))
        read.rules.push_back(icalproperty_get_rrule(rule));
    for (icalproperty* extra : propertiesOf(event.get(), ICAL_RDATE_PROPERTY)) {
        const icaldatetimeperiodtype date = icalproperty_get_rdate(extra);
        const bool isPeriod = icalperiodtype_is_null_period(date.period) == 0;
        if (const auto time = calendarTime(extra, isPeriod ? date.period.start : date.time, zones))
            read.extras.push_back(extraOf(*time, extra, *length, zones));
    }
    for (icalproperty* exception : propertiesOf(event.get(), ICAL_EXDATE_PROPERTY)) {
        if (const auto time = calendarTime(exception, icalproperty_get_exdate(exception), zones))
            read.exceptions.insert(time->moment());
    }
    if (icalproperty* const replaced = icalcomponent_get_first_property(event.get(), ICAL_RECURRENCEID_PROPERTY)) {
        read.replaced = calendarTime(replaced, icalproperty_get_recurrenceid(replaced), zones);
        if (!read.replaced)
            return std::nullopt;
        icalparameter* const range = icalproperty_get_first_parameter(replaced, ICAL_RANGE_PARAMETER);
        read.replacesLater = range != nullptr && icalparameter_get_range(range) == ICAL_RANGE_THISANDFUTURE;
    }
    return read;
}

} // namespace simulator
