#include <gtest/gtest.h>

#include "tests/calendar/MonthCalendar.hpp"
#include "tests/support/live_objects.hpp"

/// Navigation leaves nothing behind.

namespace {

class LiveObjects : public testing::Test {
protected:
    LiveObjects()
    {
        phone_ = std::make_unique<RegionalPhone>(german);
        setClock("2014-03-15T12:00:00");
    }

    std::unique_ptr<RegionalPhone> phone_;
};

void goAround(UIView* calendar, int navigations)
{
    constexpr const char* steps[] = {"nextMonth", "nextYear", "prevMonth", "nextMonth", "prevYear"};
    for (int i = 0; i < navigations; ++i) {
        const AutoreleasePool pool;
        send<"performSelector:", id>(calendar, sel_registerName(steps[i % std::size(steps)]));
    }
}

} // namespace

TEST_F(LiveObjects, AreAsManyAfterTenThousandNavigations)
{
    Owned<UIView> calendar;
    {
        const AutoreleasePool pool;
        calendar = newCalendar();
    }
    // What Foundation makes once and keeps is made by the first rounds.
    goAround(calendar, 5);
    const auto before = livingObjects();
    EXPECT_EQ(before.at("APLCalendar"), 1);
    EXPECT_EQ(before.at("UIButton"), 42);
    EXPECT_EQ(before.at("CAGradientLayer"), 42);
    goAround(calendar, 10'000);
    EXPECT_EQ(livingObjects(), before);
}

TEST_F(LiveObjects, AreGoneWithTheirCalendar)
{
    const auto make = [] {
        const AutoreleasePool pool;
        const auto calendar = newCalendar();
    };
    make();
    const auto before = livingObjects();
    EXPECT_FALSE(before.contains("APLCalendar"));
    for (int i = 0; i < 100; ++i)
        make();
    EXPECT_EQ(livingObjects(), before);
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
    const auto before = livingObjects();
    EXPECT_FALSE(before.contains("SVWidget"));
    for (int i = 0; i < 100; ++i)
        make();
    EXPECT_EQ(livingObjects(), before);
}
