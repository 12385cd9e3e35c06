#include <chrono>
#include <future>
#include <gmock/gmock.h>
#include <thread>

#include "simulator/runtime/SimulatedClass.hpp"
#include "tests/calendar/MonthCalendar.hpp"
#include "tests/support/MessageLog.hpp"

/// Navigation clears, steps and draws anew while it holds the view's own lock.

namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;

constexpr auto moment = 100ms;
constexpr auto patience = 30s;

/// Takes the lock of an object in a thread of its own and lets go of it at once.
std::future<void> lockElsewhere(NSObject* object)
{
    return std::async(std::launch::async, [object] {
        objc_sync_enter(object);
        objc_sync_exit(object);
    });
}

bool isHeldFor(std::future<void>& lock)
{
    return lock.wait_for(moment) == std::future_status::timeout;
}

/// Puts a function in the place of a method of the calendar.
template <FixedString Name>
void replace(void (*implementation)(UIView*, SEL))
{
    simulator::replaceMethod<Name>(objc_getClass("APLCalendar"), implementation);
}

void navigate(UIView* calendar, const std::string& selectorName)
{
    send<"performSelector:", id>(calendar, sel_registerName(selectorName.c_str()));
}

class Navigation : public testing::TestWithParam<const char*> {
protected:
    Navigation() { setClock("2014-03-15T12:00:00"); }

    RegionalPhone phone_;
};

} // namespace

TEST_P(Navigation, ClearsThenStepsThenDrawsTheDaysThenTheHeader)
{
    const auto calendar = newCalendar();
    MessageLog::name(calendar.get(), "calendar");
    Noted<"APLCalendar", "clearViews", void>::install();
    Noted<"APLCalendar", "goOneMonthForward", void>::install();
    Noted<"APLCalendar", "goOneMonthBack", void>::install();
    Noted<"APLCalendar", "goOneYearForward", void>::install();
    Noted<"APLCalendar", "goOneYearBack", void>::install();
    Noted<"APLCalendar", "drawHeader", void>::install();
    replace<"drawDays">([](UIView* self, SEL selector) { MessageLog::note(self, selector); });
    navigate(calendar, GetParam());
    const std::map<std::string, std::string> steps{{"nextMonth", "goOneMonthForward"},
                                                   {"prevMonth", "goOneMonthBack"},
                                                   {"nextYear", "goOneYearForward"},
                                                   {"prevYear", "goOneYearBack"}};
    EXPECT_THAT(MessageLog::messages(), ElementsAre("calendar clearViews", "calendar " + steps.at(GetParam()),
                                                    "calendar drawDays", "calendar drawHeader"));
}

TEST_P(Navigation, HoldsTheViewsLockFromTheClearingToTheEndOfTheDrawing)
{
    static std::future<void> other;
    static int held;
    const auto calendar = newCalendar();
    replace<"clearViews">([](UIView* self, SEL) {
        other = lockElsewhere(self);
        held += isHeldFor(other);
    });
    replace<"drawDays">([](UIView*, SEL) { held += isHeldFor(other); });
    replace<"drawHeader">([](UIView*, SEL) { held += isHeldFor(other); });
    navigate(calendar, GetParam());
    EXPECT_EQ(held, 3);
    EXPECT_EQ(other.wait_for(patience), std::future_status::ready);
}

TEST_P(Navigation, WaitsForWhoHoldsTheViewsLock)
{
    const auto calendar = newCalendar();
    std::promise<void> entered, leave;
    const auto holder = std::async(std::launch::async, [&] {
        objc_sync_enter(calendar);
        entered.set_value();
        leave.get_future().wait();
        objc_sync_exit(calendar);
    });
    entered.get_future().wait();
    const auto release = std::async(std::launch::async, [&] {
        std::this_thread::sleep_for(moment);
        leave.set_value();
    });
    const auto start = std::chrono::steady_clock::now();
    navigate(calendar, GetParam());
    EXPECT_GE(std::chrono::steady_clock::now() - start, moment / 2);
}

TEST_P(Navigation, LeavesTheLocksOfOtherViewsAlone)
{
    static std::future_status status;
    static UIView* neighbour;
    const auto calendar = newCalendar();
    const auto other = newCalendar();
    neighbour = other;
    replace<"drawDays">([](UIView*, SEL) { status = lockElsewhere(neighbour).wait_for(patience); });
    navigate(calendar, GetParam());
    EXPECT_EQ(status, std::future_status::ready);
}

TEST_P(Navigation, MayNavigateWithinItself)
{
    static int depth;
    const auto calendar = newCalendar();
    replace<"drawHeader">([](UIView* self, SEL) {
        if (++depth == 1)
            send<"nextYear">(self);
    });
    navigate(calendar, GetParam());
    EXPECT_EQ(depth, 2);
    EXPECT_EQ(lockElsewhere(calendar).wait_for(patience), std::future_status::ready);
}

TEST_P(Navigation, LetsGoOfTheLockWhenAnExceptionPassesThrough)
{
    const auto calendar = newCalendar();
    replace<"drawHeader">([](UIView*, SEL) {
        send<"raise:format:">(objc_getClass("NSException"), constantString<"NSGenericException">(), constantString<"No ink">());
    });
    bool raised = false;
    try {
        navigate(calendar, GetParam());
    } catch (...) {
        raised = true;
    }
    EXPECT_TRUE(raised);
    EXPECT_EQ(lockElsewhere(calendar).wait_for(patience), std::future_status::ready);
}

INSTANTIATE_TEST_SUITE_P(By, Navigation, testing::Values("nextMonth", "prevMonth", "nextYear", "prevYear"),
                         [](const auto& info) { return info.param; });

TEST(NavigationLock, IsNotTakenForStepsQueriesAndDrawings)
{
    const RegionalPhone phone;
    const auto calendar = newCalendarOn("2014-03-15");
    std::promise<void> entered, leave;
    const auto holder = std::async(std::launch::async, [&] {
        objc_sync_enter(calendar);
        entered.set_value();
        leave.get_future().wait();
        objc_sync_exit(calendar);
    });
    entered.get_future().wait();
    for (const char* name : {"goOneMonthForward", "goOneMonthBack", "goOneYearForward", "goOneYearBack",
                             "getTotalDaysInCurrentMonth", "getOffsetDays", "drawHeader", "drawDays", "clearViews"})
        navigate(calendar, name);
    leave.set_value();
    EXPECT_EQ(shownMonth(calendar), "2014-3");
}
