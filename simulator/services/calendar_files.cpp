#include "simulator/services/calendar_files.hpp"

#include <algorithm>
#include <cctype>
#include <deque>
#include <fstream>
#include <iterator>
#include <map>
#include <memory>
#include <unordered_map>

#include "simulator/files/whole_file.hpp"
#include "simulator/services/calendar_events.hpp"
#include "simulator/services/calendar_text.hpp"

namespace simulator {

namespace {

constexpr std::int64_t secondsPerDay = 86400;

/// The events of a file in a period.
class Search {
public:
    Search(std::int64_t start, std::int64_t end)
        : start_(start), end_(end), days_(static_cast<std::size_t>(std::max<std::int64_t>(1, (end - start) / secondsPerDay)))
    {
    }

    FoundEvents in(const CalendarTexts& texts)
    {
        found_.cuts = texts.cuts;
        for (const CalendarText& calendar : texts.calendars)
            zones_.push_back(std::make_unique<CalendarZones>(calendar.timeZones, end_ + secondsPerDay, allowance_));
        forEachEvent(texts, true, [&](EventDefinition& event) {
            event.rules.clear();
            replacing_.push_back(std::move(event));
        });
        for (const EventDefinition& event : replacing_) {
            if (event.replaced && !event.identity.empty())
                replacements_[event.identity][event.replaced->moment()] = &event;
            addInstance(event, event.start, event.length);
        }
        forEachEvent(texts, false, [&](EventDefinition& event) { addInstances(event); });
        if (allowance_.isSpent())
            found_.cuts.emplace_back("its rules ask for too many instances: the rest of them is left out");
        if (hasLeftOut_)
            found_.cuts.emplace_back("there are more events than can be listed: the rest of them is left out");
        std::ranges::stable_sort(found_.events, {}, &CalendarEvent::start);
        return std::move(found_);
    }

private:
    /// The events that take the place of an instance, or else all others. Not all are held at a time: rules are large.
    template <class Visit>
    void forEachEvent(const CalendarTexts& texts, bool isReplacing, Visit visit)
    {
        for (std::size_t i = 0; i < texts.calendars.size(); ++i) {
            for (const std::string& text : texts.calendars[i].events) {
                const bool mayReplace = text.find("RECURRENCE-ID") != std::string::npos;
                auto event = mayReplace || !isReplacing ? readEvent(text, *zones_[i]) : std::nullopt;
                if (event && event->replaced.has_value() == isReplacing)
                    visit(*event);
            }
        }
    }

    /// What takes the place of instances of an event, by their moments.
    using Replacements = std::map<std::int64_t, const EventDefinition*>;

    const Replacements& replacementsOf(const EventDefinition& event) const
    {
        static const Replacements none;
        const auto known = replacements_.find(event.identity);
        return known == replacements_.end() ? none : known->second;
    }

    /// What a zone's clocks may show between two moments.
    static Span shownBetween(std::int64_t from, std::int64_t to, const OffsetAt& zone)
    {
        const auto offsets = [&](std::int64_t moment) {
            return std::minmax({zone(moment - secondsPerDay), zone(moment), zone(moment + secondsPerDay)});
        };
        return {from + offsets(from).first, to + offsets(to).second};
    }

    /// How much later the instances from a replacement on are.
    static std::int64_t delayBy(const EventDefinition& replacement)
    {
        const CalendarTime& from = replacement.replaced.value_or(replacement.start);
        return replacement.start.wall - from.wallIn(*replacement.start.zone);
    }

    void addInstances(const EventDefinition& event)
    {
        const Replacements& replacements = replacementsOf(event);
        // An instance may begin long before the period and reach into it, or be moved.
        std::int64_t reach = event.length.days * secondsPerDay + event.length.seconds;
        std::int64_t delay = 0;
        for (const auto& [moment, replacement] : replacements) {
            if (!replacement->replacesLater)
                continue;
            reach = std::max(reach, replacement->length.days * secondsPerDay + replacement->length.seconds);
            delay = std::max(delay, std::abs(delayBy(*replacement)));
        }
        const std::int64_t earliest = start_ - reach - delay;
        const std::int64_t latest = end_ + delay;

        // An instance that several rules list counts once.
        std::map<std::int64_t, EventDefinition::Extra> instances;
        const auto list = [&](const CalendarTime& time, const EventLength& length) {
            instances.try_emplace(time.moment(), EventDefinition::Extra{time, length});
        };
        for (const EventDefinition::Extra& extra : event.extras)
            list(extra.start, extra.length);
        if (event.rules.empty())
            list(event.start, event.length);
        const std::size_t most = instances.size() + mostEvents * days_;
        for (const icalrecurrencetype& rule : event.rules) {
            const OffsetAt& zone = *event.start.zone;
            followRule(rule, event.start.wall, untilIn(rule, zone), shownBetween(earliest, latest, zone), allowance_,
                       [&](WallTime wall) {
                           const CalendarTime start{wall, event.start.isDate, &zone};
                           if (start.moment() >= earliest)
                               list(start, event.length);
                           return instances.size() <= most;
                       });
        }
        for (const auto& [moment, instance] : instances) {
            if (!event.exceptions.contains(moment))
                addUnlessReplaced(event, replacements, moment, instance);
        }
    }

