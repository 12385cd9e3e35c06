#include "simulator/services/calendar_times.hpp"

#include <algorithm>
#include <chrono>

#include <unicode/timezone.h>

#include "simulator/foundation/time_zones.hpp"

namespace simulator {

namespace {

constexpr std::int64_t secondsPerDay = 86400;

/// From a moment on, a zone's clocks have an offset.
struct Onset {
    std::int64_t moment;
    std::int64_t offset;
    std::int64_t offsetBefore;
};

/// When one of a zone's two kinds of time begins.
void addOnsets(icalcomponent* kindOfTime, std::int64_t end, Allowance& allowance, std::vector<Onset>& onsets)
{
    const auto secondsIn = [&](icalproperty_kind kind, int (*get)(const icalproperty*)) {
        icalproperty* const property = icalcomponent_get_first_property(kindOfTime, kind);
        return property == nullptr ? 0 : get(property);
    };
    const std::int64_t before = secondsIn(ICAL_TZOFFSETFROM_PROPERTY, &icalproperty_get_tzoffsetfrom);
    const std::int64_t offset = secondsIn(ICAL_TZOFFSETTO_PROPERTY, &icalproperty_get_tzoffsetto);
    icalproperty* const property = icalcomponent_get_first_property(kindOfTime, ICAL_DTSTART_PROPERTY);
    const auto start = property == nullptr ? std::nullopt : wallTime(icalproperty_get_dtstart(property));
    if (!start)
        return;

    // Clocks are changed twice a year.
    constexpr std::size_t mostOnsets = 4000;
    const std::size_t mostAtAll = onsets.size() + mostOnsets;
    const auto add = [&](WallTime shown) {
        onsets.push_back({shown - before, offset, before});
        return onsets.size() < mostAtAll;
    };
    add(*start);
    const OffsetAt offsetBefore = [before](std::int64_t) { return before; };
    for (icalproperty* rule : propertiesOf(kindOfTime, ICAL_RRULE_PROPERTY)) {
        const icalrecurrencetype recurrence = icalproperty_get_rrule(rule);
        followRule(recurrence, *start, untilIn(recurrence, offsetBefore), {*start + 1, end + secondsPerDay}, allowance, add);
    }
    for (icalproperty* extra : propertiesOf(kindOfTime, ICAL_RDATE_PROPERTY)) {
        if (const auto shown = wallTime(icalproperty_get_rdate(extra).time))
            add(*shown);
    }
}

OffsetAt zoneOf(std::vector<Onset> onsets)
{
    std::ranges::stable_sort(onsets, {}, &Onset::moment);
    return [onsets = std::move(onsets)](std::int64_t moment) {
        const auto next = std::ranges::upper_bound(onsets, moment, {}, &Onset::moment);
        return next == onsets.begin() ? next->offsetBefore : std::prev(next)->offset;
    };
}

/// By the name of a place or by that of another system's; none when there is no such zone.
std::optional<OffsetAt> knownZone(const std::string& name)
{
    const icu::UnicodeString text = icu::UnicodeString::fromUTF8(name);
    icu::UnicodeString place;
    UErrorCode failure = U_ZERO_ERROR;
    icu::TimeZone::getIDForWindowsID(text, nullptr, place, failure);
    const std::shared_ptr<const icu::TimeZone> zone(icu::TimeZone::createTimeZone(place.isEmpty() ? text : place));
    if (*zone == icu::TimeZone::getUnknown())
        return std::nullopt;
    return [zone](std::int64_t moment) { return offsetOf(*zone, moment); };
}

} // namespace

ComponentPointer parseComponent(const std::string& text, icalcomponent_kind kind)
{
    ComponentPointer component(icalparser_parse_string(text.c_str()));
    return component != nullptr && icalcomponent_isa(component.get()) == kind ? std::move(component) : nullptr;
}

std::vector<icalproperty*> propertiesOf(icalcomponent* component, icalproperty_kind kind)
{
    std::vector<icalproperty*> properties;
    for (icalproperty* property = icalcomponent_get_first_property(component, kind); property != nullptr;
         property = icalcomponent_get_next_property(component, kind))
        properties.push_back(property);
    return properties;
}

WallTime CalendarTime::wallIn(const OffsetAt& other) const
{
    if (&other == zone)
        return wall;
    const std::int64_t when = moment();
    return when + other(when);
}

const OffsetAt& universalZone()
{
    static const auto& zone = *new OffsetAt([](std::int64_t) { return 0; });
    return zone;
}

const OffsetAt& userZone()
{
    static const auto& zone = *new OffsetAt(userOffsetAt);
    return zone;
}

CalendarZones::CalendarZones(const std::vector<std::string>& components, std::int64_t end, Allowance& allowance)
{
    for (const std::string& text : components) {
        const ComponentPointer zone = parseComponent(text, ICAL_VTIMEZONE_COMPONENT);
        icalproperty* const name = zone == nullptr ? nullptr : icalcomponent_get_first_property(zone.get(), ICAL_TZID_PROPERTY);
        if (name == nullptr)
            continue;
        std::vector<icalcomponent*> kindsOfTime;
        for (icalcomponent* kind = icalcomponent_get_first_component(zone.get(), ICAL_ANY_COMPONENT); kind != nullptr;
             kind = icalcomponent_get_next_component(zone.get(), ICAL_ANY_COMPONENT))
            kindsOfTime.push_back(kind);
        std::vector<Onset> onsets;
        for (icalcomponent* kind : kindsOfTime)
            addOnsets(kind, end, allowance, onsets);
        if (!onsets.empty())
            zones_.emplace(icalproperty_get_tzid(name), zoneOf(std::move(onsets)));
    }
}

const OffsetAt& CalendarZones::named(const std::string& name)
{
    const auto own = zones_.find(name);
    if (own != zones_.end())
        return own->second;
    return zones_.emplace(name, knownZone(name).value_or(userZone())).first->second;
}

std::optional<WallTime> wallTime(const icaltimetype& time)
{
    const std::chrono::year_month_day date{std::chrono::year(time.year), std::chrono::month(static_cast<unsigned>(time.month)),
                                           std::chrono::day(static_cast<unsigned>(time.day))};
    if (!date.ok())
        return std::nullopt;
    const WallTime midnight = std::chrono::sys_days(date).time_since_epoch().count() * secondsPerDay;
    if (time.is_date != 0)
        return midnight;
    if (time.hour < 0 || time.hour > 23 || time.minute < 0 || time.minute > 59 || time.second < 0 || time.second > 60)
        return std::nullopt;
    // A leap second is the one before it.
    return midnight + (WallTime{time.hour} * 60 + time.minute) * 60 + std::min(time.second, 59);
}

std::optional<CalendarTime> calendarTime(icalproperty* property, const icaltimetype& time, CalendarZones& zones)
{
    const auto wall = wallTime(time);
    if (!wall)
        return std::nullopt;
    if (time.is_date != 0)
        return CalendarTime{*wall, true, &userZone()};
    if (icaltime_is_utc(time) != 0)
        return CalendarTime{*wall, false, &universalZone()};
    icalparameter* const zone = icalproperty_get_first_parameter(property, ICAL_TZID_PARAMETER);
    return CalendarTime{*wall, false, zone == nullptr ? &userZone() : &zones.named(icalparameter_get_tzid(zone))};
}

std::optional<WallTime> untilIn(const icalrecurrencetype& rule, const OffsetAt& zone)
{
    if (icaltime_is_null_time(rule.until) != 0)
        return std::nullopt;
    const auto wall = wallTime(rule.until);
    if (!wall)
        return std::nullopt;
    if (rule.until.is_date != 0)
        return *wall + secondsPerDay - 1;
    return icaltime_is_utc(rule.until) != 0 ? *wall + zone(*wall) : *wall;
}

} // namespace simulator
