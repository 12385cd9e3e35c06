#include <cmath>
#include <gmock/gmock.h>

#include "platform/Substrate/MSHookMessageEx.hpp"
#include "platform/runtime/each.hpp"
#include "simulator/foundation/system_log.hpp"
#include "simulator/quartzcore/CGColor.hpp"
#include "simulator/runtime/SimulatedClass.hpp"
#include "tests/calendar/MonthCalendar.hpp"

/// The views that a month is made of.

namespace {

using simulator::Colour;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;

/// As exact as the platform's numbers are.
constexpr Colour rgb(CGFloat red, CGFloat green, CGFloat blue, CGFloat alpha)
{
    return {red, green, blue, alpha};
}

constexpr Colour white(CGFloat white, CGFloat alpha)
{
    return rgb(white, white, white, alpha);
}

constexpr Colour clear{};

/// How a day's cell looks and what it does.
struct Style {
    bool isEnabled;
    Colour title;
    Colour top;
    Colour bottom;
    Colour border;
    const char* font;
};

const Style grey{false, white(0.7, 0.8), white(0.2, 0.1), white(0.2, 0.1), white(0.6, 0.1), "Verdana"};
const Style ordinary{true, white(0.3, 0.7), white(0.8, 0.8), white(0.8, 0.8), white(0.1, 0.2), "Verdana"};
const Style today{true, white(0.9, 1), rgb(0, 0, 0.6, 0.5), rgb(0.1, 0.1, 0.8, 0.5), white(0.1, 0.2), "Verdana-Bold"};

enum class Kind { grey, ordinary, today };

const Style& styleFor(Kind kind)
{
    switch (kind) {
    case Kind::grey:
        return grey;
    case Kind::today:
        return today;
    default:
        return ordinary;
    }
}

struct Month {
    const char* name;
    const char* language;
    const char* day;
    /// In the notation of gridOf().
    std::vector<std::string> grid;
};

std::ostream& operator<<(std::ostream& stream, const Month& month)
{
    return stream << month.name;
}

const Month months[] = {
    {"March2014InGerman",
     "de_DE.UTF-8",
     "2014-03-15",
     {"(24) (25) (26) (27) (28) 1 2", "3 4 5 6 7 8 9", "10 11 12 13 14 [15] 16", "17 18 19 20 21 22 23", "24 25 26 27 28 29 30",
      "31 (1) (2) (3) (4) (5) (6)"}},
    {"March2014InEnglish",
     "en_US.UTF-8",
     "2014-03-15",
     {"(23) (24) (25) (26) (27) (28) 1", "2 3 4 5 6 7 8", "9 10 11 12 13 14 [15]", "16 17 18 19 20 21 22", "23 24 25 26 27 28 29",
      "30 31 (1) (2) (3) (4) (5)"}},
    {"June2015InGerman",
     "de_DE.UTF-8",
     "2015-06-15",
     {"1 2 3 4 5 6 7", "8 9 10 11 12 13 14", "[15] 16 17 18 19 20 21", "22 23 24 25 26 27 28", "29 30 (1) (2) (3) (4) (5)",
      "(6) (7) (8) (9) (10) (11) (12)"}},
    {"June2015InEnglish",
     "en_US.UTF-8",
     "2015-06-15",
     {"(31) 1 2 3 4 5 6", "7 8 9 10 11 12 13", "14 [15] 16 17 18 19 20", "21 22 23 24 25 26 27", "28 29 30 (1) (2) (3) (4)",
      "(5) (6) (7) (8) (9) (10) (11)"}},
    {"February2015InGerman",
     "de_DE.UTF-8",
     "2015-02-28",
     {"(26) (27) (28) (29) (30) (31) 1", "2 3 4 5 6 7 8", "9 10 11 12 13 14 15", "16 17 18 19 20 21 22",
      "23 24 25 26 27 [28] (1)", "(2) (3) (4) (5) (6) (7) (8)"}},
    {"February2015InEnglish",
     "en_US.UTF-8",
     "2015-02-28",
     {"1 2 3 4 5 6 7", "8 9 10 11 12 13 14", "15 16 17 18 19 20 21", "22 23 24 25 26 27 [28]", "(1) (2) (3) (4) (5) (6) (7)",
      "(8) (9) (10) (11) (12) (13) (14)"}},
    {"December2013InGerman",
     "de_DE.UTF-8",
     "2013-12-01",
     {"(25) (26) (27) (28) (29) (30) [1]", "2 3 4 5 6 7 8", "9 10 11 12 13 14 15", "16 17 18 19 20 21 22", "23 24 25 26 27 28 29",
      "30 31 (1) (2) (3) (4) (5)"}},
    {"December2013InEnglish",
     "en_US.UTF-8",
     "2013-12-01",
     {"[1] 2 3 4 5 6 7", "8 9 10 11 12 13 14", "15 16 17 18 19 20 21", "22 23 24 25 26 27 28", "29 30 31 (1) (2) (3) (4)",
      "(5) (6) (7) (8) (9) (10) (11)"}},
    {"December2014InGerman",
     "de_DE.UTF-8",
     "2014-12-31",
     {"1 2 3 4 5 6 7", "8 9 10 11 12 13 14", "15 16 17 18 19 20 21", "22 23 24 25 26 27 28", "29 30 [31] (1) (2) (3) (4)",
      "(5) (6) (7) (8) (9) (10) (11)"}},
    {"December2014InEnglish",
     "en_US.UTF-8",
     "2014-12-31",
     {"(30) 1 2 3 4 5 6", "7 8 9 10 11 12 13", "14 15 16 17 18 19 20", "21 22 23 24 25 26 27", "28 29 30 [31] (1) (2) (3)",
      "(4) (5) (6) (7) (8) (9) (10)"}},
};

/// A day as it is written in a grid.
struct Day {
    NSInteger number;
    Kind kind;
};

std::vector<Day> daysIn(const std::vector<std::string>& grid)
{
    std::vector<Day> days;
    for (const std::string& row : grid) {
        std::istringstream words(row);
        for (std::string word; words >> word;) {
            if (word[0] == '(')
                days.push_back({std::stoi(word.substr(1)), Kind::grey});
            else if (word[0] == '[')
                days.push_back({std::stoi(word.substr(1)), Kind::today});
            else
                days.push_back({std::stoi(word), Kind::ordinary});
        }
    }
    return days;
}

std::vector<std::string> actions(UIButton* button, UIView* target, NSUInteger event)
{
    std::vector<std::string> names;
    for (NSString* name : each<NSString>(send<"actionsForTarget:forControlEvent:", NSArray*>(button, target, event)))
        names.push_back(textOf(name));
    return names;
}

void expectNoActionsBut(UIButton* button, UIView* target, NSUInteger known)
{
    for (NSUInteger event = 1; event <= (NSUInteger{1} << 19); event <<= 1) {
        if ((event & known) == 0) {
            EXPECT_THAT(actions(button, target, event), IsEmpty()) << "event " << event;
        }
    }
}

CGFloat borderWidth(UIButton* button)
{
    return send<"borderWidth", CGFloat>(button->layer());
}

std::vector<Colour> gradientColours(CAGradientLayer* gradient)
{
    std::vector<Colour> colours;
    for (CGColorRef color : each<CGColor>(send<"colors", NSArray*>(gradient)))
        colours.push_back(simulator::colourOf(color));
    return colours;
}

void expectCell(UIButton* button, UIView* calendar, const Day& day, CGRect frame)
{
    const Style& style = styleFor(day.kind);
    EXPECT_EQ(classNameOf(button), "UIButton");
    EXPECT_EQ(button->frame(), frame);
    EXPECT_EQ(titleOf(button), std::to_string(day.number));
    EXPECT_EQ(button->isEnabled(), style.isEnabled);
    EXPECT_EQ(button->tag(), style.isEnabled ? day.number : 0);
    EXPECT_EQ(colourOf(send<"titleColorForState:", UIColor*>(button, UIControlStateNormal)), style.title);
    EXPECT_EQ(textOf(button->titleLabel()->font()->fontName()), style.font);
    EXPECT_EQ(button->titleLabel()->font()->pointSize(), 12);

    if (style.isEnabled) {
        EXPECT_THAT(actions(button, calendar, 1), ElementsAre("selectDay:"));
        EXPECT_THAT(actions(button, calendar, 64), ElementsAre("deselectDay:"));
        EXPECT_THAT(actions(button, calendar, 128), ElementsAre("deselectDay:"));
        expectNoActionsBut(button, calendar, 1 | 64 | 128);
    } else {
        expectNoActionsBut(button, calendar, 0);
    }

    CALayer* const layer = button->layer();
    EXPECT_EQ(borderWidth(button), 1);
    EXPECT_EQ(simulator::colourOf(send<"borderColor", CGColorRef>(layer)), style.border);
    ASSERT_EQ(layer->sublayers()->count(), 2U);
    auto* const gradient = layer->sublayers()->objectAtIndex<CAGradientLayer>(0);
    EXPECT_EQ(classNameOf(gradient), "CAGradientLayer");
    EXPECT_EQ(gradient->frame(), CGRect::make(0, 0, 45, 45));
    EXPECT_THAT(gradientColours(gradient), ElementsAre(style.top, style.bottom));
    EXPECT_EQ(layer->sublayers()->objectAtIndex(1), button->titleLabel()->layer());
}

std::vector<std::string> classesOf(const std::vector<UIView*>& views)
{
    std::vector<std::string> names;
    for (UIView* view : views)
        names.push_back(classNameOf(view));
    return names;
}

std::vector<std::string> labelsThenButtons()
{
    std::vector<std::string> names(7, "UILabel");
    names.insert(names.end(), 42, "UIButton");
    return names;
}

std::vector<std::string> buttonsThenLabels()
{
    std::vector<std::string> names(42, "UIButton");
    names.insert(names.end(), 7, "UILabel");
    return names;
}

UILabel* titleLabelOf(UIView* calendar)
{
    return variable<UILabel*>(calendar, "lblMonth");
}

std::vector<std::string> headings(UIView* calendar)
{
    std::vector<std::string> texts;
    for (UILabel* label : weekdayLabels(calendar))
        texts.push_back(textOf(label->text()));
    return texts;
}

} // namespace

