#include <algorithm>
#include <gmock/gmock.h>

#include "tests/calendar/MonthCalendar.hpp"
#include "tests/support/encoded_here.hpp"

/// What a month calendar remembers.

namespace {

using testing::ElementsAre;

extern "C" {
Ivar* class_copyIvarList(Class cls, unsigned int* count);
const char* ivar_getName(Ivar ivar);
}

struct Variable {
    std::string name;
    std::string types;
    bool operator==(const Variable&) const = default;
};

std::ostream& operator<<(std::ostream& stream, const Variable& variable)
{
    return stream << variable.name << ' ' << variable.types;
}

std::vector<Variable> variablesOf(Class cls)
{
    unsigned int count = 0;
    Ivar* const list = class_copyIvarList(cls, &count);
    std::vector<Variable> all;
    for (unsigned int i = 0; i < count; ++i)
        all.push_back({ivar_getName(list[i]), ivar_getTypeEncoding(list[i])});
    ::free(list);
    return all;
}

Class calendarClass()
{
    return objc_getClass("APLCalendar");
}

std::string encodingOf(const char* selectorName)
{
    return method_getTypeEncoding(class_getInstanceMethod(calendarClass(), sel_registerName(selectorName)));
}

UIView* newCalendarWithFrame(CGRect frame)
{
    return send<"alloc", UIView*>(calendarClass())->initWithFrame(frame);
}

NSObject* delegateOf(UIView* calendar)
{
    return send<"delegate", NSObject*>(calendar);
}

} // namespace

using MonthCalendarClass = TestOn<RegionalPhone>;

TEST_F(MonthCalendarClass, IsAView)
{
    EXPECT_STREQ(class_getName(class_getSuperclass(calendarClass())), "UIView");
}

TEST_F(MonthCalendarClass, HasElevenVariablesInOrder)
{
    const std::string integer = encodedHere("q");
    EXPECT_THAT(variablesOf(calendarClass()),
                ElementsAre(Variable{"lblMonth", "@"}, Variable{"_day", integer}, Variable{"_month", integer},
                            Variable{"_year", integer}, Variable{"_cellSize", integer}, Variable{"_fontSize", integer},
                            Variable{"_titleTextSize", integer}, Variable{"_today", integer}, Variable{"_borderWidth", integer},
                            Variable{"_recognizer", "@"}, Variable{"_delegate", "@"}));
}

TEST_F(MonthCalendarClass, LaysItsVariablesOutInThatOrder)
{
    std::ptrdiff_t previous = 0;
    for (const Variable& variable : variablesOf(calendarClass())) {
        const std::ptrdiff_t offset = ivar_getOffset(class_getInstanceVariable(calendarClass(), variable.name.c_str()));
        EXPECT_GT(offset, previous) << variable.name;
        previous = offset;
    }
}

TEST_F(MonthCalendarClass, DeclaresItsMethodsByTheirTypes)
{
    struct Declared {
        const char* selector;
        const char* types;
    };
    constexpr Declared declared[] = {
        {"init", "@@:"},
        {"initWithFrame:", "@@:{CGRect={CGPoint=dd}{CGSize=dd}}"},
        {"getTotalDaysInCurrentMonth", "q@:"},
        {"getOffsetDays", "q@:"},
        {"goOneMonthForward", "v@:"},
        {"goOneMonthBack", "v@:"},
        {"goOneYearForward", "v@:"},
        {"goOneYearBack", "v@:"},
        {"nextMonth", "v@:"},
        {"prevMonth", "v@:"},
        {"nextYear", "v@:"},
        {"prevYear", "v@:"},
        {"delegate", "@@:"},
        {"setDelegate:", "v@:@"},
        {"drawHeader", "v@:"},
        {"drawDays", "v@:"},
        {"plotCellAtX:Y:Day:isGreyDay:", "v@:qqqC"},
        {"clearViews", "v@:"},
        {"swipePerformed:", "v@:@"},
        {"gestureRecognizer:shouldReceiveTouch:", "C@:@@"},
        {"selectDay:", "v@:@"},
        {"deselectDay:", "v@:@"},
        {"getCalenderEventsForDay:", "@@:@"},
        {"getStringFromDate:", "@@:@"},
    };
    for (const Declared& method : declared) {
        std::string types = encodingOf(method.selector);
        // BOOL is a type of its own on some platforms, and a byte with or without a sign on others.
        for (char* const type : {&types.front(), &types.back()})
            *type = *type == 'B' || *type == 'c' ? 'C' : *type;
        EXPECT_EQ(types, encodedHere(method.types)) << method.selector;
    }
}

