#include "platform/EventKit/EventKit.hpp"

#include <algorithm>
#include <cstdint>

#include "platform/Foundation/NSLog.hpp"
#include "platform/runtime/each.hpp"
#include "simulator/foundation/phone_root.hpp"
#include "simulator/foundation/strings.hpp"
#include "simulator/runtime/SimulatedClass.hpp"
#include "simulator/services/calendar_files.hpp"
#include "simulator/services/event_store.hpp"
#include "simulator/services/services.hpp"

/// The calendar store over the phone's "/User/Library/Calendar": each file there is one calendar, and the first by name is
/// the one for new events ("EventKit").

namespace simulator {

namespace {

constexpr const char* calendarFolder = "/User/Library/Calendar";

struct CalendarState {
    Owned<NSString> title;
    std::filesystem::path file;
};

struct CalendarItemState {};

struct EventState {
    Owned<NSString> title;
    Owned<NSDate> startDate;
    Owned<NSDate> endDate;
    bool allDay = false;
};

struct PredicateState {
    Owned<NSDate> start;
    Owned<NSDate> end;
    /// Nil for every calendar.
    Owned<NSArray> calendars;
};

struct EventStoreState {
    std::vector<Owned<EKCalendar>> calendars;
};

Owned<EKCalendar> calendarIn(const std::filesystem::path& file)
{
    Owned<EKCalendar> calendar = adopt(send<"new", EKCalendar*>(classNamed<"EKCalendar">()));
    ivarsOf<CalendarState>(calendar.get()) = {toNSString(file.stem().native()), file};
    return calendar;
}

EKEventStore* initStore(EKEventStore* self, SEL)
{
    for (const auto& file : calendarFiles(onThisMachine(calendarFolder)))
        ivarsOf<EventStoreState>(self).calendars.push_back(calendarIn(file));
    return self;
}

EKCalendar* defaultCalendarForNewEvents(EKEventStore* self, SEL)
{
    const auto& calendars = ivarsOf<EventStoreState>(self).calendars;
    return calendars.empty() ? nullptr : calendars.front().get();
}

NSPredicate* predicateForEvents(EKEventStore*, SEL, NSDate* start, NSDate* end, NSArray* calendars)
{
    const Owned<NSPredicate> predicate = adopt(send<"new", NSPredicate*>(classNamed<"EKEventPredicate">()));
    ivarsOf<PredicateState>(predicate.get()) = {start, end, calendars};
    return Owned<NSPredicate>(predicate).autorelease();
}

NSDate* dateAt(std::int64_t seconds)
{
    return NSDate::dateWithTimeIntervalSince1970(static_cast<NSTimeInterval>(seconds));
}

Owned<EKEvent> eventFor(const CalendarEvent& found)
{
    Owned<EKEvent> event = adopt(send<"new", EKEvent*>(classNamed<"EKEvent">()));
    ivarsOf<EventState>(event.get()) = {found.title ? toNSString(*found.title) : nullptr, dateAt(found.start), dateAt(found.end),
                                        found.isAllDay};
    return event;
}

/// The events of each calendar in turn, by their beginning. Of a longer period only the first four years are searched
/// (EKEventStore's own limit). Between no dates there are no events.
NSArray* eventsMatchingPredicate(EKEventStore* self, SEL, NSPredicate* predicate)
{
    const auto& wanted = ivarsOf<PredicateState>(predicate);
    const Owned<NSMutableArray> events = adopt(NSMutableArray::alloc()->init());
    if (wanted.start == nullptr || wanted.end == nullptr)
        return Owned<NSMutableArray>(events).autorelease();
    constexpr std::int64_t fourYears = std::int64_t{4 * 365 + 1} * 86400;
    const auto start = static_cast<std::int64_t>(wanted.start->timeIntervalSince1970());
    const auto end = std::min(static_cast<std::int64_t>(wanted.end->timeIntervalSince1970()), start + fourYears);
    for (EKCalendar* calendar : ivarsOf<EventStoreState>(self).calendars) {
        if (wanted.calendars != nullptr && send<"containsObject:", BOOL>(wanted.calendars.get(), calendar) == NO)
            continue;
        const auto& file = ivarsOf<CalendarState>(calendar).file;
        const FoundEvents found = eventsInFile(file, start, end);
        for (const CalendarEvent& event : found.events)
            events->addObject(eventFor(event));
        for (const std::string& cut : found.cuts)
            NSLog(constantString<"%@: %@">(), toNSString(file.filename().native()), toNSString(cut));
    }
    return Owned<NSMutableArray>(events).autorelease();
}

} // namespace

void registerEventKit()
{
    SimulatedClass<CalendarState>("EKCalendar", "NSObject").readOnly<&CalendarState::title>("title").registerClass();
    SimulatedClass<CalendarItemState>("EKCalendarItem", "NSObject").registerClass();
    SimulatedClass<EventState>("EKEvent", "EKCalendarItem")
        .readOnly<&EventState::title>("title")
        .readOnly<&EventState::startDate>("startDate")
        .readOnly<&EventState::endDate>("endDate")
        .readOnly<&EventState::allDay>("isAllDay")
        .registerClass();
    SimulatedClass<PredicateState>("EKEventPredicate", "NSPredicate").registerClass();
    SimulatedClass<EventStoreState>("EKEventStore", "NSObject")
        .method<"init">(initStore)
        .method<"defaultCalendarForNewEvents">(defaultCalendarForNewEvents)
        .method<"predicateForEventsWithStartDate:endDate:calendars:">(predicateForEvents)
        .method<"eventsMatchingPredicate:">(eventsMatchingPredicate)
        .registerClass();
}

void addEvent(const std::string& title, double start, double end)
{
    const auto folder = onThisMachine(calendarFolder);
    const auto calendars = calendarFiles(folder);
    addEventToFile(calendars.empty() ? folder / "Calendar.ics" : calendars.front(),
                   {title, static_cast<std::int64_t>(start), static_cast<std::int64_t>(end), false});
}

} // namespace simulator