// The grid

class MonthGrid : public testing::TestWithParam<Month> {
protected:
    MonthGrid() : phone_({.language = GetParam().language, .timeZone = "UTC"}), calendar_(newCalendarOn(GetParam().day)) {}

    void expectGrid() const
    {
        EXPECT_THAT(gridOf(calendar_), ElementsAreArray(GetParam().grid));
        const auto days = daysIn(GetParam().grid);
        const auto buttons = dayButtons(calendar_);
        ASSERT_EQ(days.size(), 42U);
        ASSERT_EQ(buttons.size(), 42U);
        for (std::size_t i = 0; i < buttons.size(); ++i) {
            SCOPED_TRACE("cell " + std::to_string(i));
            constexpr CGFloat columns[] = {0, 44, 88, 132, 176, 220, 264};
            constexpr CGFloat rows[] = {67, 111, 155, 199, 243, 287};
            expectCell(buttons[i], calendar_, days[i], CGRect::make(columns[i % 7], rows[i / 7], 45, 45));
        }
    }

    RegionalPhone phone_;
    Owned<UIView> calendar_;
};

TEST_P(MonthGrid, HasEveryCellInItsPlaceAndStyle)
{
    expectGrid();
}

TEST_P(MonthGrid, IsTheSameAfterNavigation)
{
    send<"nextMonth">(calendar_.get());
    send<"prevMonth">(calendar_.get());
    expectGrid();
}

