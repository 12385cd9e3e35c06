#include "tests/transcripts/month_tables.hpp"

#include "tests/transcripts/text_tables.hpp"

namespace tables {

namespace {

std::string text(long number)
{
    return std::to_string(number);
}

/// A date parsed from a text by a formatter that is made for it.
Rows parsing(const std::string& pattern, const std::string& result, const std::string& date)
{
    return format(pattern, result) + Rows{"[NSDateFormatter alloc] init = parser", "parser setDateFormat: 'dd-MM-yyyy'",
                                          "parser dateFromString: " + quoted(result) + " = " + date};
}

std::string white(const std::string& amount, const std::string& alpha)
{
    return "UIColor colorWithWhite: " + amount + " alpha: " + alpha;
}

Month before(Month month)
{
    month.length = month.lengthBefore;
    if (--month.month < 1) {
        month.month = 12;
        --month.year;
    }
    return month;
}

} // namespace

Rows monthLength(const Month& month)
{
    const std::string date = text(month.day) + '-' + text(month.month) + '-' + text(month.year);
    return parsing("%li-%li-%li", date, "date") +
           Rows{"NSCalendar currentCalendar = gregorian", "gregorian rangeOfUnit: 16 inUnit: 8 forDate: date"};
}

Rows weekdayOfTheFirst(const Month& month)
{
    return parsing("%i-%li-%li", "1-" + text(month.month) + '-' + text(month.year), "first") +
           Rows{"[NSDateFormatter alloc] init = formatter", "formatter setFormatterBehavior: 1040",
                "formatter setDateFormat: 'e'", "formatter stringFromDate: first", quoted(text(month.weekday)) + " intValue"};
}

Rows monthHeader(const Month& month)
{
    const std::string cell = text(month.cell);
    Rows rows{"calendar frame",
              "[UILabel alloc] initWithFrame: (" + cell + " 0 " + number(month.width - 2.0 * static_cast<double>(month.cell)) +
                  ' ' + cell + ") = title",
              "UIFont fontWithName: 'Verdana-Bold' size: " + text(month.title) + " = titleFont", "title setFont: titleFont",
              "title setTextAlignment: 1"};
    const std::string numbers = text(month.month) + ' ' + text(month.year);
    const std::string name = quoted(month.name + ' ' + text(month.year));
    rows = rows + format("%li %li", numbers) +
           Rows{"[NSDateFormatter alloc] init = formatter",
                "formatter setDateFormat: 'MM yyyy'",
                "formatter dateFromString: " + quoted(numbers) + " = date",
                "formatter setDateFormat: 'MMMM yyyy'",
                "formatter stringFromDate: date",
                "title setText: " + name,
                white("0.8", "0.8") + " = light",
                "title setTextColor: light",
                "UIColor clearColor = clear",
                "title setBackgroundColor: clear"};
    long x = 0;
    for (const char* name : {"Mon", "Tue", "Wed", "Thu", "Fri", "Sat", "Sun"}) {
        rows = rows + Rows{"[UILabel alloc] initWithFrame: (" + text(x) + ' ' + cell + ' ' + cell + ' ' + text(month.cell / 2) +
                               ") = label",
                           "label setText: " + quoted(name),
                           "UIFont fontWithName: 'Verdana-Bold' size: " + text(month.font) + " = labelFont",
                           "label setFont: labelFont",
                           "label setTextAlignment: 1",
                           "UIColor grayColor = grey",
                           "label setTextColor: grey",
                           "UIColor clearColor = clear",
                           "label setBackgroundColor: clear",
                           "calendar addSubview: label"};
        x += month.cell - 1;
    }
    return rows;
}

Rows dayCell(const Month& month, long x, long y, long day, bool isGrey)
{
    struct Style {
        std::string ink;
        std::string top;
        std::string bottom;
        std::string edge;
        std::string font;
    };
    const Style grey{white("0.7", "0.8"), white("0.2", "0.1"), white("0.2", "0.1"), white("0.6", "0.1"), "Verdana"};
    const Style ordinary{white("0.3", "0.7"), white("0.8", "0.8"), white("0.8", "0.8"), white("0.1", "0.2"), "Verdana"};
    const Style today{white("0.9", "1"), "UIColor colorWithRed: 0 green: 0 blue: 0.6 alpha: 0.5",
                      "UIColor colorWithRed: 0.1 green: 0.1 blue: 0.8 alpha: 0.5", white("0.1", "0.2"), "Verdana-Bold"};
    const Style& style = isGrey ? grey : day == month.today ? today : ordinary;

    const std::string cell = text(month.cell);
    const auto fontNamed = [&](const std::string& name) {
        return Rows{"button titleLabel = title",
                    "UIFont fontWithName: " + quoted(name) + " size: " + text(month.font) + " = font", "title setFont: font"};
    };
    // Each day begins as an ordinary one.
    Rows rows = Rows{"UIButton buttonWithType: 0 = button",
                     "button setFrame: (" + text(x) + ' ' + text(y) + ' ' + cell + ' ' + cell + ')',
                     ordinary.top + " = top",
                     ordinary.bottom + " = bottom",
                     "CAGradientLayer layer = gradient",
                     ordinary.ink + " = ink",
                     "button setTitleColor: ink forState: 0"} +
                fontNamed(ordinary.font) + format("%li", text(day)) +
                Rows{"button setTitle: " + quoted(text(day)) + " forState: 0"};
    if (isGrey) {
        rows.push_back("button setEnabled: NO");
    } else {
        rows = rows + Rows{"button setEnabled: YES", "button setTag: " + text(day),
                           "button addTarget: calendar action: selectDay: forControlEvents: 1",
                           "button addTarget: calendar action: deselectDay: forControlEvents: 64",
                           "button addTarget: calendar action: deselectDay: forControlEvents: 128"};
    }
    rows = rows + Rows{style.ink + " = ink",    "button setTitleColor: ink forState: 0",
                       style.top + " = top",    style.bottom + " = bottom",
                       "button layer = layer",  style.edge + " = edge",
                       "edge CGColor = border", "layer setBorderColor: border"};
    return rows + fontNamed(style.font) +
           Rows{"gradient setFrame: (0 0 " + cell + ' ' + cell + ')',
                "top CGColor = first",
                "bottom CGColor = second",
                "NSArray arrayWithObjects: {first second} count: 2 = colours",
                "gradient setColors: colours",
                "button layer = layer",
                "layer insertSublayer: gradient atIndex: 0",
                "button layer = layer",
                "layer setBorderWidth: " + text(month.border),
                "calendar addSubview: button"};
}

Rows monthGrid(const Month& month)
{
    const long offset = month.weekday == 1 ? 7 : month.weekday - 1;
    const long d = offset - 1;
    Rows rows = Rows{"calendar getTotalDaysInCurrentMonth"} + monthLength(month) + Rows{"calendar getOffsetDays"} +
                weekdayOfTheFirst(month) + Rows{"calendar goOneMonthBack", "calendar getTotalDaysInCurrentMonth"} +
                monthLength(before(month)) + Rows{"calendar goOneMonthForward", "NSLog 'dayOfWeek: " + text(d) + '\''};
    // The last of the month before, as many as stand before the 1st.
    long leading = offset % 7;
    long number = 1;
    bool isTrailing = false;
    for (long row = 0; row < 6; ++row) {
        for (long column = 0; column < 7; ++column) {
            const bool isLeading = leading > 0;
            if (!isLeading && number > month.length) {
                number = 1;
                isTrailing = true;
            }
            const long day = isLeading ? month.lengthBefore - --leading : number++;
            const long x = column * (month.cell - 1);
            const long y = month.cell + month.cell / 2 + row * (month.cell - 1);
            const bool isGrey = isLeading || isTrailing;
            rows = rows +
                   Rows{"calendar plotCellAtX: " + text(x) + " Y: " + text(y) + " Day: " + text(day) +
                        " isGreyDay: " + (isGrey ? "YES" : "NO")} +
                   dayCell(month, x, y, day, isGrey);
        }
    }
    return rows;
}

Rows calendarConstruction(const Month& month, const std::string& frame)
{
    return Rows{"calendar super initWithFrame: " + frame,
                "NSDate date = now",
                "NSCalendar currentCalendar = gregorian",
                "gregorian components: 28 fromDate: now = components",
                "components day",
                "components day",
                "components month",
                "components year",
                "calendar frame",
                "[UISwipeGestureRecognizer alloc] initWithTarget: calendar action: swipePerformed: = swipe",
                "swipe setDirection: 15",
                "calendar addGestureRecognizer: swipe",
                "calendar drawHeader"} +
           monthHeader(month) + Rows{"calendar drawDays"} + monthGrid(month);
}

// The widget

Rows calendarLoading(const Month& month)
{
    return Rows{"[APLCalendar alloc] init = calendar", "calendar initWithFrame: (0 0 320 320)"} +
           calendarConstruction(month, "(0 0 320 320)") +
           Rows{"calendar setUserInteractionEnabled: NO", "calendar setDelegate: widget", "calendar setHidden: YES",
                "widget addSubview: calendar"};
}

Rows widgetConstruction(const Month& month, const std::string& frame)
{
    return Rows{"widget super initWithFrame: " + frame, "widget loadCalendar"} + calendarLoading(month);
}

} // namespace tables
