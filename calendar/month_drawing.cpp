#include "calendar/methods.hpp"

#include "platform/Foundation/NSDateFormatter.hpp"
#include "platform/Foundation/NSLog.hpp"
#include "platform/QuartzCore/CAGradientLayer.hpp"
#include "platform/UIKit/UIButton.hpp"
#include "platform/runtime/each.hpp"

namespace {

constexpr NSInteger columns = 7;
constexpr NSInteger rows = 6;

/// A grey is made by its white, any other colour by its components.
struct CellColour {
    CGFloat red;
    CGFloat green;
    CGFloat blue;
    CGFloat alpha;
    bool isGrey;

    static constexpr CellColour white(CGFloat white, CGFloat alpha) { return {white, white, white, alpha, true}; }
    static constexpr CellColour rgba(CGFloat red, CGFloat green, CGFloat blue, CGFloat alpha)
    {
        return {red, green, blue, alpha, false};
    }

    UIColor* make() const
    {
        return isGrey ? UIColor::colorWithWhite_alpha(red, alpha)
                      : UIColor::colorWithRed_green_blue_alpha(red, green, blue, alpha);
    }
};

struct CellStyle {
    bool isEnabled;
    CellColour title;
    CellColour gradientTop;
    CellColour gradientBottom;
    CellColour border;
    NSString* (*fontName)();

