#include "calendar/APLCalendar.hpp"

#include "calendar/cell_sizes.hpp"
#include "calendar/methods.hpp"
#include "platform/Foundation/NSCalendar.hpp"

namespace {

void showMonthOf(APLCalendar* self, NSDate* date)
{
    NSDateComponents* const components =
        NSCalendar::currentCalendar()->components_fromDate(NSCalendarUnitYear | NSCalendarUnitMonth | NSCalendarUnitDay, date);
    APLCalendarIvars& ivars = ivarsOf(self);
    ivars._today = components->day();
    ivars._day = components->day();
    ivars._month = components->month();
    ivars._year = components->year();
}

void deriveSizes(APLCalendar* self)
{
    const auto sizes = cellSizesForWidth<CGFloat, NSInteger>(self->frame().size.width);
    APLCalendarIvars& ivars = ivarsOf(self);
    ivars._cellSize = sizes.cell;
    ivars._borderWidth = sizes.border;
    ivars._fontSize = sizes.font;
    ivars._titleTextSize = sizes.title;
}

APLCalendar* init(APLCalendar* self, SEL)
{
    return self->initWithFrame(CGRect::make(0, 0, 320, 320));
}

APLCalendar* initWithFrame(APLCalendar* self, SEL, CGRect frame)
{
    self = superOf<APLCalendarIvars, "initWithFrame:", APLCalendar*>(self, frame);
    if (self == nullptr)
        return nullptr;
    showMonthOf(self, NSDate::date());
    deriveSizes(self);
    addSwipeRecognizer(self);
    self->drawHeader();
    self->drawDays();
    return self;
}

} // namespace

void registerAPLCalendar()
{
    registerAPLCalendarDelegate();
    CalendarClass calendar("APLCalendar", "UIView");
    calendar.ivar<&APLCalendarIvars::lblMonth>("lblMonth")
        .ivar<&APLCalendarIvars::_day>("_day")
        .ivar<&APLCalendarIvars::_month>("_month")
        .ivar<&APLCalendarIvars::_year>("_year")
        .ivar<&APLCalendarIvars::_cellSize>("_cellSize")
        .ivar<&APLCalendarIvars::_fontSize>("_fontSize")
        .ivar<&APLCalendarIvars::_titleTextSize>("_titleTextSize")
        .ivar<&APLCalendarIvars::_today>("_today")
        .ivar<&APLCalendarIvars::_borderWidth>("_borderWidth")
        .ivar<&APLCalendarIvars::_recognizer>("_recognizer")
        .ivar<&APLCalendarIvars::_delegate>("_delegate")
        .method<"init">(init)
        .method<"initWithFrame:">(initWithFrame)
        .property<&APLCalendarIvars::_delegate, "delegate", "<APLCalendarDelegate>">();
    addMonthModel(calendar);
    addMonthDrawing(calendar);
    addSwipes(calendar);
    addDaySelection(calendar);
    addDayEvents(calendar);
    calendar.registerClass();
}
