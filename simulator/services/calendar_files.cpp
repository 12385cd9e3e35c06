#include "simulator/services/calendar_files.hpp"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <memory>
#include <set>

#include <libical/ical.h>

#include "simulator/foundation/whole_file.hpp"

namespace simulator {

namespace {

struct ComponentCloser {
    void operator()(icalcomponent* component) const { icalcomponent_free(component); }
};
using ComponentPointer = std::unique_ptr<icalcomponent, ComponentCloser>;

struct RecurrenceCloser {
    void operator()(icalrecur_iterator* iterator) const { icalrecur_iterator_free(iterator); }
};

/// The calendar in a file; null when there is none.
ComponentPointer readCalendar(const std::filesystem::path& file)
{
    std::ifstream stream(file, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(stream), {}};
    ComponentPointer calendar(icalparser_parse_string(bytes.c_str()));
    if (calendar == nullptr || icalcomponent_isa(calendar.get()) != ICAL_VCALENDAR_COMPONENT)
        return nullptr;
    return calendar;
}

/// A time with neither zone nor "Z" is a time of the process's zone, whose rules the C library knows.
std::time_t moment(const icaltimetype& time)
{
    if (time.zone != nullptr && !icaltime_is_date(time))
        return icaltime_as_timet_with_zone(time, time.zone);
    std::tm local{};
    local.tm_year = time.year - 1900;
    local.tm_mon = time.month - 1;
    local.tm_mday = time.day;
    local.tm_hour = time.hour;
    local.tm_min = time.minute;
    local.tm_sec = time.second;
    local.tm_isdst = -1;
    return std::mktime(&local);
}

std::string identity(icalcomponent* event)
{
    const char* const identifier = icalcomponent_get_uid(event);
    return identifier == nullptr ? std::string() : identifier;
}

/// The occurrences that have an event of their own, by identity and moment.
using Replaced = std::set<std::pair<std::string, std::time_t>>;

bool isReplacement(icalcomponent* event)
{
    return icalcomponent_get_first_property(event, ICAL_RECURRENCEID_PROPERTY) != nullptr;
}

/// The moment of the occurrence that an event stands for.
std::time_t replacedMoment(icalcomponent* event)
{
    icalproperty* const property = icalcomponent_get_first_property(event, ICAL_RECURRENCEID_PROPERTY);
    return moment(icalproperty_get_datetime_with_component(property, event));
}

/// A component has one cursor for all who walk its properties, so a walk must be over before anything is done with them.
std::vector<icalproperty*> propertiesOf(icalcomponent* event, icalproperty_kind kind)
{
    std::vector<icalproperty*> properties;
    for (icalproperty* property = icalcomponent_get_first_property(event, kind); property != nullptr;
         property = icalcomponent_get_next_property(event, kind))
        properties.push_back(property);
    return properties;
}

/// The same goes for the components within one.
std::vector<icalcomponent*> eventsOf(icalcomponent* calendar)
{
    std::vector<icalcomponent*> events;
    for (icalcomponent* event = icalcomponent_get_first_component(calendar, ICAL_VEVENT_COMPONENT); event != nullptr;
         event = icalcomponent_get_next_component(calendar, ICAL_VEVENT_COMPONENT))
        events.push_back(event);
    return events;
}

/// The period searched, and what was found in it.
class Search {
public:
    Search(std::time_t start, std::time_t end) : start_(start), end_(end) {}

    std::vector<CalendarEvent> inCalendar(icalcomponent* calendar)
    {
        const std::vector<icalcomponent*> events = eventsOf(calendar);
        for (icalcomponent* event : events) {
            if (isReplacement(event))
                replaced_.emplace(identity(event), replacedMoment(event));
        }
        for (icalcomponent* event : events)
            visit(event);
        std::ranges::stable_sort(found_, {}, &CalendarEvent::start);
        return std::move(found_);
    }

private:
    void visit(icalcomponent* event)
    {
        const icaltimetype start = icalcomponent_get_dtstart(event);
        if (icaltime_is_null_time(start) || icaltime_is_valid_time(start) == 0)
            return;
        const icaltimetype end = endOf(event, start);
        excluded_ = excludedMoments(event);
        const std::vector<icalproperty*> rules = propertiesOf(event, ICAL_RRULE_PROPERTY);
        for (icalproperty* rule : rules)
            follow(event, icalproperty_get_rrule(rule), start, end);
        if (rules.empty())
            add(event, start, start, end);
        for (icalproperty* extra : propertiesOf(event, ICAL_RDATE_PROPERTY))
            add(event, withZoneOf(icalproperty_get_rdate(extra).time, start), start, end);
    }

    static icaltimetype endOf(icalcomponent* event, const icaltimetype& start)
    {
        icaltimetype end = icalcomponent_get_dtend(event);
        if (!icaltime_is_null_time(end))
            return end;
        end = start;
        if (icaltime_is_date(start))
            icaltime_adjust(&end, 1, 0, 0, 0);
        return end;
    }

