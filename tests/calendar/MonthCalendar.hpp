#pragma once

#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "platform/QuartzCore/CAGradientLayer.hpp"
#include "platform/UIKit/UIButton.hpp"
#include "simulator/graphics/Colour.hpp"
#include "tests/support/Phone.hpp"

/// A month calendar as the object runtime shows it: its class, its variables and its methods by name, its views as views.

/// What the user of a phone has chosen.
struct Region {
    /// As the C library names it: "de_DE.UTF-8".
    std::string language = "en_US.UTF-8";
    std::string timeZone = "UTC";
};

inline const Region english;
inline const Region german{.language = "de_DE.UTF-8", .timeZone = "UTC"};

/// A phone with the library in it, for a user of that region.
class RegionalPhone {
public:
    explicit RegionalPhone(const Region& region = {});

    const PhoneTree& tree() const { return phone_->tree(); }
    UIWindow* window() const { return simulator::springBoardWindow(); }

private:
    std::unique_ptr<InjectedPhone> phone_;
};

class GermanPhone : public RegionalPhone {
public:
    GermanPhone() : RegionalPhone(german) {}
};

/// Freezes the clock at a local time, "2014-03-15T12:00:00".
void setClock(const std::string& localTime);

/// A calendar made by plain init. `newCalendarOn("2014-03-15")` makes it at noon of that day.
Owned<UIView> newCalendar();
Owned<UIView> newCalendarOn(const std::string& day);

/// Sets which month is shown, without drawing it.
void setMonth(UIView* calendar, NSInteger year, NSInteger month);
/// "2014-3", what the calendar says it shows.
std::string shownMonth(UIView* calendar);

/// What the calendar finds of the month that it shows.
inline NSInteger lengthOfShownMonth(UIView* calendar)
{
    return send<"getTotalDaysInCurrentMonth", NSInteger>(calendar);
}
inline NSInteger offsetOfShownMonth(UIView* calendar)
{
    return send<"getOffsetDays", NSInteger>(calendar);
}

/// Shows that month: drawn anew.
void showMonth(UIView* calendar, NSInteger year, NSInteger month);

/// The calendar's day buttons and its weekday labels, each in the order in which they are subviews.
std::vector<UIButton*> dayButtons(UIView* calendar);
std::vector<UILabel*> weekdayLabels(UIView* calendar);

/// The button of a day of the month shown.
UIButton* buttonOfDay(UIView* calendar, NSInteger day);

std::string titleOf(UIButton* button);

/// The grid, a text for each row: a grey day is written "(28)", today "[15]", any other day "1", parted by blanks.
std::vector<std::string> gridOf(UIView* calendar);

simulator::Colour colourOf(UIColor* color);

namespace simulator {

inline std::ostream& operator<<(std::ostream& stream, const Colour& colour)
{
    return stream << "red " << colour.red << " green " << colour.green << " blue " << colour.blue << " alpha " << colour.alpha;
}

} // namespace simulator