TEST_F(MonthCalendarClass, DeclaresItsDelegateAsAWeakProperty)
{
    objc_property* const delegate = class_getProperty(calendarClass(), "delegate");
    ASSERT_NE(delegate, nullptr);
    EXPECT_STREQ(property_getAttributes(delegate), "T@\"<APLCalendarDelegate>\",W,N,V_delegate");
}

TEST(MonthCalendarDelegate, DeclaresThreeOptionalMethodsByTheirTypes)
{
    const RegionalPhone phone;
    objc_protocol* const protocol = objc_getProtocol("APLCalendarDelegate");
    constexpr std::pair<const char*, const char*> methods[] = {
        {"didSelectCalendarDay:", "v@:q"}, {"didSelectCalendarDate:", "v@:@"}, {"didDeselectCalendarDay:", "v@:q"}};
    for (const auto& [name, types] : methods) {
        const SEL selector = sel_registerName(name);
        const objc_method_description method = protocol_getMethodDescription(protocol, selector, NO, YES);
        EXPECT_EQ(method.name, selector) << name;
        ASSERT_NE(method.types, nullptr) << name;
        EXPECT_EQ(method.types, encodedHere(types)) << name;
        EXPECT_EQ(protocol_getMethodDescription(protocol, selector, YES, YES).name, nullptr) << name;
        EXPECT_EQ(protocol_getMethodDescription(protocol, selector, NO, NO).name, nullptr) << name;
    }
    EXPECT_EQ(protocol_getMethodDescription(protocol, selector<"didSelectCalendarMonth:">(), NO, YES).name, nullptr);
}

TEST(NewMonthCalendar, IsThreeHundredAndTwentyPointsWideAndHigh)
{
    const RegionalPhone phone;
    EXPECT_EQ(newCalendar()->frame(), CGRect::make(0, 0, 320, 320));
}

TEST(NewMonthCalendar, RemembersTheDayItWasMadeOnAndShowsItsMonth)
{
    const RegionalPhone phone;
    const auto calendar = newCalendarOn("2014-03-15");
    EXPECT_EQ(variable(calendar, "_day"), 15);
    EXPECT_EQ(variable(calendar, "_today"), 15);
    EXPECT_EQ(variable(calendar, "_month"), 3);
    EXPECT_EQ(variable(calendar, "_year"), 2014);
}

TEST(NewMonthCalendar, DerivesItsSizesFromItsWidth)
{
    const RegionalPhone phone;
    const auto calendar = newCalendarOn("2014-03-15");
    EXPECT_EQ(variable(calendar, "_cellSize"), 45);
    EXPECT_EQ(variable(calendar, "_borderWidth"), 1);
    EXPECT_EQ(variable(calendar, "_fontSize"), 12);
    EXPECT_EQ(variable(calendar, "_titleTextSize"), 18);
}

TEST(NewMonthCalendar, DerivesItsSizesFromTheWidthAloneWhateverTheRestOfTheFrame)
{
    const RegionalPhone phone;
    const auto calendar = adopt(newCalendarWithFrame(CGRect::make(30, 40, 280, 1000)));
    EXPECT_EQ(variable(calendar, "_cellSize"), 40);
    EXPECT_EQ(variable(calendar, "_borderWidth"), 0);
    EXPECT_EQ(variable(calendar, "_fontSize"), 11);
    EXPECT_EQ(variable(calendar, "_titleTextSize"), 16);
    EXPECT_EQ(calendar->frame(), CGRect::make(30, 40, 280, 1000));
}

