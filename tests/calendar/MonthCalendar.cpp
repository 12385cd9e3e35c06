#include "tests/calendar/MonthCalendar.hpp"

#include <cstdlib>
#include <ctime>
#include <gtest/gtest.h>
#include <optional>

#include "platform/UIKit/UIWindow.hpp"
#include "simulator/foundation/clock.hpp"
#include "simulator/foundation/surroundings.hpp"
#include "simulator/quartzcore/CGColor.hpp"

RegionalPhone::RegionalPhone(const Region& region)
{
    ::unsetenv("LC_ALL");
    ::setenv("LANG", region.language.c_str(), 1);
    ::setenv("TZ", region.timeZone.c_str(), 1);
    ::tzset();
    phone_ = std::make_unique<InjectedPhone>();
}

void setClock(const std::string& localTime)
{
    simulator::surroundings().frozenClock = simulator::momentOfLocalTime(localTime).value();
}

Owned<UIView> newCalendar()
{
    return adopt(static_cast<UIView*>(send<"alloc", UIView*>(objc_getClass("APLCalendar"))->init()));
}

Owned<UIView> newCalendarOn(const std::string& day)
{
    setClock(day + "T12:00:00");
    return newCalendar();
}

void setMonth(UIView* calendar, NSInteger year, NSInteger month)
{
    variable(calendar, "_year") = year;
    variable(calendar, "_month") = month;
}

std::string shownMonth(UIView* calendar)
{
    return std::to_string(variable(calendar, "_year")) + '-' + std::to_string(variable(calendar, "_month"));
}

void showMonth(UIView* calendar, NSInteger year, NSInteger month)
{
    setMonth(calendar, year, month);
    send<"clearViews">(calendar);
    send<"drawHeader">(calendar);
    send<"drawDays">(calendar);
}

namespace {

template <class View>
std::vector<View*> subviewsOfClass(UIView* view, const char* className)
{
    std::vector<View*> all;
    for (UIView* subview : subviewsOf(view)) {
        if (subview->isKindOfClass(objc_getClass(className)))
            all.push_back(static_cast<View*>(subview));
    }
    return all;
}

/// Today's title alone is set in the bold face.
bool isToday(UIButton* button)
{
    return textOf(button->titleLabel()->font()->fontName()) == "Verdana-Bold";
}

std::string notation(UIButton* button)
{
    const std::string title = titleOf(button);
    if (!button->isEnabled())
        return '(' + title + ')';
    return isToday(button) ? '[' + title + ']' : title;
}

} // namespace

std::vector<UIButton*> dayButtons(UIView* calendar)
{
    return subviewsOfClass<UIButton>(calendar, "UIButton");
}

std::vector<UILabel*> weekdayLabels(UIView* calendar)
{
    return subviewsOfClass<UILabel>(calendar, "UILabel");
}

UIButton* buttonOfDay(UIView* calendar, NSInteger day)
{
    for (UIButton* button : dayButtons(calendar)) {
        if (button->tag() == day)
            return button;
    }
    throw std::logic_error("no such day is shown");
}

std::string titleOf(UIButton* button)
{
    return textOf(send<"titleForState:", NSString*>(button, UIControlStateNormal));
}

std::vector<std::string> gridOf(UIView* calendar)
{
    constexpr std::size_t columns = 7;
    std::vector<std::string> rows;
    const auto buttons = dayButtons(calendar);
    for (std::size_t i = 0; i < buttons.size(); ++i) {
        if (i % columns == 0)
            rows.emplace_back(notation(buttons[i]));
        else
            rows.back() += ' ' + notation(buttons[i]);
    }
    return rows;
}

simulator::Colour colourOf(UIColor* color)
{
    return simulator::colourOf(color->CGColor());
}
