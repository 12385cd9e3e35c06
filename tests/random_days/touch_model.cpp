#include <cmath>

#include "tests/random_days/PhoneModel.hpp"
#include "tests/random_days/state_text.hpp"

/// What lies under the finger, and what the two calendars do.

PhoneModel::Target PhoneModel::targetIn(MonthModel& calendar, double x, double y)
{
    return {Target::Kind::calendar, &calendar, calendar.buttonUnder(x - calendar.frame.x, y - calendar.frame.y), 0, 0};
}

PhoneModel::Target PhoneModel::targetAt(double x, double y)
{
    if (spare_ != nullptr && spare_->touchable && spare_->frame.contains(x, y))
        return targetIn(*spare_, x, y);
    if (panel_ == nullptr || panel_->screenIsOff)
        return {};
    if (iconFrame(true).contains(x, y))
        return {.kind = Target::Kind::notificationIcon};
    if (iconFrame(false).contains(x, y))
        return {.kind = Target::Kind::calendarIcon};

    const Rect pane{0, 130, static_cast<double>(screen_.width), screen_.height - 130.0};
    if (panel_->calendarPaneIsHidden || !pane.contains(x, y))
        return {};
    x -= pane.x;
    y -= pane.y;
    if (!panel_->widget.contains(x, y))
        return {};
    x -= panel_->widget.x;
    y -= panel_->widget.y;
    for (const Card& card : panel_->cards) {
        if (!card.hidden && card.frame.contains(x, y))
            return {};
    }
    MonthModel& month = *panel_->month;
    return month.touchable && !month.hidden && month.frame.contains(x, y) ? targetIn(month, x, y) : Target{};
}

void PhoneModel::fingerDown(double x, double y)
{
    fingerUp(false);
    finger_ = targetAt(x, y);
    finger_.x = x;
    finger_.y = y;
    fingerIsDown_ = true;
    if (finger_.button && finger_.button->enabled)
        finger_.calendar->select(*finger_.button, heard_);
}

/// A finger that has moved too far taps no icon; a day is released wherever the finger is lifted.
void PhoneModel::fingerUp(bool moved)
{
    if (!fingerIsDown_)
        return;
    fingerIsDown_ = false;
    if (finger_.kind == Target::Kind::calendarIcon && !moved)
        openCalendar();
    else if (finger_.kind == Target::Kind::notificationIcon && !moved)
        openNotifications();
    else if (finger_.button && finger_.button->enabled)
        finger_.calendar->deselect(*finger_.button, heard_);
}

void PhoneModel::tap(double x, double y, int times)
{
    command("tap " + numbers({x, y}) + ' ' + std::to_string(times));
    for (int i = 0; i < times; ++i) {
        fingerDown(x, y);
        const bool isOnIcon = finger_.kind == Target::Kind::calendarIcon || finger_.kind == Target::Kind::notificationIcon;
        // The second of two taps is a double tap, and no single one.
        if (i == 1 && isOnIcon) {
            fingerIsDown_ = false;
            closePanes();
        } else {
            fingerUp(false);
        }
    }
}

void PhoneModel::tapIcon(bool notification, int times)
{
    if (panel_ == nullptr)
        return;
    const Rect icon = iconFrame(notification);
    tap(icon.x + icon.width / 2, icon.y + icon.height / 2, times);
}

void PhoneModel::press(double x, double y)
{
    command("press " + numbers({x, y}));
    fingerDown(x, y);
}

void PhoneModel::release()
{
    command("release");
    fingerUp(false);
}

void PhoneModel::releaseAt(double x, double y)
{
    constexpr double farthestTap = 45;
    command("release " + numbers({x, y}));
    fingerUp(std::hypot(x - finger_.x, y - finger_.y) > farthestTap);
}

/// The stroke is taken from the day that it begins on, which stays selected.
void PhoneModel::swipe(double x, double y, const std::string& direction)
{
    command("swipe " + numbers({x, y}) + ' ' + direction);
    fingerDown(x, y);
    if (finger_.kind == Target::Kind::calendar)
        log_.emplace_back("Swipe!");
    fingerIsDown_ = false;
}

MonthModel* PhoneModel::calendar(Which which)
{
    if (which == Which::spare)
        return spare_.get();
    return panel_ == nullptr ? nullptr : panel_->month.get();
}