TEST(NewMonthCalendar, KeepsItsSizesWhenItsFrameChanges)
{
    const RegionalPhone phone;
    const auto calendar = newCalendar();
    calendar->setFrame(CGRect::make(0, 0, 700, 700));
    send<"nextMonth">(calendar.get());
    EXPECT_EQ(variable(calendar, "_cellSize"), 45);
    EXPECT_EQ(variable(calendar, "_borderWidth"), 1);
    EXPECT_EQ(variable(calendar, "_fontSize"), 12);
    EXPECT_EQ(variable(calendar, "_titleTextSize"), 18);
}

TEST(NewMonthCalendar, TakesTheDayOfTheUsersTimeZone)
{
    const RegionalPhone phone({.language = "en_US.UTF-8", .timeZone = "Pacific/Kiritimati"});
    freezeClockAtUniversalTime("2014-12-31T12:00:00");
    const auto calendar = newCalendar();
    EXPECT_EQ(variable(calendar, "_day"), 1);
    EXPECT_EQ(shownMonth(calendar), "2015-1");
}

TEST(NewMonthCalendar, KeepsItsDayPastMidnight)
{
    const RegionalPhone phone;
    const auto calendar = newCalendarOn("2014-03-15");
    setClock("2014-03-16T00:00:01");
    send<"nextMonth">(calendar.get());
    send<"prevMonth">(calendar.get());
    EXPECT_EQ(variable(calendar, "_day"), 15);
    EXPECT_EQ(variable(calendar, "_today"), 15);
}

TEST(NewMonthCalendar, IsNothingWhenTheViewIsNothing)
{
    const RegionalPhone phone;
    static int drawings;
    const auto nothing = +[](id, SEL, CGRect) -> id { return nullptr; };
    const auto noteDrawing = +[](id, SEL) { ++drawings; };
    method_setImplementation(class_getInstanceMethod(objc_getClass("UIView"), selector<"initWithFrame:">()),
                             reinterpret_cast<IMP>(nothing));
    for (const char* name : {"drawHeader", "drawDays"})
        method_setImplementation(class_getInstanceMethod(calendarClass(), sel_registerName(name)),
                                 reinterpret_cast<IMP>(noteDrawing));
    EXPECT_EQ(newCalendarWithFrame(CGRect::make(0, 0, 320, 320)), nullptr);
    EXPECT_EQ(drawings, 0);
}

TEST(NewMonthCalendar, HoldsItsDelegateWeakly)
{
    const RegionalPhone phone;
    const auto calendar = newCalendar();
    EXPECT_EQ(delegateOf(calendar), nullptr);
    {
        const AutoreleasePool pool;
        const Owned<NSObject> delegate = adopt(send<"new", NSObject*>(objc_getClass("NSObject")));
        send<"setDelegate:">(calendar.get(), delegate.get());
        EXPECT_EQ(retainCount(delegate), 1U);
        EXPECT_EQ(delegateOf(calendar), delegate.get());
    }
    EXPECT_EQ(delegateOf(calendar), nullptr);
}

TEST(NewMonthCalendar, LetsGoOfWhatItHoldsWhenItGoes)
{
    const RegionalPhone phone;
    Owned<NSObject> title;
    Owned<NSObject> recognizer;
    const Owned<NSObject> delegate = adopt(send<"new", NSObject*>(objc_getClass("NSObject")));
    {
        const AutoreleasePool pool;
        const auto calendar = newCalendar();
        title = variable<NSObject*>(calendar, "lblMonth");
        recognizer = variable<NSObject*>(calendar, "_recognizer");
        send<"setDelegate:">(calendar.get(), delegate.get());
    }
    EXPECT_EQ(retainCount(title), 1U);
    EXPECT_EQ(retainCount(recognizer), 1U);
    EXPECT_EQ(retainCount(delegate), 1U);
}