INSTANTIATE_TEST_SUITE_P(Of, MonthGrid, testing::ValuesIn(months), [](const auto& info) { return info.param.name; });

using MonthGridToday = TestOn<GermanPhone>;

TEST_F(MonthGridToday, IsTheCreationsDayNumberInEveryMonth)
{
    const auto calendar = newCalendarOn("2014-03-15");
    for (int i = 0; i < 24; ++i) {
        const AutoreleasePool pool;
        send<"nextMonth">(calendar.get());
        EXPECT_EQ(textOf(buttonOfDay(calendar, 15)->titleLabel()->font()->fontName()), "Verdana-Bold") << shownMonth(calendar);
        int marked = 0;
        for (const Day& day : daysIn(gridOf(calendar)))
            marked += day.kind == Kind::today ? 1 : 0;
        EXPECT_EQ(marked, 1) << shownMonth(calendar);
    }
}

TEST_F(MonthGridToday, IsNoGreyDayOfThatNumber)
{
    // The 28th is in grey before 1 March, and the 5th after 31 March.
    EXPECT_EQ(gridOf(newCalendarOn("2014-03-28")).front(), "(24) (25) (26) (27) (28) 1 2");
    EXPECT_EQ(gridOf(newCalendarOn("2014-03-05")).back(), "31 (1) (2) (3) (4) (5) (6)");
}

