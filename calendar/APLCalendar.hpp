#pragma once

#include "calendar/APLCalendarDelegate.hpp"
#include "platform/Foundation/NSDate.hpp"
#include "platform/UIKit/UIGestureRecognizer.hpp"
#include "platform/UIKit/UILabel.hpp"
#include "platform/runtime/ClassBuilder.hpp"

/// A view that shows one month as a grid of day buttons under a row of weekday names.
class APLCalendar : public UIView {
public:
    static APLCalendar* alloc() { return send<"alloc", APLCalendar*>(classNamed<"APLCalendar">()); }
    /// 320 by 320 points.
    APLCalendar* init() { return send<"init", APLCalendar*>(this); }
    /// Shows the month of the current date.
    APLCalendar* initWithFrame(CGRect frame) { return send<"initWithFrame:", APLCalendar*>(this, frame); }

    /// Held weakly.
    APLCalendarDelegate* delegate() const { return send<"delegate", APLCalendarDelegate*>(this); }
    void setDelegate(id delegate) { send<"setDelegate:">(this, delegate); }

    /// The days of the month that is shown.
    NSInteger getTotalDaysInCurrentMonth() const { return send<"getTotalDaysInCurrentMonth", NSInteger>(this); }
    /// The leading cells that the month's first week needs, in the locale's own week: 1 to 6, and 7 for none; −1 when the
    /// locale's weekday number cannot be read.
    NSInteger getOffsetDays() const { return send<"getOffsetDays", NSInteger>(this); }

    /// Step without drawing.
    void goOneMonthForward() { send<"goOneMonthForward">(this); }
    void goOneMonthBack() { send<"goOneMonthBack">(this); }
    void goOneYearForward() { send<"goOneYearForward">(this); }
    void goOneYearBack() { send<"goOneYearBack">(this); }

    /// Step and draw anew, holding the view's lock.
    void nextMonth() { send<"nextMonth">(this); }
    void prevMonth() { send<"prevMonth">(this); }
    void nextYear() { send<"nextYear">(this); }
    void prevYear() { send<"prevYear">(this); }

    /// Make the title, and add seven weekday labels.
    void drawHeader() { send<"drawHeader">(this); }
    /// Add forty-two day buttons.
    void drawDays() { send<"drawDays">(this); }
    void plotCellAtX_Y_Day_isGreyDay(NSInteger x, NSInteger y, NSInteger day, bool isGreyDay)
    {
        send<"plotCellAtX:Y:Day:isGreyDay:">(this, x, y, day, BOOL{isGreyDay});
    }
    /// Removes every subview.
    void clearViews() { send<"clearViews">(this); }

    /// The date as "5 Mar 2014, 09:00" in the user's locale and time zone.
    NSString* getStringFromDate(NSDate* date) const { return send<"getStringFromDate:", NSString*>(this, date); }
};

struct APLCalendarIvars {
    Strong<UILabel> lblMonth;
    /// The day of the month on which the view was made.
    NSInteger _day;
    /// The month shown, 1 to 12.
    NSInteger _month;
    /// The year shown, as the user's calendar numbers it.
    NSInteger _year;
    NSInteger _cellSize;
    NSInteger _fontSize;
    NSInteger _titleTextSize;
    /// The day number that is drawn as today, in whatever month is shown.
    NSInteger _today;
    NSInteger _borderWidth;
    Strong<UISwipeGestureRecognizer> _recognizer;
    Weak<APLCalendarDelegate> _delegate;
};

inline APLCalendarIvars& ivarsOf(APLCalendar* calendar)
{
    return ivarsOf<APLCalendarIvars>(calendar);
}

/// Makes the class and its delegate's protocol known to the runtime. To be called once.
void registerAPLCalendar();
