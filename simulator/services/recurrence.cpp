#include "simulator/services/recurrence.hpp"

#include <algorithm>
#include <span>
#include <vector>

#include "simulator/services/day_numbers.hpp"
#include "simulator/services/rule_lists.hpp"

namespace simulator {

namespace {

/// A rule is a sequence of periods: every third year, every minute. Each has a set of days, and each day a set of times.
class Rule {
public:
    Rule(const icalrecurrencetype& rule, WallTime start)
        : frequency_(rule.freq), interval_(std::max<std::int64_t>(1, rule.interval)), start_(start),
          weekStart_(std::max(0, static_cast<int>(rule.week_start) - 1)), months_(listed(rule.by_month)),
          weeks_(listed(rule.by_week_no)), yearDays_(listed(rule.by_year_day)), monthDays_(listed(rule.by_month_day)),
          hours_(shownByClocks(rule.by_hour, 23)), minutes_(shownByClocks(rule.by_minute, 59)),
          seconds_(shownByClocks(rule.by_second, 60)), positions_(listed(rule.by_set_pos))
    {
        // Only days of a month or of a year are counted.
        const bool countsWeekdays =
            frequency_ == ICAL_MONTHLY_RECURRENCE || (frequency_ == ICAL_YEARLY_RECURRENCE && weeks_.empty());
        for (const int encoded : listed(rule.by_day)) {
            const auto code = static_cast<short>(encoded);
            weekdays_.push_back({static_cast<int>(icalrecurrencetype_day_day_of_week(code)) - 1,
                                 countsWeekdays ? icalrecurrencetype_day_position(code) : 0});
        }
        takeFromStart();
    }

    /// The number of the period that holds a time.
    std::int64_t periodOf(WallTime time) const
    {
        switch (frequency_) {
        case ICAL_YEARLY_RECURRENCE:
            return floorDivided(monthOf(dayOf(time)), 12);
        case ICAL_MONTHLY_RECURRENCE:
            return monthOf(dayOf(time));
        case ICAL_WEEKLY_RECURRENCE:
            return floorDivided(firstOfWeek(dayOf(time), weekStart_), 7);
        default:
            return floorDivided(time, unit());
        }
    }

    std::int64_t interval() const { return interval_; }

    WallTime beginningOf(std::int64_t period) const
    {
        switch (frequency_) {
        case ICAL_YEARLY_RECURRENCE:
            return firstOfYear(period) * secondsPerDay;
        case ICAL_MONTHLY_RECURRENCE:
            return firstOfMonth(period) * secondsPerDay;
        case ICAL_WEEKLY_RECURRENCE:
            // Weeks are numbered by the seven days since 1970-01-01 in which they begin.
            return firstOfWeek(period * 7 + 6, weekStart_) * secondsPerDay;
        default:
            return period * unit();
        }
    }

    /// Before which no later period has an instance, if the one that begins at a time has none.
    WallTime nextPossible(WallTime time) const
    {
        if (isWholeDays())
            return time;
        const WallTime withinDay = time - dayOf(time) * secondsPerDay;
        if (!hasDay(dayOf(time)))
            return (dayOf(time) + 1) * secondsPerDay;
        if (!allows(hours_, static_cast<int>(withinDay / secondsPerHour)))
            return floorDivided(time, secondsPerHour) * secondsPerHour + secondsPerHour;
        if (unit() <= secondsPerMinute && !allows(minutes_, static_cast<int>(withinDay / secondsPerMinute % 60)))
            return floorDivided(time, secondsPerMinute) * secondsPerMinute + secondsPerMinute;
        return time;
    }

