#include "tests/random_days/MonthModel.hpp"

#include <algorithm>
#include <chrono>
#include <ranges>

#include "tests/random_days/state_text.hpp"

namespace {

using namespace std::chrono;

long daysIn(long ofYear, long ofMonth)
{
    const auto last = year(static_cast<int>(ofYear)) / month(static_cast<unsigned>(ofMonth)) / std::chrono::last;
    return static_cast<long>(static_cast<unsigned>(last.day()));
}

std::string twoDigits(long value)
{
    const std::string text = std::to_string(value);
    return text.size() == 1 ? '0' + text : text;
}

std::string grey(double white, double alpha)
{
    return numbers({white, white, white, alpha});
}

/// What a delegate of that class hears.
bool hears(const std::string& delegate, const char* kind)
{
    return delegate == kind || delegate == "WholeDelegate";
}

} // namespace

MonthModel::MonthModel(const Region& region, const LocalTime& now, Rect frame, std::vector<std::string>& log)
    : frame(frame), region_(&region), log_(&log), day_(now.day), month_(now.month), year_(now.year), today_(now.day),
      cellSize_(static_cast<long>(frame.width / 7)), fontSize_(static_cast<long>(static_cast<double>(cellSize_) / 3.5)),
      titleTextSize_(static_cast<long>(static_cast<double>(cellSize_) / 2.5)),
      borderWidth_(static_cast<long>(static_cast<double>(cellSize_) * 0.023))
{
    drawHeader();
    drawDays();
}

void MonthModel::drawHeader()
{
    title_ = firstDayIsReadable() ? quoted(region_->title(year_, month_)) : "none";
    titleFrame_ = {static_cast<double>(cellSize_), 0, frame.width - 2 * static_cast<double>(cellSize_),
                   static_cast<double>(cellSize_)};
    const long labelHeight = cellSize_ / 2;
    long x = 0;
    for (const char* name : {"Mon", "Tue", "Wed", "Thu", "Fri", "Sat", "Sun"}) {
        views_.push_back({.frame = {static_cast<double>(x), static_cast<double>(cellSize_), static_cast<double>(cellSize_),
                                    static_cast<double>(labelHeight)},
                          .title = name});
        x += cellSize_ - 1;
    }
}

void MonthModel::drawDays()
{
    const long total = totalDays();
    const long previous = month_ == 1 ? daysIn(year_ - 1, 12) : daysIn(year_, month_ - 1);
    const long leading = firstDayIsReadable() ? offsetDays() % 7 : 0;
    log_->push_back("dayOfWeek: " + std::to_string(offsetDays() - 1));
    for (long cell = 0; cell < 42; ++cell) {
        const long number = cell - leading + 1;
        const long x = cell % 7 * (cellSize_ - 1);
        const long y = cellSize_ + cellSize_ / 2 + cell / 7 * (cellSize_ - 1);
        if (number < 1)
            plotCell(x, y, previous + number, true);
        else if (number > total)
            plotCell(x, y, number - total, true);
        else
            plotCell(x, y, number, false);
    }
}

void MonthModel::goOneMonthForward()
{
    if (++month_ > 12) {
        month_ = 1;
        ++year_;
    }
}

void MonthModel::goOneMonthBack()
{
    if (--month_ < 1) {
        month_ = 12;
        --year_;
    }
}

void MonthModel::navigate(void (MonthModel::*step)())
{
    clearViews();
    (this->*step)();
    drawDays();
    drawHeader();
}

void MonthModel::plotCell(long x, long y, long day, bool isGrey)
{
    static long lastSerial = 0;
    views_.push_back({.frame = {static_cast<double>(x), static_cast<double>(y), static_cast<double>(cellSize_),
                                static_cast<double>(cellSize_)},
                      .title = std::to_string(day),
                      .serial = ++lastSerial,
                      .isGrey = isGrey,
                      .isToday = !isGrey && day == today_,
                      .day = day});
}

long MonthModel::totalDays() const
{
    return daysIn(year_, month_);
}

bool MonthModel::firstDayIsReadable() const
{
    return isShown({static_cast<int>(year_), static_cast<int>(month_), 1, 0, 0, 0});
}

/// The weekday of the 1st within the user's week, from 1 for its second day to 7 for its first; -1 when it cannot be read.
long MonthModel::offsetDays() const
{
    if (!firstDayIsReadable())
        return -1;
    const weekday first(year(static_cast<int>(year_)) / month(static_cast<unsigned>(month_)) / 1);
    const long place = (static_cast<long>(first.c_encoding()) - region_->firstWeekday + 7) % 7;
    return place == 0 ? 7 : place;
}

