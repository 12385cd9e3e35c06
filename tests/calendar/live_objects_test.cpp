#include <gtest/gtest.h>

#include <map>

#include "simulator/runtime/SimulatedClass.hpp"
#include "tests/calendar/MonthCalendar.hpp"

/// Navigation leaves nothing behind.

namespace {

/// How many objects of the library's classes and of the platform's there are, by class.
std::map<std::string, long> alive;

bool isCounted(const std::string& className)
{
    for (const char* prefix : {"APL", "SV", "UI", "CA", "CG"}) {
        if (className.starts_with(prefix))
            return true;
    }
    return false;
}

void count(const std::string& className, long change)
{
    if (isCounted(className) && (alive[className] += change) == 0)
        alive.erase(className);
}

NSObject* (*allocate)(NSObject*, SEL);
void (*deallocate)(NSObject*, SEL);

NSObject* countedAlloc(NSObject* cls, SEL selector)
{
    count(class_getName(reinterpret_cast<Class>(cls)), 1);
    return allocate(cls, selector);
}

void countedDealloc(NSObject* self, SEL selector)
{
    count(classNameOf(self), -1);
    deallocate(self, selector);
}

/// Counts from now on. A class that has been sent a message keeps the methods that it had then, so this comes first.
void countObjects()
{
    const Class root = objc_getClass("NSObject");
    allocate = simulator::replaceMethod<"alloc">(simulator::metaclassOf(root), &countedAlloc);
    deallocate = simulator::replaceMethod<"dealloc">(root, &countedDealloc);
}

class LiveObjects : public testing::Test {
protected:
    LiveObjects()
    {
        countObjects();
        phone_ = std::make_unique<RegionalPhone>(german);
        setClock("2014-03-15T12:00:00");
    }

    std::unique_ptr<RegionalPhone> phone_;
};

void navigate(UIView* calendar, const char* selectorName)
{
    const AutoreleasePool pool;
    send<"performSelector:", id>(calendar, sel_registerName(selectorName));
}

} // namespace

TEST_F(LiveObjects, AreAsManyAfterTenThousandNavigations)
{
    Owned<UIView> calendar;
    {
        const AutoreleasePool pool;
        calendar = newCalendar();
    }
    const auto before = alive;
    EXPECT_EQ(before.at("APLCalendar"), 1);
    EXPECT_EQ(before.at("UIButton"), 42);
    EXPECT_EQ(before.at("CAGradientLayer"), 42);
    for (int i = 0; i < 10'000; ++i) {
        constexpr const char* steps[] = {"nextMonth", "nextYear", "prevMonth", "nextMonth", "prevYear"};
        navigate(calendar, steps[i % std::size(steps)]);
    }
    EXPECT_EQ(alive, before);
}

TEST_F(LiveObjects, AreGoneWithTheirCalendar)
{
    const auto make = [] {
        const AutoreleasePool pool;
        const auto calendar = newCalendar();
    };
    make();
    const auto before = alive;
    EXPECT_FALSE(before.contains("APLCalendar"));
    for (int i = 0; i < 100; ++i)
        make();
    EXPECT_EQ(alive, before);
}

TEST_F(LiveObjects, AreGoneWithTheirWidget)
{
    const auto make = [] {
        const AutoreleasePool pool;
        const auto widget = adopt(send<"alloc", UIView*>(objc_getClass("SVWidget"))->initWithFrame(CGRect::make(0, 0, 320, 300)));
        for (const SEL name : {selector<"loadWeather">(), selector<"loadCalendar">(), selector<"showCalendar">(),
                               selector<"showWeather">(), selector<"hideALL">()})
            send<"performSelector:", id>(widget.get(), name);
    };
    make();
    const auto before = alive;
    EXPECT_FALSE(before.contains("SVWidget"));
    for (int i = 0; i < 100; ++i)
        make();
    EXPECT_EQ(alive, before);
}