    /// Visits the instances of one period, in their order.
    template <class Visit>
    void visitPeriod(std::int64_t period, Allowance& allowance, Visit visit)
    {
        const WallTime first = beginningOf(period);
        const WallTime end = beginningOf(period + 1);
        if (!isWholeDays())
            return visitSet(std::vector<Day>{0}, timesWithin(first, end, allowance), allowance, visit);
        std::vector<Day> found;
        for (Day day = dayOf(first); day < dayOf(end) && allowance.take(); ++day) {
            if (!months_.empty() && !allows(months_, static_cast<int>(unsigned{dateOf(day).month()}))) {
                day = firstOfMonth(monthOf(day) + 1) - 1;
                continue;
            }
            if (hasDay(day))
                found.push_back(day);
        }
        visitSet(found, timesOfDay(allowance), allowance, visit);
    }

private:
    /// What a rule does not say it has from its start.
    void takeFromStart()
    {
        const Day day = dayOf(start_);
        const auto date = dateOf(day);
        const bool saysDays = !weekdays_.empty() || !monthDays_.empty() || !yearDays_.empty();
        if (frequency_ == ICAL_WEEKLY_RECURRENCE || !weeks_.empty()) {
            if (!saysDays)
                weekdays_.push_back({weekdayOf(day), 0});
        } else if (frequency_ == ICAL_YEARLY_RECURRENCE || frequency_ == ICAL_MONTHLY_RECURRENCE) {
            if (!saysDays)
                monthDays_.push_back(static_cast<int>(unsigned{date.day()}));
            if (!saysDays && months_.empty() && frequency_ == ICAL_YEARLY_RECURRENCE)
                months_.push_back(static_cast<int>(unsigned{date.month()}));
        }
        const WallTime withinDay = start_ - day * secondsPerDay;
        if (unit() > secondsPerHour)
            hours_ = orElse(std::move(hours_), withinDay / secondsPerHour);
        if (unit() > secondsPerMinute)
            minutes_ = orElse(std::move(minutes_), withinDay / secondsPerMinute % 60);
        if (unit() > 1)
            seconds_ = orElse(std::move(seconds_), withinDay % 60);
    }

    bool isWholeDays() const { return unit() == secondsPerDay; }

    std::int64_t unit() const
    {
        switch (frequency_) {
        case ICAL_SECONDLY_RECURRENCE:
            return 1;
        case ICAL_MINUTELY_RECURRENCE:
            return secondsPerMinute;
        case ICAL_HOURLY_RECURRENCE:
            return secondsPerHour;
        default:
            return secondsPerDay;
        }
    }

    bool hasDay(Day day) const
    {
        const auto date = dateOf(day);
        const auto year = int{date.year()};
        const std::int64_t month = monthOf(day);
        return allows(months_, static_cast<int>(unsigned{date.month()})) &&
               allows(monthDays_, placeIn(day, firstOfMonth(month), firstOfMonth(month + 1))) &&
               allows(yearDays_, placeIn(day, firstOfYear(year), firstOfYear(year + 1))) &&
               (weeks_.empty() || allows(weeks_, weekPlace(day, weekStart_))) && hasWeekday(day, year, month);
    }

    bool hasWeekday(Day day, int year, std::int64_t month) const
    {
        const bool countsInYear = frequency_ == ICAL_YEARLY_RECURRENCE && months_.empty();
        const Place place = countsInYear ? placeIn(day, firstOfYear(year), firstOfYear(year + 1), 7)
                                         : placeIn(day, firstOfMonth(month), firstOfMonth(month + 1), 7);
        return weekdays_.empty() || std::ranges::any_of(weekdays_, [&](const Weekday& weekday) {
                   return weekday.day == weekdayOf(day) && (weekday.place == 0 || place.is(weekday.place));
               });
    }

    /// The times of every day, made once.
    const std::vector<WallTime>& timesOfDay(Allowance& allowance)
    {
        if (times_.empty()) {
            for (const int hour : hours_)
                addTimes(hour * secondsPerHour, times_, allowance);
        }
        return times_;
    }

    /// The times of a period that is shorter than a day.
    std::vector<WallTime> timesWithin(WallTime first, WallTime end, Allowance& allowance) const
    {
        std::vector<WallTime> times;
        if (nextPossible(first) != first)
            return times;
        const auto secondInMinute = static_cast<int>(first - floorDivided(first, secondsPerMinute) * secondsPerMinute);
        if (unit() == secondsPerHour)
            addTimes(first, times, allowance);
        else if (unit() == secondsPerMinute)
            addSeconds(first, times, allowance);
        else if (allows(seconds_, secondInMinute) && end > first)
            times.push_back(first);
        return times;
    }

