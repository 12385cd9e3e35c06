#include <gtest/gtest.h>

#include "simulator/runtime/SimulatedClass.hpp"
#include "tests/calendar/MonthCalendar.hpp"
#include "tests/support/MorningPhone.hpp"
#include "tests/support/objects.hpp"
#include "tests/transcripts/month_tables.hpp"

/// The widget.

namespace {

UIView* allocated()
{
    return send<"alloc", UIView*>(objc_getClass("SVWidget"));
}

class WidgetTranscript : public testing::Test {
protected:
    WidgetTranscript() { transcript_.name("widget", widget_).name("calendar", ::variable<NSObject*>(widget_, "cal")); }

    template <FixedString Name>
    void expect(const Rows& rows)
    {
        transcript_.expect([&] { send<Name>(widget_.get()); }, rows);
    }

    InjectedMorningPhone phone_;
    Owned<UIView> widget_ = adopt(allocated()->initWithFrame(CGRect::make(20, 100, 280, 300)));
    Transcript transcript_;
};

const Rows weatherCard{"widget bounds",
                       "[UIView alloc] initWithFrame: (0 0 280 300) = card",
                       "UIColor greenColor = green",
                       "card setBackgroundColor: green",
                       "card setHidden: YES",
                       "widget addSubview: card",
                       "[UILabel alloc] initWithFrame: (0 65 50 50) = label",
                       "UIFont fontWithName: '.HelveticaNeueInterface-UltraLightP2' size: 17.5 = font",
                       "label setFont: font",
                       "UIColor clearColor = clear",
                       "label setBackgroundColor: clear",
                       "UIColor whiteColor = white",
                       "label setTextColor: white",
                       "label setTextAlignment: 1",
                       "label setText: 'Now'",
                       "card addSubview: label"};

} // namespace

TEST_F(WidgetTranscript, OfMakingOne)
{
    UIView* const made = allocated();
    Transcript()
        .name("widget", made)
        .expect([&] { made->initWithFrame(CGRect::make(0, 0, 320, 300)); }, tables::widgetConstruction({}, "(0 0 320 300)"));
}

TEST_F(WidgetTranscript, OfMakingOneThatItsSuperclassRefuses)
{
    const Owned<UIView> made = adopt(send<"alloc", UIView*>(objc_getClass("SVWidget")));
    simulator::replaceMethod<"initWithFrame:">(objc_getClass("UIView"), +[](UIView*, SEL, CGRect) -> UIView* { return nullptr; });
    Transcript()
        .name("widget", made)
        .expect([&] { made->initWithFrame(CGRect::make(0, 0, 1, 1)); }, {"widget super initWithFrame: (0 0 1 1)"});
}

TEST_F(WidgetTranscript, OfLoadingTheCalendar)
{
    expect<"loadCalendar">(tables::calendarLoading({}));
}

TEST_F(WidgetTranscript, OfLoadingTheWeather)
{
    expect<"loadWeather">(weatherCard);
}

TEST_F(WidgetTranscript, OfShowingTheCalendar)
{
    expect<"showCalendar">({"widget frame", "widget frame", "calendar setCenter: (160 225)", "calendar setHidden: NO"});
}

TEST_F(WidgetTranscript, OfShowingTheWeather)
{
    send<"loadWeather">(widget_.get());
    transcript_.name("card", ::variable<NSObject*>(widget_, "weather"));
    expect<"showWeather">({"widget bounds", "card setFrame: (0 0 280 300)", "card setHidden: NO"});
}

TEST_F(WidgetTranscript, OfShowingTheWeatherWithoutACard)
{
    expect<"showWeather">({"widget bounds"});
}

TEST_F(WidgetTranscript, OfHidingAll)
{
    expect<"hideALL">({"calendar setHidden: YES"});
    send<"loadWeather">(widget_.get());
    transcript_.name("card", ::variable<NSObject*>(widget_, "weather"));
    expect<"hideALL">({"calendar setHidden: YES", "card setHidden: YES"});
}

TEST_F(WidgetTranscript, OfAWidgetWithoutACalendar)
{
    ::variable<NSObject*>(widget_, "cal") = nullptr;
    expect<"showCalendar">({"widget frame", "widget frame"});
    expect<"hideALL">({});
}