std::vector<std::size_t> MonthModel::buttonPlaces() const
{
    std::vector<std::size_t> places;
    for (std::size_t i = 0; i < views_.size(); ++i) {
        if (views_[i].serial != 0)
            places.push_back(i);
    }
    return places;
}

MonthModel::Button MonthModel::buttonAt(std::size_t place) const
{
    const View& view = views_.at(place);
    return {view.serial, view.isGrey ? 0 : view.day, !view.isGrey};
}

std::optional<MonthModel::Button> MonthModel::buttonUnder(double x, double y) const
{
    for (std::size_t i = views_.size(); i-- > 0;) {
        if (views_[i].serial != 0 && views_[i].frame.contains(x, y))
            return buttonAt(i);
    }
    return std::nullopt;
}

void MonthModel::select(const Button& button, std::vector<std::string>& heard)
{
    paint(button, "0,1,0,1");
    if (hears(delegate, "DayDelegate"))
        heard.push_back("selected " + std::to_string(button.tag));
    if (hears(delegate, "DateDelegate"))
        heard.push_back("selected " + quoted(std::to_string(year_) + twoDigits(month_) + twoDigits(button.tag)));
}

void MonthModel::deselect(const Button& button, std::vector<std::string>& heard)
{
    paint(button, "0,0,0,0");
    if (hears(delegate, "ReleaseDelegate"))
        heard.push_back("deselected " + std::to_string(button.tag));
}

void MonthModel::paint(const Button& button, const char* background)
{
    const auto view = std::ranges::find(views_, button.serial, &View::serial);
    if (view != views_.end())
        view->background = background;
}

std::string MonthModel::describe(const std::string& name) const
{
    std::string text = name + ": APLCalendar " + numbers({frame.x, frame.y, frame.width, frame.height}) +
                       (hidden ? " hidden" : "") + (touchable ? "" : " untouchable") + " alpha 1";
    const struct {
        const char* name;
        long value;
    } variables[] = {{"_day", day_},
                     {"_month", month_},
                     {"_year", year_},
                     {"_today", today_},
                     {"_cellSize", cellSize_},
                     {"_fontSize", fontSize_},
                     {"_titleTextSize", titleTextSize_},
                     {"_borderWidth", borderWidth_}};
    for (const auto& variable : variables)
        text += std::string(" ") + variable.name + ' ' + std::to_string(variable.value);
    text += " delegate " + delegate + " swipes 15\n";
    text += name + " title: UILabel " + numbers({titleFrame_.x, titleFrame_.y, titleFrame_.width, titleFrame_.height}) +
            " untouchable alpha 1 " + title_ + " Verdana-Bold " + std::to_string(titleTextSize_) +
            " scale 0 lines 1 alignment 1 " + grey(0.8, 0.8) + " on 0,0,0,0\n";
    for (std::size_t i = 0; i < views_.size(); ++i)
        text += name + ' ' + std::to_string(i) + ": " + describe(views_[i]) + '\n';
    return text;
}

std::string MonthModel::describe(const View& view) const
{
    const std::string place = numbers({view.frame.x, view.frame.y, view.frame.width, view.frame.height});
    const std::string size = ' ' + std::to_string(fontSize_) + ' ';
    if (view.serial == 0)
        return "UILabel " + place + " untouchable alpha 1 " + quoted(view.title) + " Verdana-Bold" + size +
               "scale 0 lines 1 alignment 1 " + grey(0.5, 1) + " on 0,0,0,0";

    struct Style {
        std::string title;
        std::string top;
        std::string bottom;
        std::string border;
        const char* font;
    };
    Style style{grey(0.3, 0.7), grey(0.8, 0.8), grey(0.8, 0.8), grey(0.1, 0.2), "Verdana"};
    if (view.isGrey)
        style = {grey(0.7, 0.8), grey(0.2, 0.1), grey(0.2, 0.1), grey(0.6, 0.1), "Verdana"};
    else if (view.isToday)
        style = {grey(0.9, 1), "0,0,0.6,0.5", "0.1,0.1,0.8,0.5", grey(0.1, 0.2), "Verdana-Bold"};
    return "UIButton " + place + " alpha 1" + (view.isGrey ? " disabled tag 0 " : " tag " + std::to_string(view.day) + ' ') +
           quoted(view.title) + ' ' + style.font + size + style.title + " on " + view.background + " border " +
           std::to_string(borderWidth_) + ' ' + style.border + " CAGradientLayer " +
           numbers({0, 0, static_cast<double>(cellSize_), static_cast<double>(cellSize_)}) + ' ' + style.top + ' ' + style.bottom;
}