const char* PhoneModel::pathOf(Which which)
{
    return which == Which::spare ? "spare" : "widgetView.cal";
}

void PhoneModel::makeSpare(int side, bool plain, int x, int y)
{
    dropSpare();
    command("let spare send APLCalendar alloc");
    command(plain ? "let spare send spare init"
                  : "let spare send spare initWithFrame: " + numbers({0, 0, 1.0 * side, 1.0 * side}));
    command("add spare " + numbers({1.0 * x, 1.0 * y}));
    const double length = plain ? 320 : side;
    spare_ = std::make_unique<MonthModel>(region_, now_, Rect{0, 0, length, length}, log_);
    spare_->frame.x = x;
    spare_->frame.y = y;
}

void PhoneModel::dropSpare()
{
    // No button outlives its calendar under the finger.
    release();
    message("spare removeFromSuperview");
    command("let spare Probe.nothing");
    spare_.reset();
}

void PhoneModel::sendToCalendar(Which which, const std::string& calendarMessage)
{
    MonthModel* const month = calendar(which);
    constexpr std::size_t mostViews = 150;
    if (month == nullptr || (calendarMessage.starts_with("draw") && month->viewCount() > mostViews))
        return;
    message(std::string(pathOf(which)) + ' ' + calendarMessage);
    const struct {
        const char* message;
        void (MonthModel::*step)();
        bool redraws;
    } steps[] = {{"nextMonth", &MonthModel::goOneMonthForward, true},
                 {"prevMonth", &MonthModel::goOneMonthBack, true},
                 {"nextYear", &MonthModel::goOneYearForward, true},
                 {"prevYear", &MonthModel::goOneYearBack, true},
                 {"goOneMonthForward", &MonthModel::goOneMonthForward, false},
                 {"goOneMonthBack", &MonthModel::goOneMonthBack, false},
                 {"goOneYearForward", &MonthModel::goOneYearForward, false},
                 {"goOneYearBack", &MonthModel::goOneYearBack, false},
                 {"drawHeader", &MonthModel::drawHeader, false},
                 {"drawDays", &MonthModel::drawDays, false},
                 {"clearViews", &MonthModel::clearViews, false}};
    for (const auto& step : steps) {
        if (calendarMessage != step.message)
            continue;
        if (step.redraws)
            month->navigate(step.step);
        else
            (month->*step.step)();
    }
}

void PhoneModel::plotCell(Which which, long x, long y, long day, bool isGrey)
{
    MonthModel* const month = calendar(which);
    if (month == nullptr)
        return;
    message(std::string(pathOf(which)) + " plotCellAtX:Y:Day:isGreyDay: " + std::to_string(x) + ' ' + std::to_string(y) + ' ' +
            std::to_string(day) + (isGrey ? " YES" : " NO"));
    month->plotCell(x, y, day, isGrey);
}

void PhoneModel::selectDay(Which which, std::size_t index, bool releases)
{
    MonthModel* const month = calendar(which);
    if (month == nullptr || month->buttonPlaces().empty())
        return;
    const auto places = month->buttonPlaces();
    const std::size_t place = places[index % places.size()];
    const std::string path = pathOf(which);
    message(path + (releases ? " deselectDay: @" : " selectDay: @") + path + ".subviews[" + std::to_string(place) + ']');
    if (releases)
        month->deselect(month->buttonAt(place), heard_);
    else
        month->select(month->buttonAt(place), heard_);
}

void PhoneModel::setTouchable(Which which, bool touchable)
{
    MonthModel* const month = calendar(which);
    if (month == nullptr)
        return;
    message(std::string(pathOf(which)) + " setUserInteractionEnabled: " + (touchable ? "YES" : "NO"));
    month->touchable = touchable;
}

void PhoneModel::setDelegate(Which which, const std::string& className)
{
    MonthModel* const month = calendar(which);
    if (month == nullptr)
        return;
    dropDelegate();
    command("let delegate send " + className + " new");
    message(std::string(pathOf(which)) + " setDelegate: @delegate");
    month->delegate = className;
}

/// The calendars do not keep it.
void PhoneModel::dropDelegate()
{
    command("let delegate Probe.nothing");
    for (const Which which : {Which::widgets, Which::spare}) {
        MonthModel* const month = calendar(which);
        if (month != nullptr && month->delegate != "SVWidget")
            month->delegate = "none";
    }
}