    void addTimes(WallTime hour, std::vector<WallTime>& times, Allowance& allowance) const
    {
        for (const int minute : minutes_)
            addSeconds(hour + minute * secondsPerMinute, times, allowance);
    }
    void addSeconds(WallTime minute, std::vector<WallTime>& times, Allowance& allowance) const
    {
        for (const int second : seconds_) {
            // A leap second is the one before it.
            if (allowance.take() && (second < 60 || times.empty() || times.back() != minute + 59))
                times.push_back(minute + std::min(second, 59));
        }
    }

    /// The instances of a period are each of the days at each of the times, or those at certain positions among them.
    template <class Visit>
    void visitSet(const std::vector<Day>& found, const std::vector<WallTime>& times, Allowance& allowance, Visit visit) const
    {
        const auto count = static_cast<std::int64_t>(found.size() * times.size());
        const auto instance = [&](std::int64_t index) {
            const auto perDay = static_cast<std::int64_t>(times.size());
            return found[static_cast<std::size_t>(index / perDay)] * secondsPerDay +
                   times[static_cast<std::size_t>(index % perDay)];
        };
        if (positions_.empty()) {
            for (std::int64_t i = 0; i < count && allowance.take(); ++i) {
                if (!visit(instance(i)))
                    return;
            }
            return;
        }
        std::vector<std::int64_t> chosen;
        for (const int position : positions_) {
            const std::int64_t index = position > 0 ? position - 1 : count + position;
            if (index >= 0 && index < count)
                chosen.push_back(index);
        }
        std::ranges::sort(chosen);
        const auto repeated = std::ranges::unique(chosen);
        chosen.erase(repeated.begin(), repeated.end());
        for (const std::int64_t index : chosen) {
            if (!allowance.take() || !visit(instance(index)))
                return;
        }
    }

    struct Weekday {
        /// Sunday is 0.
        int day;
        /// 0 for each of them.
        int place;
    };

    icalrecurrencetype_frequency frequency_;
    std::int64_t interval_;
    WallTime start_;
    int weekStart_;
    std::vector<int> months_;
    std::vector<int> weeks_;
    std::vector<int> yearDays_;
    std::vector<int> monthDays_;
    std::vector<Weekday> weekdays_;
    std::vector<int> hours_;
    std::vector<int> minutes_;
    std::vector<int> seconds_;
    std::vector<int> positions_;
    std::vector<WallTime> times_;
};

} // namespace

void followRule(const icalrecurrencetype& rule, WallTime start, std::optional<WallTime> until, Span span, Allowance& allowance,
                const std::function<bool(WallTime)>& visit)
{
    const WallTime end = until ? std::min(span.to, *until + 1) : span.to;
    Rule periods(rule, start);
    std::int64_t left = rule.count > 0 ? rule.count : -1;
    bool goesOn = true;
    const auto meet = [&](WallTime instance) {
        if (left == 0 || instance >= end)
            goesOn = false;
        else if (left > 0)
            --left;
        if (goesOn && instance >= span.from)
            goesOn = visit(instance);
        return goesOn;
    };
    if (!meet(start))
        return;

    const std::int64_t first = periods.periodOf(start);
    const std::int64_t interval = periods.interval();
    /// The first of the rule's periods that ends after a time.
    const auto reaching = [&](WallTime time) {
        const std::int64_t period = periods.periodOf(time);
        return period <= first ? first : first + (period - first + interval - 1) / interval * interval;
    };
    std::int64_t period = rule.count > 0 ? first : reaching(span.from);
    while (goesOn && periods.beginningOf(period) < end && allowance.take()) {
        const WallTime beginning = periods.beginningOf(period);
        const WallTime possible = periods.nextPossible(beginning);
        if (possible > beginning) {
            period = std::max(period + interval, reaching(possible));
            continue;
        }
        periods.visitPeriod(period, allowance, [&](WallTime instance) { return instance <= start || meet(instance); });
        period += interval;
    }
}

} // namespace simulator
