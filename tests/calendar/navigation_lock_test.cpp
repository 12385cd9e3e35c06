#include <chrono>
#include <condition_variable>
#include <gmock/gmock.h>
#include <mutex>
#include <optional>
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

/// Happens once; threads wait for it.
class Event {
public:
    void happen()
    {
        const std::lock_guard lock(mutex_);
        happened_ = true;
        changed_.notify_all();
    }
    bool happensWithin(std::chrono::milliseconds time)
    {
        std::unique_lock lock(mutex_);
        return changed_.wait_for(lock, time, [this] { return happened_; });
    }

private:
    std::mutex mutex_;
    std::condition_variable changed_;
    bool happened_ = false;
};

/// Takes the lock of an object in a thread of its own and lets go of it at once.
class LockElsewhere {
public:
    explicit LockElsewhere(NSObject* object)
        : thread_([this, object] {
              objc_sync_enter(object);
              objc_sync_exit(object);
              taken_.happen();
          })
    {
    }

    bool isTakenWithin(std::chrono::milliseconds time) { return taken_.happensWithin(time); }

private:
    Event taken_;
    std::jthread thread_;
};

/// Takes the lock of an object in a thread of its own and holds it.
class LockHeldElsewhere {
public:
    explicit LockHeldElsewhere(NSObject* object)
        : thread_([this, object] {
              objc_sync_enter(object);
              taken_.happen();
              enough_.happensWithin(patience);
              objc_sync_exit(object);
          })
    {
    }

    bool isTakenWithin(std::chrono::milliseconds time) { return taken_.happensWithin(time); }
    void letGo() { enough_.happen(); }

private:
    Event taken_;
    Event enough_;
    std::jthread thread_;
};

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
    static std::optional<LockElsewhere> other;
    static int held;
    const auto calendar = newCalendar();
    replace<"clearViews">([](UIView* self, SEL) {
        other.emplace(self);
        held += !other->isTakenWithin(moment);
    });
    replace<"drawDays">([](UIView*, SEL) { held += !other->isTakenWithin(moment); });
    replace<"drawHeader">([](UIView*, SEL) { held += !other->isTakenWithin(moment); });
    navigate(calendar, GetParam());
    EXPECT_EQ(held, 3);
    EXPECT_TRUE(other->isTakenWithin(patience));
}

TEST_P(Navigation, WaitsForWhoHoldsTheViewsLock)
{
    const auto calendar = newCalendar();
    LockHeldElsewhere held(calendar);
    ASSERT_TRUE(held.isTakenWithin(patience));
    const auto start = std::chrono::steady_clock::now();
    const std::jthread release([&] {
        std::this_thread::sleep_for(moment);
        held.letGo();
    });
    navigate(calendar, GetParam());
    EXPECT_GE(std::chrono::steady_clock::now() - start, moment / 2);
}

TEST_P(Navigation, LeavesTheLocksOfOtherViewsAlone)
{
    static bool isFree;
    static UIView* neighbour;
    const auto calendar = newCalendar();
    const auto other = newCalendar();
    neighbour = other;
    replace<"drawDays">([](UIView*, SEL) { isFree = LockElsewhere(neighbour).isTakenWithin(patience); });
    navigate(calendar, GetParam());
    EXPECT_TRUE(isFree);
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
    EXPECT_TRUE(LockElsewhere(calendar).isTakenWithin(patience));
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
    EXPECT_TRUE(LockElsewhere(calendar).isTakenWithin(patience));
}

INSTANTIATE_TEST_SUITE_P(By, Navigation, testing::Values("nextMonth", "prevMonth", "nextYear", "prevYear"),
                         [](const auto& info) { return info.param; });

TEST(NavigationLock, IsNotTakenForStepsQueriesAndDrawings)
{
    const RegionalPhone phone;
    const auto calendar = newCalendarOn("2014-03-15");
    LockHeldElsewhere held(calendar);
    ASSERT_TRUE(held.isTakenWithin(patience));
    for (const char* name : {"goOneMonthForward", "goOneMonthBack", "goOneYearForward", "goOneYearBack",
                             "getTotalDaysInCurrentMonth", "getOffsetDays", "drawHeader", "drawDays", "clearViews"})
        navigate(calendar, name);
    held.letGo();
    EXPECT_EQ(shownMonth(calendar), "2014-3");
}
