#include "calendar/methods.hpp"

#include "platform/EventKit/EventKit.hpp"
#include "platform/Foundation/NSCalendar.hpp"
#include "platform/Foundation/NSDateFormatter.hpp"
#include "platform/Foundation/NSLocale.hpp"
#include "platform/runtime/AutoreleasePool.hpp"

namespace {

NSDate* dayAfter(NSDate* date)
{
    const Owned<NSDateComponents> oneDay = adopt(NSDateComponents::alloc()->init());
    oneDay->setDay(1);
    return NSCalendar::currentCalendar()->dateByAddingComponents_toDate_options(oneDay, date, 0);
}

/// The events of the default calendar from the moment given until a calendar day later, each as its title, its times and an
/// empty line. A store without a default calendar gives the empty text. Autoreleased.
NSString* getCalenderEventsForDay(APLCalendar* self, SEL, NSDate* start)
{
    const Owned<EKEventStore> store = adopt(EKEventStore::newStore());
    NSDate* const end = dayAfter(start);
    const id defaultCalendar = store->defaultCalendarForNewEvents();
    if (defaultCalendar == nullptr)
        return constantString<"">();
    NSArray* const calendars = NSArray::arrayWithObjects_count(&defaultCalendar, 1);
    NSPredicate* const predicate = store->predicateForEventsWithStartDate_endDate_calendars(start, end, calendars);
    const Owned<NSMutableArray> events = adopt(NSMutableArray::alloc()->initWithArray(store->eventsMatchingPredicate(predicate)));

    Owned<NSString> text = constantString<"">();
    for (NSUInteger i = 0; i < events->count(); ++i) {
        // Each text holds all before it: none is kept longer than the next needs it.
        const AutoreleasePool pool;
        auto* const event = events->objectAtIndex<EKEvent>(i);
        NSString* const from = self->getStringFromDate(event->startDate());
        NSString* const until = self->getStringFromDate(event->endDate());
        NSString* const times = NSString::stringWithFormat(constantString<"%@ - %@">(), from, until);
        text = NSString::stringWithFormat(constantString<"%@%@\n%@\n\n">(), text.get(), event->title(), times);
    }
    return text.autorelease();
}

NSString* getStringFromDate(APLCalendar*, SEL, NSDate* date)
{
    const Owned<NSDateFormatter> formatter = adopt(NSDateFormatter::alloc()->init());
    formatter->setLocale(NSLocale::currentLocale());
    formatter->setDateFormat(constantString<"d MMM yyyy, HH:mm">());
    return Owned(formatter->stringFromDate(date)).autorelease();
}

} // namespace

void addDayEvents(CalendarClass& calendar)
{
    calendar.method<"getCalenderEventsForDay:">(getCalenderEventsForDay).method<"getStringFromDate:">(getStringFromDate);
}
