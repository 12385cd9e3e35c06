#include "bench/calendar_replay.hpp"

#include "platform/CoreGraphics/CGGeometry.hpp"
#include "platform/Foundation/NSLog.hpp"
#include "platform/Foundation/NSString.hpp"

namespace {

/// One send, with nothing around it.
template <class Result = void, class Receiver, class... Arguments>
Result message(Receiver* receiver, SEL selector, Arguments... arguments)
{
    const auto object = reinterpret_cast<id>(receiver);
    return reinterpret_cast<Result (*)(id, SEL, Arguments...)>(objc_msg_lookup(object, selector))(object, selector, arguments...);
}

template <class... Arguments>
id format(Class string, SEL selector, id text, Arguments... arguments)
{
    const auto object = reinterpret_cast<id>(string);
    return reinterpret_cast<id (*)(id, SEL, id, ...)>(objc_msg_lookup(object, selector))(object, selector, text, arguments...);
}

SEL named(const char* name)
{
    return sel_registerName(name);
}

id constant(const char* text)
{
    return objc_retain(NSString::stringWithUTF8String(text));
}

struct Selectors {
    SEL addSubview = named("addSubview:");
    SEL addTarget = named("addTarget:action:forControlEvents:");
    SEL alloc = named("alloc");
    SEL arrayWithObjects = named("arrayWithObjects:count:");
    SEL buttonWithType = named("buttonWithType:");
    SEL CGColor = named("CGColor");
    SEL clearColor = named("clearColor");
    SEL colorWithRed = named("colorWithRed:green:blue:alpha:");
    SEL colorWithWhite = named("colorWithWhite:alpha:");
    SEL currentCalendar = named("currentCalendar");
    SEL dateFromString = named("dateFromString:");
    SEL deselectDay = named("deselectDay:");
    SEL fontWithName = named("fontWithName:size:");
    SEL frame = named("frame");
    SEL getOffsetDays = named("getOffsetDays");
    SEL getTotalDays = named("getTotalDaysInCurrentMonth");
    SEL goOneMonthBack = named("goOneMonthBack");
    SEL goOneMonthForward = named("goOneMonthForward");
    SEL grayColor = named("grayColor");
    SEL init = named("init");
    SEL initWithFrame = named("initWithFrame:");
    SEL insertSublayer = named("insertSublayer:atIndex:");
    SEL intValue = named("intValue");
    SEL layer = named("layer");
    SEL plotCell = named("plotCellAtX:Y:Day:isGreyDay:");
    SEL rangeOfUnit = named("rangeOfUnit:inUnit:forDate:");
    SEL selectDay = named("selectDay:");
    SEL setBackgroundColor = named("setBackgroundColor:");
    SEL setBorderColor = named("setBorderColor:");
    SEL setBorderWidth = named("setBorderWidth:");
    SEL setColors = named("setColors:");
    SEL setDateFormat = named("setDateFormat:");
    SEL setEnabled = named("setEnabled:");
    SEL setFont = named("setFont:");
    SEL setFormatterBehavior = named("setFormatterBehavior:");
    SEL setFrame = named("setFrame:");
    SEL setTag = named("setTag:");
    SEL setText = named("setText:");
    SEL setTextAlignment = named("setTextAlignment:");
    SEL setTextColor = named("setTextColor:");
    SEL setTitle = named("setTitle:forState:");
    SEL setTitleColor = named("setTitleColor:forState:");
    SEL stringFromDate = named("stringFromDate:");
    SEL stringWithFormat = named("stringWithFormat:");
    SEL titleLabel = named("titleLabel");
};

struct Classes {
    Class array = objc_getClass("NSArray");
    Class button = objc_getClass("UIButton");
    Class calendar = objc_getClass("NSCalendar");
    Class color = objc_getClass("UIColor");
    Class font = objc_getClass("UIFont");
    Class formatter = objc_getClass("NSDateFormatter");
    Class gradient = objc_getClass("CAGradientLayer");
    Class label = objc_getClass("UILabel");
    Class string = objc_getClass("NSString");
};

struct Constants {
    id bold = constant("Verdana-Bold");
    id plain = constant("Verdana");
    id number = constant("%li");
    id monthFormat = constant("MM yyyy");
    id titleFormat = constant("MMMM yyyy");
    id dateFormat = constant("dd-MM-yyyy");
    id weekdayFormat = constant("e");
    id monthDigits = constant("%li %li");
    id dateDigits = constant("%li-%li-%li");
    id firstDigits = constant("%i-%li-%li");
    id logLine = constant("dayOfWeek: %li");
    id weekdays[7] = {constant("Mon"), constant("Tue"), constant("Wed"), constant("Thu"),
                      constant("Fri"), constant("Sat"), constant("Sun")};
};

struct Cell {
    double x, y;
    NSInteger day;
    bool isGrey;
    bool isToday;
};

struct Replay {
    id calendar;
    id* title;
    Selectors s;
    Classes c;
    Constants k;
    Cell cells[42];
};

Replay* replay;

constexpr NSInteger month = 3;
constexpr NSInteger year = 2014;
constexpr NSInteger today = 5;

void sendHeader(const Replay& r)
{
    const auto& [calendar, slot, s, c, k, cells] = r;
    const id title = message<id>(c.label, s.alloc);
    message<CGRect>(calendar, s.frame);
    const id made = message<id>(title, s.initWithFrame, CGRect{{45, 0}, {230, 45}});
    objc_release(*slot);
    *slot = made;
    message(made, s.setFont, message<id>(c.font, s.fontWithName, k.bold, 18.0));
    message(made, s.setTextAlignment, NSInteger{1});
    const id digits = format(c.string, s.stringWithFormat, k.monthDigits, month, year);
    const id formatter = message<id>(message<id>(c.formatter, s.alloc), s.init);
    message(formatter, s.setDateFormat, k.monthFormat);
    const id date = message<id>(formatter, s.dateFromString, digits);
    message(formatter, s.setDateFormat, k.titleFormat);
    const id text = message<id>(formatter, s.stringFromDate, date);
    objc_release(formatter);
    message(made, s.setText, text);
    message(made, s.setTextColor, message<id>(c.color, s.colorWithWhite, 0.8, 0.8));
    message(made, s.setBackgroundColor, message<id>(c.color, s.clearColor));

    for (int i = 0; i < 7; ++i) {
        const id label = message<id>(message<id>(c.label, s.alloc), s.initWithFrame, CGRect{{i * 44.0, 45}, {45, 22}});
        message(label, s.setText, k.weekdays[i]);
        message(label, s.setFont, message<id>(c.font, s.fontWithName, k.bold, 12.0));
        message(label, s.setTextAlignment, NSInteger{1});
        message(label, s.setTextColor, message<id>(c.color, s.grayColor));
        message(label, s.setBackgroundColor, message<id>(c.color, s.clearColor));
        message(calendar, s.addSubview, label);
        objc_release(label);
    }
}

id sendDate(const Replay& r, id digits)
{
    const id formatter = message<id>(message<id>(r.c.formatter, r.s.alloc), r.s.init);
    message(formatter, r.s.setDateFormat, r.k.dateFormat);
    const id date = message<id>(formatter, r.s.dateFromString, digits);
    objc_release(formatter);
    return date;
}

void sendLength(const Replay& r, NSInteger shownMonth)
{
    message<NSInteger>(r.calendar, r.s.getTotalDays);
    const id digits = format(r.c.string, r.s.stringWithFormat, r.k.dateDigits, today, shownMonth, year);
    const id date = sendDate(r, digits);
    message<NSRange>(message<id>(r.c.calendar, r.s.currentCalendar), r.s.rangeOfUnit, NSUInteger{16}, NSUInteger{8}, date);
}

void sendOffset(const Replay& r)
{
    message<NSInteger>(r.calendar, r.s.getOffsetDays);
    const id date = sendDate(r, format(r.c.string, r.s.stringWithFormat, r.k.firstDigits, 1, month, year));
    const id formatter = message<id>(message<id>(r.c.formatter, r.s.alloc), r.s.init);
    message(formatter, r.s.setFormatterBehavior, NSUInteger{1040});
    message(formatter, r.s.setDateFormat, r.k.weekdayFormat);
    message<int>(message<id>(formatter, r.s.stringFromDate, date), r.s.intValue);
    objc_release(formatter);
}

id white(const Replay& r, double white, double alpha)
{
    return message<id>(r.c.color, r.s.colorWithWhite, white, alpha);
}

id cgColour(const Replay& r, id color)
{
    return message<id>(color, r.s.CGColor);
}

void sendFont(const Replay& r, id button, id name)
{
    const id label = message<id>(button, r.s.titleLabel);
    message(label, r.s.setFont, message<id>(r.c.font, r.s.fontWithName, name, 12.0));
}

void sendCell(const Replay& r, const Cell& cell)
{
    const Selectors& s = r.s;
    message(r.calendar, s.plotCell, static_cast<NSInteger>(cell.x), static_cast<NSInteger>(cell.y), cell.day, BOOL{cell.isGrey});
    const id button = message<id>(r.c.button, s.buttonWithType, NSInteger{0});
    message(button, s.setFrame, CGRect{{cell.x, cell.y}, {45, 45}});
    white(r, 0.8, 0.8);
    white(r, 0.8, 0.8);
    const id gradient = message<id>(r.c.gradient, s.layer);
    message(button, s.setTitleColor, white(r, 0.3, 0.7), NSUInteger{0});
    sendFont(r, button, r.k.plain);
    message(button, s.setTitle, format(r.c.string, s.stringWithFormat, r.k.number, cell.day), NSUInteger{0});
    message(button, s.setEnabled, BOOL{!cell.isGrey});
    if (!cell.isGrey) {
        message(button, s.setTag, cell.day);
        message(button, s.addTarget, r.calendar, s.selectDay, NSUInteger{1});
        message(button, s.addTarget, r.calendar, s.deselectDay, NSUInteger{64});
        message(button, s.addTarget, r.calendar, s.deselectDay, NSUInteger{128});
    }
    const id titleColour = cell.isGrey ? white(r, 0.7, 0.8) : white(r, cell.isToday ? 0.9 : 0.3, cell.isToday ? 1 : 0.7);
    message(button, s.setTitleColor, titleColour, NSUInteger{0});
    id colours[2];
    if (cell.isToday) {
        colours[0] = message<id>(r.c.color, s.colorWithRed, 0.0, 0.0, 0.6, 0.5);
        colours[1] = message<id>(r.c.color, s.colorWithRed, 0.1, 0.1, 0.8, 0.5);
    } else {
        for (id& colour : colours)
            colour = cell.isGrey ? white(r, 0.2, 0.1) : white(r, 0.8, 0.8);
    }
    const id bordered = message<id>(button, s.layer);
    message(bordered, s.setBorderColor, cgColour(r, cell.isGrey ? white(r, 0.6, 0.1) : white(r, 0.1, 0.2)));
    sendFont(r, button, cell.isToday ? r.k.bold : r.k.plain);
    message(gradient, s.setFrame, CGRect{{0, 0}, {45, 45}});
    for (id& colour : colours)
        colour = cgColour(r, colour);
    message(gradient, s.setColors, message<id>(r.c.array, s.arrayWithObjects, &colours[0], NSUInteger{2}));
    message(message<id>(button, s.layer), s.insertSublayer, gradient, 0U);
    message(message<id>(button, s.layer), s.setBorderWidth, 1.0);
    message(r.calendar, s.addSubview, button);
}

void sendDays(const Replay& r)
{
    sendLength(r, month);
    sendOffset(r);
    message(r.calendar, r.s.goOneMonthBack);
    sendLength(r, month - 1);
    message(r.calendar, r.s.goOneMonthForward);
    NSLog(static_cast<NSString*>(r.k.logLine), NSInteger{4});
    for (const Cell& cell : r.cells)
        sendCell(r, cell);
}

/// What a cell shows: before the first and after the last day stand those of the months beside.
NSInteger shownDay(NSInteger day)
{
    if (day < 1)
        return day + 28;
    return day > 31 ? day - 31 : day;
}

} // namespace

void prepareReplay(id calendar, id* titleSlot)
{
    replay = new Replay{.calendar = calendar, .title = titleSlot, .s = {}, .c = {}, .k = {}, .cells = {}};
    for (int i = 0; i < 42; ++i) {
        const int row = i / 7;
        const NSInteger day = i - 4;
        const bool isGrey = day < 1 || day > 31;
        replay->cells[i] = {
            .x = i % 7 * 44.0, .y = 67 + row * 44.0, .day = shownDay(day), .isGrey = isGrey, .isToday = !isGrey && day == today};
    }
}

void replayMonth()
{
    sendHeader(*replay);
    sendDays(*replay);
}