TEST_F(MonthGridToday, IsMissingFromAMonthThatLacksTheDay)
{
    const auto calendar = newCalendarOn("2014-01-31");
    send<"nextMonth">(calendar.get());
    for (const Day& day : daysIn(gridOf(calendar)))
        EXPECT_NE(day.kind, Kind::today) << day.number;
}

using MonthGrid42 = TestOn<GermanPhone>;

TEST_F(MonthGrid42, FollowsTheSizesOfTheCalendar)
{
    setClock("2014-03-15T12:00:00");
    const auto calendar =
        adopt(send<"alloc", UIView*>(objc_getClass("APLCalendar"))->initWithFrame(CGRect::make(0, 0, 280, 280)));
    const auto buttons = dayButtons(calendar);
    ASSERT_EQ(buttons.size(), 42U);
    EXPECT_EQ(buttons.front()->frame(), CGRect::make(0, 60, 40, 40));
    EXPECT_EQ(buttons.back()->frame(), CGRect::make(6 * 39, 60 + 5 * 39, 40, 40));
    EXPECT_EQ(borderWidth(buttons.front()), 0);
    EXPECT_EQ(buttons.front()->titleLabel()->font()->pointSize(), 11);
    EXPECT_EQ(weekdayLabels(calendar).back()->frame(), CGRect::make(6 * 39, 40, 40, 20));
    EXPECT_EQ(titleLabelOf(calendar)->frame(), CGRect::make(40, 0, 200, 40));
}

TEST_F(MonthGrid42, HalvesAnOddCellToAWholePoint)
{
    const auto calendar =
        adopt(send<"alloc", UIView*>(objc_getClass("APLCalendar"))->initWithFrame(CGRect::make(0, 0, 301, 301)));
    EXPECT_EQ(weekdayLabels(calendar).front()->frame(), CGRect::make(0, 43, 43, 21));
    EXPECT_EQ(dayButtons(calendar).front()->frame(), CGRect::make(0, 64, 43, 43));
}

TEST_F(MonthGrid42, ReachesBelowTheViewAndIsNotClipped)
{
    const auto calendar = newCalendarOn("2014-03-15");
    const CGRect last = dayButtons(calendar).back()->frame();
    EXPECT_EQ(last.origin.y + last.size.height, 332);
    EXPECT_EQ(calendar->frame().size.height, 320);
    EXPECT_EQ((send<"clipsToBounds", BOOL>(calendar.get())), NO);
}

TEST_F(MonthGrid42, LogsTheNumberOfLeadingDays)
{
    const auto logged = [](const char* day) {
        const auto calendar = newCalendarOn(day);
        return simulator::takeSystemLog();
    };
    simulator::takeSystemLog();
    EXPECT_THAT(logged("2014-03-15"), ElementsAre("dayOfWeek: 4"));
    EXPECT_THAT(logged("2015-06-15"), ElementsAre("dayOfWeek: 6"));
    EXPECT_THAT(logged("2015-02-15"), ElementsAre("dayOfWeek: 5"));
    EXPECT_THAT(logged("2014-07-15"), ElementsAre("dayOfWeek: 0"));
}

TEST_F(MonthGrid42, LogsMinusTwoWhenTheWeekdayCannotBeRead)
{
    const auto calendar = newCalendarOn("2014-03-15");
    method_setImplementation(class_getInstanceMethod(objc_getClass("APLCalendar"), selector<"getOffsetDays">()),
                             reinterpret_cast<IMP>(+[](id, SEL) -> NSInteger { return -1; }));
    simulator::takeSystemLog();
    send<"drawDays">(calendar.get());
    EXPECT_THAT(simulator::takeSystemLog(), ElementsAre("dayOfWeek: -2"));
}

// The order of the views