    void addUnlessReplaced(const EventDefinition& event, const Replacements& replacements, std::int64_t moment,
                           const EventDefinition::Extra& instance)
    {
        if (replacements.contains(moment))
            return;
        for (auto earlier = replacements.lower_bound(moment); earlier != replacements.begin();) {
            const EventDefinition& replacement = *(--earlier)->second;
            if (!replacement.replacesLater)
                continue;
            CalendarTime start = replacement.start;
            start.wall = instance.start.wallIn(*start.zone) + delayBy(replacement);
            addInstance(replacement, start, replacement.length);
            return;
        }
        addInstance(event, instance.start, instance.length);
    }

    /// Adds an instance if some part of it lies in the period.
    void addInstance(const EventDefinition& event, const CalendarTime& start, const EventLength& length)
    {
        const std::int64_t from = start.moment();
        const std::int64_t until = length.endFrom(start) - (start.isDate ? 1 : 0);
        const bool isMoment = until <= from && from >= start_;
        if (from >= end_ || (until <= start_ && !isMoment))
            return;
        const std::size_t title = event.title ? event.title->size() : 0;
        hasLeftOut_ = hasLeftOut_ || found_.events.size() == mostEvents * days_ || titles_ + title > mostTitles * days_;
        if (hasLeftOut_)
            return;
        titles_ += title;
        found_.events.push_back({event.title, from, std::max(from, until), start.isDate});
    }

    /// For each day. Who lists a day writes every event anew for each that comes after it.
    static constexpr std::size_t mostEvents = 2000;
    static constexpr std::size_t mostTitles = std::size_t{256} << 10;

    std::int64_t start_;
    std::int64_t end_;
    std::size_t days_;
    Allowance allowance_{5'000'000};
    std::vector<std::unique_ptr<CalendarZones>> zones_;
    /// Their addresses last.
    std::deque<EventDefinition> replacing_;
    std::unordered_map<std::string, Replacements> replacements_;
    FoundEvents found_;
    /// How long the titles are together, in bytes.
    std::size_t titles_ = 0;
    bool hasLeftOut_ = false;
};

icaltimetype universal(std::int64_t moment)
{
    return icaltime_from_timet_with_zone(static_cast<time_t>(moment), 0, icaltimezone_get_utc_timezone());
}

std::string textOf(const CalendarEvent& event)
{
    const ComponentPointer component(icalcomponent_new_vevent());
    const std::string title = event.title.value_or("");
    const std::string identity = std::to_string(event.start) + "-" + std::to_string(event.end) + "-" + title + "@solvane.org";
    icalcomponent_set_uid(component.get(), identity.c_str());
    if (event.title)
        icalcomponent_set_summary(component.get(), title.c_str());
    icalcomponent_set_dtstart(component.get(), universal(event.start));
    icalcomponent_set_dtend(component.get(), universal(event.end));
    return icalcomponent_as_ical_string(component.get());
}

/// Where the last calendar of a file ends.
std::string::iterator endOfCalendar(std::string& text)
{
    constexpr std::string_view end = "END:VCALENDAR";
    const auto isSame = [](char letter, char wanted) { return std::toupper(static_cast<unsigned char>(letter)) == wanted; };
    return std::ranges::find_end(text, end, isSame).begin();
}

} // namespace

std::vector<std::filesystem::path> calendarFiles(const std::filesystem::path& folder)
{
    std::vector<std::filesystem::path> files;
    std::error_code missing;
    for (const auto& entry : std::filesystem::directory_iterator(folder, missing)) {
        if (entry.path().extension() == ".ics" && !readCalendarTexts(entry.path()).calendars.empty())
            files.push_back(entry.path());
    }
    std::ranges::sort(files);
    return files;
}

FoundEvents eventsInFile(const std::filesystem::path& file, std::int64_t start, std::int64_t end)
{
    return Search(start, end).in(readCalendarTexts(file));
}

void addEventToFile(const std::filesystem::path& file, const CalendarEvent& event)
{
    std::ifstream stream(file, std::ios::binary);
    std::string calendar{std::istreambuf_iterator<char>(stream), {}};
    if (endOfCalendar(calendar) == calendar.end())
        calendar = "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:-//Solvane//springboard//EN\r\nEND:VCALENDAR\r\n";
    // What else the file holds stays as it is.
    const std::string added = textOf(event);
    calendar.insert(endOfCalendar(calendar), added.begin(), added.end());
    std::filesystem::create_directories(file.parent_path());
    writeWholeFile(file, calendar);
}

} // namespace simulator
