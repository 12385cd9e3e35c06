#pragma once

#include <optional>
#include <string>
#include <vector>

#include "tests/random_days/LocalTime.hpp"
#include "tests/random_days/region.hpp"

struct Rect {
    double x;
    double y;
    double width;
    double height;

    bool contains(double px, double py) const { return px >= x && px < x + width && py >= y && py < y + height; }
};

/// What a month calendar should be: its variables, its views, and what its delegate hears.
class MonthModel {
public:
    MonthModel(const Region& region, const LocalTime& now, Rect frame, std::vector<std::string>& log);

    void drawHeader();
    void drawDays();
    void clearViews() { views_.clear(); }
    void goOneMonthForward();
    void goOneMonthBack();
    void goOneYearForward() { ++year_; }
    void goOneYearBack() { --year_; }
    /// clearViews, the step, drawDays, drawHeader.
    void navigate(void (MonthModel::*step)());
    void plotCell(long x, long y, long day, bool isGrey);

    long totalDays() const;
    long offsetDays() const;

    /// A day button, by which it is known even when it is no longer shown.
    struct Button {
        long serial;
        long tag;
        bool enabled;
    };
    std::size_t viewCount() const { return views_.size(); }
    /// The places of the buttons among the subviews.
    std::vector<std::size_t> buttonPlaces() const;
    Button buttonAt(std::size_t place) const;
    /// The button under a point in the calendar's own coordinates; none when there is none.
    std::optional<Button> buttonUnder(double x, double y) const;

    void select(const Button& button, std::vector<std::string>& heard);
    void deselect(const Button& button, std::vector<std::string>& heard);

    /// The lines of a state, each behind the name.
    std::string describe(const std::string& name) const;

    Rect frame;
    bool hidden = false;
    bool touchable = true;
    /// The class of the delegate, or "none".
    std::string delegate = "none";

private:
    struct View {
        Rect frame;
        std::string title;
        /// 0 for a weekday label.
        long serial = 0;
        bool isGrey = false;
        bool isToday = false;
        long day = 0;
        std::string background = "none";
    };

    /// Whether the clock shows the midnight with which the month begins. Where it does not, the 1st is no date that can be read.
    bool firstDayIsReadable() const;
    void paint(const Button& button, const char* background);
    std::string describe(const View& view) const;

    const Region* region_;
    std::vector<std::string>* log_;
    long day_;
    long month_;
    long year_;
    long today_;
    long cellSize_;
    long fontSize_;
    long titleTextSize_;
    long borderWidth_;
    /// None for a month whose 1st cannot be read.
    std::string title_;
    Rect titleFrame_{};
    std::vector<View> views_;
};