TEST(MonthViews, AreTheLabelsAndThenTheButtonsInANewCalendar)
{
    const RegionalPhone phone;
    EXPECT_EQ(classesOf(subviewsOf(newCalendar())), labelsThenButtons());
}

TEST(MonthViews, AreTheButtonsAndThenTheLabelsAfterNavigation)
{
    const RegionalPhone phone;
    const auto calendar = newCalendar();
    for (const char* name : {"nextMonth", "prevMonth", "nextYear", "prevYear"}) {
        send<"performSelector:", id>(calendar.get(), sel_registerName(name));
        EXPECT_EQ(classesOf(subviewsOf(calendar)), buttonsThenLabels()) << name;
    }
}

TEST(MonthViews, StackWhenAMonthIsDrawnTwice)
{
    const RegionalPhone phone;
    const auto calendar = newCalendar();
    const auto first = subviewsOf(calendar);
    send<"drawHeader">(calendar.get());
    send<"drawDays">(calendar.get());
    const auto both = subviewsOf(calendar);
    ASSERT_EQ(both.size(), 98U);
    EXPECT_TRUE(std::equal(first.begin(), first.end(), both.begin()));
    EXPECT_EQ(headings(calendar).size(), 14U);
    EXPECT_EQ(gridOf(calendar).size(), 12U);
}

TEST(MonthViews, GoWhenTheyAreCleared)
{
    const RegionalPhone phone(german);
    const auto calendar = newCalendarOn("2014-03-15");
    const Owned<UIView> label(weekdayLabels(calendar).front());
    const Owned<UIView> button(dayButtons(calendar).front());
    UILabel* const title = titleLabelOf(calendar);
    send<"clearViews">(calendar.get());
    EXPECT_THAT(subviewsOf(calendar), IsEmpty());
    EXPECT_EQ(label->superview(), nullptr);
    EXPECT_EQ(button->superview(), nullptr);
    EXPECT_EQ(titleLabelOf(calendar), title);
    EXPECT_EQ(textOf(title->text()), "März 2014");
}

TEST(MonthViews, OfAnyKindGoWhenTheyAreCleared)
{
    const RegionalPhone phone;
    const auto calendar = newCalendar();
    calendar->addSubview(adopt(UIView::alloc()->initWithFrame({})));
    send<"clearViews">(calendar.get());
    EXPECT_THAT(subviewsOf(calendar), IsEmpty());
    send<"clearViews">(calendar.get());
    EXPECT_THAT(subviewsOf(calendar), IsEmpty());
}

TEST(MonthViews, PlotOneCellAsTold)
{
    const RegionalPhone phone;
    const auto calendar = newCalendarOn("2014-03-15");
    send<"clearViews">(calendar.get());
    const auto plot = [&](NSInteger x, NSInteger y, NSInteger day, BOOL isGrey) {
        send<"plotCellAtX:Y:Day:isGreyDay:">(calendar.get(), x, y, day, isGrey);
    };
    plot(3, 4, 14, NO);
    plot(5, 6, 15, NO);
    plot(7, 8, 15, YES);
    const auto buttons = dayButtons(calendar);
    ASSERT_EQ(buttons.size(), 3U);
    expectCell(buttons[0], calendar, {14, Kind::ordinary}, CGRect::make(3, 4, 45, 45));
    expectCell(buttons[1], calendar, {15, Kind::today}, CGRect::make(5, 6, 45, 45));
    expectCell(buttons[2], calendar, {15, Kind::grey}, CGRect::make(7, 8, 45, 45));
}

// The header

namespace {

std::vector<std::string> steps;

template <FixedString ClassName, FixedString Selector, class Result, class... Arguments>
class Step {
public:
    /// From now on the message is noted as what `name` makes of its arguments; not at all when that is nothing.
    static void note(std::string (*name)(Arguments...))
    {
        name_ = name;
        MSHookMessageEx(objc_getClass(ClassName.text), selector<Selector>(), reinterpret_cast<IMP>(&called),
                        reinterpret_cast<IMP*>(&previous_));
    }

private:
    static Result called(id self, SEL selector, Arguments... arguments)
    {
        if (const std::string step = name_(arguments...); !step.empty())
            steps.push_back(step);
        return previous_(self, selector, arguments...);
    }