    UIFont* font(const APLCalendarIvars& ivars) const
    {
        return UIFont::fontWithName_size(fontName(), static_cast<CGFloat>(ivars._fontSize));
    }
};

constexpr CellStyle greyStyle{
    .isEnabled = false,
    .title = CellColour::white(0.7, 0.8),
    .gradientTop = CellColour::white(0.2, 0.1),
    .gradientBottom = CellColour::white(0.2, 0.1),
    .border = CellColour::white(0.6, 0.1),
    .fontName = constantString<"Verdana">,
};
constexpr CellStyle ordinaryStyle{
    .isEnabled = true,
    .title = CellColour::white(0.3, 0.7),
    .gradientTop = CellColour::white(0.8, 0.8),
    .gradientBottom = CellColour::white(0.8, 0.8),
    .border = CellColour::white(0.1, 0.2),
    .fontName = constantString<"Verdana">,
};
constexpr CellStyle todayStyle{
    .isEnabled = true,
    .title = CellColour::white(0.9, 1.0),
    .gradientTop = CellColour::rgba(0, 0, 0.6, 0.5),
    .gradientBottom = CellColour::rgba(0.1, 0.1, 0.8, 0.5),
    .border = CellColour::white(0.1, 0.2),
    .fontName = constantString<"Verdana-Bold">,
};

/// Today is told by the day's number alone, so it shows in every month; a grey day is never today. This is meant.
const CellStyle& styleOf(const APLCalendarIvars& ivars, NSInteger day, bool isGreyDay)
{
    if (isGreyDay)
        return greyStyle;
    return day == ivars._today ? todayStyle : ordinaryStyle;
}

/// "March 2014" in the user's language.
NSString* titleOf(const APLCalendarIvars& ivars)
{
    NSString* const numbers = NSString::stringWithFormat(constantString<"%li %li">(), ivars._month, ivars._year);
    const Owned<NSDateFormatter> formatter = adopt(NSDateFormatter::alloc()->init());
    formatter->setDateFormat(constantString<"MM yyyy">());
    const Owned<NSDate> month(formatter->dateFromString(numbers));
    formatter->setDateFormat(constantString<"MMMM yyyy">());
    return Owned(formatter->stringFromDate(month)).autorelease();
}

void drawTitle(APLCalendar* self)
{
    APLCalendarIvars& ivars = ivarsOf(self);
    const auto c = static_cast<CGFloat>(ivars._cellSize);
    ivars.lblMonth = adopt(UILabel::alloc()->initWithFrame(CGRect::make(c, 0, self->frame().size.width - 2 * c, c)));
    const Strong<UILabel>& title = ivars.lblMonth;
    title->setFont(UIFont::fontWithName_size(constantString<"Verdana-Bold">(), static_cast<CGFloat>(ivars._titleTextSize)));
    title->setTextAlignment(NSTextAlignmentCenter);
    title->setText(titleOf(ivars));
    title->setTextColor(UIColor::colorWithWhite_alpha(0.8, 0.8));
    title->setBackgroundColor(UIColor::clearColor());
    // The title stays out of the view: no month's name is on the screen. This is meant.
}

void drawWeekday(APLCalendar* self, NSInteger x, NSString* name)
{
    const APLCalendarIvars& ivars = ivarsOf(self);
    const NSInteger c = ivars._cellSize;
    const NSInteger height = c / 2;
    const auto side = static_cast<CGFloat>(c);
    const Owned<UILabel> label =
        adopt(UILabel::alloc()->initWithFrame(CGRect::make(static_cast<CGFloat>(x), side, side, static_cast<CGFloat>(height))));
    label->setText(name);
    label->setFont(UIFont::fontWithName_size(constantString<"Verdana-Bold">(), static_cast<CGFloat>(ivars._fontSize)));
    label->setTextAlignment(NSTextAlignmentCenter);
    label->setTextColor(UIColor::grayColor());
    label->setBackgroundColor(UIColor::clearColor());
    self->addSubview(label);
}

NSInteger daysInPreviousMonth(APLCalendar* self)
{
    self->goOneMonthBack();
    const NSInteger days = self->getTotalDaysInCurrentMonth();
    self->goOneMonthForward();
    return days;
}

/// The first of the previous month's days that lead the grid; one after its last when none does.
NSInteger firstLeadingDay(NSInteger leadingDays, NSInteger daysBefore)
{
    constexpr NSInteger afterAnyMonth = 99;
    if (leadingDays == columns - 1)
        return afterAnyMonth;
    return leadingDays < columns ? daysBefore - leadingDays : daysBefore - leadingDays + columns;
}

void addActions(UIButton* button, APLCalendar* target)
{
    button->addTarget_action_forControlEvents(target, selector<"selectDay:">(), UIControlEventTouchDown);
    button->addTarget_action_forControlEvents(target, selector<"deselectDay:">(), UIControlEventTouchUpInside);
    button->addTarget_action_forControlEvents(target, selector<"deselectDay:">(), UIControlEventTouchUpOutside);
}

void drawHeader(APLCalendar* self, SEL)
{
    // The headings are English and begin on Monday in every locale. This is meant.
    static constexpr NSString* (*weekdays[columns])() = {
        constantString<"Mon">, constantString<"Tue">, constantString<"Wed">, constantString<"Thu">,
        constantString<"Fri">, constantString<"Sat">, constantString<"Sun">,
    };

    drawTitle(self);
    NSInteger x = 0;
    for (const auto name : weekdays) {
        drawWeekday(self, x, name());
        x += ivarsOf(self)._cellSize - 1;
    }
}

void drawDays(APLCalendar* self, SEL)
{
    const NSInteger c = ivarsOf(self)._cellSize;
    const NSInteger top = c + c / 2;
    const NSInteger days = self->getTotalDaysInCurrentMonth();
    const NSInteger leadingDays = self->getOffsetDays() - 1;
    const NSInteger daysBefore = daysInPreviousMonth(self);
    NSInteger leadingDay = firstLeadingDay(leadingDays, daysBefore);
    NSLog(constantString<"dayOfWeek: %li">(), leadingDays);

    NSInteger day = 1;
    bool isNextMonth = false;
    for (NSInteger row = 0; row < rows; ++row) {
        for (NSInteger column = 0; column < columns; ++column) {
            const NSInteger x = column * (c - 1);
            const NSInteger y = top + row * (c - 1);
            if (leadingDay <= daysBefore) {
                self->plotCellAtX_Y_Day_isGreyDay(x, y, leadingDay++, true);
                continue;
            }
            if (day > days) {
                day = 1;
                isNextMonth = true;
            }
            self->plotCellAtX_Y_Day_isGreyDay(x, y, day++, isNextMonth);
        }
    }
}

void plotCellAtX_Y_Day_isGreyDay(APLCalendar* self, SEL, NSInteger x, NSInteger y, NSInteger day, BOOL isGreyDay)
{
    const APLCalendarIvars& ivars = ivarsOf(self);
    const CellStyle& style = styleOf(ivars, day, isGreyDay != NO);
    const auto side = static_cast<CGFloat>(ivars._cellSize);

    // An ordinary day at first, which its own style then overrides.
    UIButton* const button = UIButton::buttonWithType(UIButtonTypeCustom);
    button->setFrame(CGRect::make(static_cast<CGFloat>(x), static_cast<CGFloat>(y), side, side));
    Owned<UIColor> top(ordinaryStyle.gradientTop.make());
    Owned<UIColor> bottom(ordinaryStyle.gradientBottom.make());
    CAGradientLayer* const gradient = CAGradientLayer::layer();
    button->setTitleColor_forState(ordinaryStyle.title.make(), UIControlStateNormal);
    button->titleLabel()->setFont(ordinaryStyle.font(ivars));
    button->setTitle_forState(NSString::stringWithFormat(constantString<"%li">(), day), UIControlStateNormal);

    button->setEnabled(style.isEnabled);
    if (style.isEnabled) {
        button->setTag(day);
        addActions(button, self);
    }
    button->setTitleColor_forState(style.title.make(), UIControlStateNormal);
    top = style.gradientTop.make();
    bottom = style.gradientBottom.make();
    button->layer()->setBorderColor(style.border.make()->CGColor());
    button->titleLabel()->setFont(style.font(ivars));

    gradient->setFrame(CGRect::make(0, 0, side, side));
    const id colors[] = {reinterpret_cast<id>(top->CGColor()), reinterpret_cast<id>(bottom->CGColor())};
    gradient->setColors(NSArray::arrayWithObjects_count(colors, 2));
    button->layer()->insertSublayer_atIndex(gradient, 0);
    button->layer()->setBorderWidth(static_cast<CGFloat>(ivars._borderWidth));
    self->addSubview(button);
}

void clearViews(APLCalendar* self, SEL)
{
    for (UIView* view : each<UIView>(self->subviews()))
        view->removeFromSuperview();
}

} // namespace

void addMonthDrawing(CalendarClass& calendar)
{
    calendar.method<"drawHeader">(drawHeader)
        .method<"drawDays">(drawDays)
        .method<"plotCellAtX:Y:Day:isGreyDay:">(plotCellAtX_Y_Day_isGreyDay)
        .method<"clearViews">(clearViews);
}