    static icaltimetype withZoneOf(icaltimetype time, const icaltimetype& start)
    {
        if (time.zone == nullptr)
            time.zone = start.zone;
        return time;
    }

    static std::set<std::time_t> excludedMoments(icalcomponent* event)
    {
        std::set<std::time_t> moments;
        for (icalproperty* property : propertiesOf(event, ICAL_EXDATE_PROPERTY))
            moments.insert(moment(icalproperty_get_datetime_with_component(property, event)));
        return moments;
    }

    /// The rule's own times stay those of the clock on the wall, whatever that does in between.
    void follow(icalcomponent* event, const icalrecurrencetype& rule, const icaltimetype& start, const icaltimetype& end)
    {
        const std::unique_ptr<icalrecur_iterator, RecurrenceCloser> iterator(icalrecur_iterator_new(rule, start));
        if (iterator == nullptr)
            return;
        for (icaltimetype time = icalrecur_iterator_next(iterator.get()); !icaltime_is_null_time(time);
             time = icalrecur_iterator_next(iterator.get())) {
            const icaltimetype occurrence = withZoneOf(time, start);
            if (moment(occurrence) >= end_)
                return;
            add(event, occurrence, start, end);
        }
    }

    /// The occurrence of an event at a time, if it lies in the period and stands. The first one gives the duration.
    void add(icalcomponent* event, const icaltimetype& occurrence, const icaltimetype& first, const icaltimetype& firstEnd)
    {
        const bool isAllDay = icaltime_is_date(first) != 0;
        const std::time_t from = moment(occurrence);
        if (excluded_.contains(from) || (!isReplacement(event) && replaced_.contains({identity(event), from})))
            return;
        // A day's length is the calendar's business: whole days are added as days, hours as hours.
        icaltimetype last = occurrence;
        std::time_t until = from + (moment(firstEnd) - moment(first));
        if (isAllDay) {
            const int days = std::max(1, icaltime_day_number(firstEnd) - icaltime_day_number(first));
            icaltime_adjust(&last, days, 0, 0, 0);
            until = moment(last) - 1;
        }
        const bool isMoment = until <= from && from >= start_;
        if (from < end_ && (until > start_ || isMoment))
            found_.push_back({titleOf(event), from, std::max(from, until), isAllDay});
    }

    static std::optional<std::string> titleOf(icalcomponent* event)
    {
        const char* const summary = icalcomponent_get_summary(event);
        return summary == nullptr ? std::nullopt : std::optional<std::string>(summary);
    }

    /// Days since a day in the past.
    static int icaltime_day_number(const icaltimetype& time)
    {
        icaltimetype date = time;
        date.is_date = 1;
        date.hour = date.minute = date.second = 0;
        constexpr int secondsPerDay = 86400;
        return static_cast<int>(icaltime_as_timet(date) / secondsPerDay);
    }

    std::time_t start_;
    std::time_t end_;
    Replaced replaced_;
    std::set<std::time_t> excluded_;
    std::vector<CalendarEvent> found_;
};

icaltimetype universal(std::time_t time)
{
    return icaltime_from_timet_with_zone(time, 0, icaltimezone_get_utc_timezone());
}

ComponentPointer newCalendar()
{
    return ComponentPointer(icalcomponent_vanew(ICAL_VCALENDAR_COMPONENT, icalproperty_new_version("2.0"),
                                                icalproperty_new_prodid("-//Solvane//springboard//EN"), nullptr));
}

} // namespace

std::vector<std::filesystem::path> calendarFiles(const std::filesystem::path& folder)
{
    std::vector<std::filesystem::path> files;
    std::error_code missing;
    for (const auto& entry : std::filesystem::directory_iterator(folder, missing)) {
        if (entry.path().extension() == ".ics" && entry.is_regular_file(missing) && readCalendar(entry.path()) != nullptr)
            files.push_back(entry.path());
    }
    std::ranges::sort(files);
    return files;
}

std::vector<CalendarEvent> eventsInFile(const std::filesystem::path& file, std::time_t start, std::time_t end)
{
    const ComponentPointer calendar = readCalendar(file);
    if (calendar == nullptr)
        return {};
    return Search(start, end).inCalendar(calendar.get());
}

void addEventToFile(const std::filesystem::path& file, const CalendarEvent& event)
{
    ComponentPointer calendar = readCalendar(file);
    if (calendar == nullptr)
        calendar = newCalendar();
    icalcomponent* const component = icalcomponent_new_vevent();
    icalcomponent_set_uid(component, (std::to_string(event.start) + "-" + std::to_string(event.end) + "-" +
                                      event.title.value_or("") + "@solvane.org")
                                         .c_str());
    if (event.title)
        icalcomponent_set_summary(component, event.title->c_str());
    icalcomponent_set_dtstart(component, universal(event.start));
    icalcomponent_set_dtend(component, universal(event.end));
    icalcomponent_add_component(calendar.get(), component);

    writeWholeFile(file, icalcomponent_as_ical_string(calendar.get()));
}

} // namespace simulator