    static inline std::string (*name_)(Arguments...);
    static inline Result (*previous_)(id, SEL, Arguments...);
};

std::string whiteOf(UIColor* color)
{
    return std::to_string(std::lround(10 * colourOf(color).red));
}

void noteStepsOfACell()
{
    static id (*layer)(id, SEL);
    layer = simulator::replaceMethod<"layer">(
        simulator::metaclassOf(objc_getClass("CAGradientLayer")), +[](NSObject* self, SEL message) {
            if (reinterpret_cast<Class>(self) == objc_getClass("CAGradientLayer"))
                steps.push_back("gradient");
            return layer(self, message);
        });
    Step<"UIButton", "setTitleColor:forState:", void, UIColor*, NSUInteger>::note(
        [](UIColor* color, NSUInteger) { return "title white " + whiteOf(color); });
    Step<"UILabel", "setFont:", void, UIFont*>::note([](UIFont* font) { return textOf(font->fontName()); });
    Step<"UIButton", "setTitle:forState:", void, NSString*, NSUInteger>::note(
        [](NSString* title, NSUInteger) { return "title " + textOf(title); });
    Step<"UIButton", "setEnabled:", void, BOOL>::note([](BOOL is) { return std::string(is != NO ? "enabled" : "disabled"); });
    Step<"UIButton", "setTag:", void, NSInteger>::note([](NSInteger tag) { return "tag " + std::to_string(tag); });
    Step<"UIButton", "addTarget:action:forControlEvents:", void, id, SEL, NSUInteger>::note(
        [](id, SEL action, NSUInteger event) { return sel_getName(action) + (' ' + std::to_string(event)); });
    Step<"CALayer", "setBorderColor:", void, CGColorRef>::note([](CGColorRef) { return std::string("border colour"); });
    Step<"CAGradientLayer", "setColors:", void, NSArray*>::note([](NSArray*) { return std::string("colours"); });
    // UIKit puts layers of its own into others.
    Step<"CALayer", "insertSublayer:atIndex:", void, CALayer*, unsigned>::note([](CALayer* inserted, unsigned index) {
        return classNameOf(inserted) == "CAGradientLayer" ? "insert at " + std::to_string(index) : "";
    });
    Step<"CALayer", "setBorderWidth:", void, CGFloat>::note([](CGFloat) { return std::string("border width"); });
    Step<"APLCalendar", "addSubview:", void, UIView*>::note([](UIView*) { return std::string("add"); });
}

std::vector<std::string> stepsOfACell(UIView* calendar, NSInteger day, BOOL isGreyDay)
{
    steps.clear();
    send<"plotCellAtX:Y:Day:isGreyDay:">(calendar, NSInteger{0}, NSInteger{0}, day, isGreyDay);
    return steps;
}

} // namespace

TEST(MonthViews, AreOrdinaryDaysUntilTheirStyleOverridesIt)
{
    const RegionalPhone phone(german);
    const auto calendar = newCalendarOn("2014-03-15");
    noteStepsOfACell();
    EXPECT_THAT(stepsOfACell(calendar, 15, NO),
                ElementsAre("gradient", "title white 3", "Verdana", "title 15", "enabled", "tag 15", "selectDay: 1",
                            "deselectDay: 64", "deselectDay: 128", "title white 9", "border colour", "Verdana-Bold", "colours",
                            "insert at 0", "border width", "add"));
    EXPECT_THAT(stepsOfACell(calendar, 16, NO),
                ElementsAre("gradient", "title white 3", "Verdana", "title 16", "enabled", "tag 16", "selectDay: 1",
                            "deselectDay: 64", "deselectDay: 128", "title white 3", "border colour", "Verdana", "colours",
                            "insert at 0", "border width", "add"));
    EXPECT_THAT(stepsOfACell(calendar, 28, YES),
                ElementsAre("gradient", "title white 3", "Verdana", "title 28", "disabled", "title white 7", "border colour",
                            "Verdana", "colours", "insert at 0", "border width", "add"));
}

TEST(MonthHeader, HasSevenHeadingsInAnOverlappingRow)
{
    const RegionalPhone phone;
    const auto labels = weekdayLabels(newCalendar());
    ASSERT_EQ(labels.size(), 7U);
    constexpr CGFloat columns[] = {0, 44, 88, 132, 176, 220, 264};
    for (std::size_t i = 0; i < 7; ++i) {
        EXPECT_EQ(labels[i]->frame(), CGRect::make(columns[i], 45, 45, 22));
        EXPECT_EQ(textOf(labels[i]->font()->fontName()), "Verdana-Bold");
        EXPECT_EQ(labels[i]->font()->pointSize(), 12);
        EXPECT_EQ((send<"textAlignment", NSInteger>(labels[i])), 1);
        EXPECT_EQ(colourOf(send<"textColor", UIColor*>(labels[i])), white(0.5, 1));
        EXPECT_EQ(colourOf(send<"backgroundColor", UIColor*>(labels[i])), clear);
    }
}

namespace {

struct Title {
    const char* name;
    const char* language;
    const char* text;
};

std::ostream& operator<<(std::ostream& stream, const Title& title)
{
    return stream << title.text;
}

} // namespace

class MonthHeaderIn : public testing::TestWithParam<Title> {
protected:
    RegionalPhone phone_{{.language = GetParam().language, .timeZone = "UTC"}};
};

TEST_P(MonthHeaderIn, HasTheFixedEnglishHeadings)
{
    EXPECT_THAT(headings(newCalendar()), ElementsAre("Mon", "Tue", "Wed", "Thu", "Fri", "Sat", "Sun"));
}

TEST_P(MonthHeaderIn, NamesTheMonthInTheUsersLanguage)
{
    EXPECT_EQ(textOf(titleLabelOf(newCalendarOn("2014-03-15"))->text()), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(, MonthHeaderIn,
                         testing::Values(Title{"English", "en_US.UTF-8", "March 2014"},
                                         Title{"German", "de_DE.UTF-8", "März 2014"}, Title{"French", "fr_FR.UTF-8", "mars 2014"},
                                         Title{"Arabic", "ar_EG.UTF-8", "مارس ٢٠١٤"},
                                         Title{"Persian", "fa_IR.UTF-8@calendar=gregorian", "مارس ۲۰۱۴"},
                                         Title{"Japanese", "ja_JP.UTF-8", "3月 2014"}, Title{"NoLanguage", "C", "March 2014"}),
                         [](const auto& info) { return info.param.name; });

TEST(MonthHeader, KeepsItsTitleOutOfTheView)
{
    const RegionalPhone phone(german);
    const auto calendar = newCalendarOn("2014-03-15");
    UILabel* const title = titleLabelOf(calendar);
    EXPECT_EQ(classNameOf(title), "UILabel");
    EXPECT_EQ(title->superview(), nullptr);
    EXPECT_EQ(title->frame(), CGRect::make(45, 0, 230, 45));
    EXPECT_EQ(textOf(title->font()->fontName()), "Verdana-Bold");
    EXPECT_EQ(title->font()->pointSize(), 18);
    EXPECT_EQ((send<"textAlignment", NSInteger>(title)), 1);
    EXPECT_EQ(colourOf(send<"textColor", UIColor*>(title)), white(0.8, 0.8));
    EXPECT_EQ(colourOf(send<"backgroundColor", UIColor*>(title)), clear);
}

TEST(MonthHeader, MakesANewTitleForEachDrawing)
{
    const RegionalPhone phone(german);
    const auto calendar = newCalendarOn("2014-12-15");
    const Owned<UILabel> old(titleLabelOf(calendar));
    send<"nextMonth">(calendar.get());
    EXPECT_NE(titleLabelOf(calendar), old.get());
    EXPECT_EQ(textOf(titleLabelOf(calendar)->text()), "Januar 2015");
    EXPECT_EQ(textOf(old->text()), "Dezember 2014");
    EXPECT_EQ(retainCount(old), 1U);
}

TEST(MonthHeader, MakesItsTitleAsWideAsTheViewIsNow)
{
    const RegionalPhone phone;
    const auto calendar = newCalendar();
    calendar->setFrame(CGRect::make(10, 10, 400, 320));
    send<"drawHeader">(calendar.get());
    EXPECT_EQ(titleLabelOf(calendar)->frame(), CGRect::make(45, 0, 310, 45));
}
