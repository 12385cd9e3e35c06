#include <gmock/gmock.h>

#include "simulator/runtime/SimulatedClass.hpp"
#include "tests/calendar/MonthCalendar.hpp"
#include "tests/support/Console.hpp"
#include "tests/support/encoded_here.hpp"

/// The panel's widget area: a month calendar and a weather card.

namespace {

using simulator::Colour;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr CGRect area = CGRect::make(0, 0, 320, 300);

extern "C" BOOL protocol_conformsToProtocol(objc_protocol* protocol, objc_protocol* other);

UIView* initWidget(CGRect frame)
{
    return send<"alloc", UIView*>(objc_getClass("SVWidget"))->initWithFrame(frame);
}

Owned<UIView> newWidget(CGRect frame = area)
{
    return adopt(initWidget(frame));
}

UIView* calendarOf(UIView* widget)
{
    return variable<UIView*>(widget, "cal");
}

UIView* cardOf(UIView* widget)
{
    return variable<UIView*>(widget, "weather");
}

CGPoint calendarCentreIn(CGRect frame)
{
    const auto widget = newWidget(frame);
    send<"showCalendar">(widget.get());
    return calendarOf(widget)->center();
}

/// The objects of interest, in the order in which they went.
std::vector<std::string> gone;
std::map<const void*, std::string> watched;

void dealloc(NSObject* self, SEL)
{
    if (const auto found = watched.find(self); found != watched.end()) {
        gone.push_back(found->second);
        watched.erase(found);
    }
    sendSuper<"dealloc">(objc_getClass("UIResponder"), self);
}

/// From now on views that are watched are noted when they go.
void watchViews()
{
    simulator::addMethod<"dealloc">(objc_getClass("UIView"), &dealloc);
}

} // namespace

// The class

using WidgetClass = TestOn<RegionalPhone>;

TEST_F(WidgetClass, IsAViewWithTwoOwnedVariables)
{
    const Class cls = objc_getClass("SVWidget");
    EXPECT_STREQ(class_getName(class_getSuperclass(cls)), "UIView");
    const Ivar cal = class_getInstanceVariable(cls, "cal");
    const Ivar weather = class_getInstanceVariable(cls, "weather");
    ASSERT_NE(cal, nullptr);
    ASSERT_NE(weather, nullptr);
    EXPECT_STREQ(ivar_getTypeEncoding(cal), "@");
    EXPECT_STREQ(ivar_getTypeEncoding(weather), "@");
    EXPECT_EQ(ivar_getOffset(weather), ivar_getOffset(cal) + static_cast<std::ptrdiff_t>(sizeof(id)));
    EXPECT_EQ(class_getInstanceSize(cls), static_cast<std::size_t>(ivar_getOffset(weather)) + sizeof(id));
}

TEST_F(WidgetClass, DeclaresItsMethodsByTheirTypes)
{
    const auto encoding = [](SEL selector) {
        return std::string(method_getTypeEncoding(class_getInstanceMethod(objc_getClass("SVWidget"), selector)));
    };
    EXPECT_EQ(encoding(selector<"initWithFrame:">()), encodedHere("@@:{CGRect={CGPoint=dd}{CGSize=dd}}"));
    EXPECT_EQ(encoding(selector<"loadWeather">()), "v@:");
    EXPECT_EQ(encoding(selector<"loadCalendar">()), "v@:");
    EXPECT_EQ(encoding(selector<"showWeather">()), "v@:");
    EXPECT_EQ(encoding(selector<"showCalendar">()), "v@:");
    EXPECT_EQ(encoding(selector<"hideALL">()), "v@:");
}

TEST_F(WidgetClass, AdoptsTheCalendarsDelegateProtocolAndAnswersNothingOfIt)
{
    const auto widget = newWidget();
    objc_protocol* const protocol = objc_getProtocol("APLCalendarDelegate");
    ASSERT_NE(protocol, nullptr);
    EXPECT_EQ((send<"conformsToProtocol:", BOOL>(widget.get(), protocol)), YES);
    EXPECT_EQ((send<"conformsToProtocol:", BOOL>(objc_getClass("SVWidget"), protocol)), YES);
    EXPECT_EQ((send<"conformsToProtocol:", BOOL>(objc_getClass("UIView"), protocol)), NO);
    for (const SEL name :
         {selector<"didSelectCalendarDay:">(), selector<"didSelectCalendarDate:">(), selector<"didDeselectCalendarDay:">()})
        EXPECT_FALSE(widget->respondsToSelector(name)) << sel_getName(name);
}

TEST_F(WidgetClass, AdoptsAProtocolThatAdoptsTheBaseOne)
{
    EXPECT_EQ(protocol_conformsToProtocol(objc_getProtocol("APLCalendarDelegate"), objc_getProtocol("NSObject")), YES);
}

// A new widget

using NewWidget = TestOn<RegionalPhone>;

TEST_F(NewWidget, HoldsAHiddenCalendarThatTakesNoTouches)
{
    const auto widget = newWidget();
    UIView* const calendar = calendarOf(widget);
    EXPECT_EQ(classNameOf(calendar), "APLCalendar");
    EXPECT_EQ(calendar->frame(), CGRect::make(0, 0, 320, 320));
    EXPECT_TRUE(calendar->isHidden());
    EXPECT_FALSE(calendar->isUserInteractionEnabled());
    EXPECT_THAT(subviewsOf(widget), ElementsAre(calendar));
    EXPECT_EQ(widget->frame(), area);
}

TEST_F(NewWidget, IsItsCalendarsDelegate)
{
    const auto widget = newWidget();
    EXPECT_EQ((send<"delegate", NSObject*>(calendarOf(widget))), widget.get());
}

TEST_F(NewWidget, HasNoWeatherCard)
{
    EXPECT_EQ(cardOf(newWidget()), nullptr);
}

TEST_F(NewWidget, IsNothingWhenTheViewIsNothing)
{
    static UIView* (*initView)(UIView*, SEL, CGRect);
    static int others;
    initView = simulator::replaceMethod<"initWithFrame:">(
        objc_getClass("UIView"), +[](UIView* self, SEL selector, CGRect frame) -> UIView* {
            if (classNameOf(self) == "SVWidget")
                return nullptr;
            ++others;
            return initView(self, selector, frame);
        });
    EXPECT_EQ(initWidget(area), nullptr);
    EXPECT_EQ(others, 0) << "no calendar is made";
}

TEST_F(NewWidget, KeepsItsCalendarAsSubviewAndInItsVariable)
{
    const AutoreleasePool pool;
    const auto widget = newWidget();
    UIView* const calendar = calendarOf(widget);
    {
        const Owned<UIView> kept(calendar);
        calendar->removeFromSuperview();
        EXPECT_EQ(kept.get(), calendarOf(widget));
    }
    EXPECT_EQ(retainCount(calendar), 1U);
}

TEST_F(NewWidget, ReplacesItsCalendarWhenItIsLoadedAgain)
{
    Owned<UIView> first;
    const auto widget = newWidget();
    {
        const AutoreleasePool pool;
        first = calendarOf(widget);
        send<"loadCalendar">(widget.get());
        EXPECT_NE(calendarOf(widget), first.get());
        EXPECT_EQ((send<"delegate", NSObject*>(calendarOf(widget))), widget.get());
        // The first one stays where it was put.
        EXPECT_THAT(subviewsOf(widget), ElementsAre(first.get(), calendarOf(widget)));
        first->removeFromSuperview();
    }
    EXPECT_EQ(retainCount(first), 1U);
}

// The calendar

using WidgetCalendar = TestOn<RegionalPhone>;

TEST_F(WidgetCalendar, StandsTwentyFivePointsAboveTheMiddleOfTheFrame)
{
    EXPECT_EQ(calendarCentreIn(CGRect::make(0, 0, 320, 300)), (CGPoint{160, 125}));
    EXPECT_EQ(calendarCentreIn(CGRect::make(0, 0, 320, 568)), (CGPoint{160, 259}));
    EXPECT_EQ(calendarCentreIn(CGRect::make(0, 0, 0, 0)), (CGPoint{0, -25}));
}

TEST_F(WidgetCalendar, IsPushedByTheOriginOfTheFrame)
{
    EXPECT_EQ(calendarCentreIn(CGRect::make(20, 100, 280, 300)), (CGPoint{160, 225}));
    EXPECT_EQ(calendarCentreIn(CGRect::make(-40, -60, 321, 301)), (CGPoint{120.5, 65.5}));
}

TEST_F(WidgetCalendar, IgnoresTheOriginOfTheBounds)
{
    const auto widget = newWidget();
    widget->setBounds(CGRect::make(50, 60, 320, 300));
    send<"showCalendar">(widget.get());
    EXPECT_EQ(calendarOf(widget)->center(), (CGPoint{160, 125}));
}

TEST_F(WidgetCalendar, KeepsItsSizeAndIsShown)
{
    const auto widget = newWidget();
    send<"showCalendar">(widget.get());
    EXPECT_EQ(calendarOf(widget)->frame(), CGRect::make(0, -35, 320, 320));
    EXPECT_FALSE(calendarOf(widget)->isHidden());
}

TEST_F(WidgetCalendar, FollowsTheFrameWhenItIsShownAgain)
{
    const auto widget = newWidget();
    send<"showCalendar">(widget.get());
    widget->setFrame(CGRect::make(0, 0, 320, 500));
    EXPECT_EQ(calendarOf(widget)->center(), (CGPoint{160, 125}));
    send<"showCalendar">(widget.get());
    EXPECT_EQ(calendarOf(widget)->center(), (CGPoint{160, 225}));
}

// The weather card

using WidgetWeather = TestOn<RegionalPhone>;

TEST_F(WidgetWeather, IsAHiddenGreenCardAsLargeAsTheWidget)
{
    const auto widget = newWidget(CGRect::make(20, 100, 280, 300));
    send<"loadWeather">(widget.get());
    UIView* const card = cardOf(widget);
    EXPECT_EQ(classNameOf(card), "UIView");
    EXPECT_EQ(card->frame(), CGRect::make(0, 0, 280, 300));
    EXPECT_EQ(colourOf(send<"backgroundColor", UIColor*>(card)), (Colour{0, 1, 0, 1}));
    EXPECT_TRUE(card->isHidden());
    EXPECT_THAT(subviewsOf(widget), ElementsAre(calendarOf(widget), card));
}

TEST_F(WidgetWeather, SaysNowInWhite)
{
    const auto widget = newWidget();
    send<"loadWeather">(widget.get());
    const auto views = subviewsOf(cardOf(widget));
    ASSERT_EQ(views.size(), 1U);
    ASSERT_EQ(classNameOf(views[0]), "UILabel");
    auto* const label = static_cast<UILabel*>(views[0]);
    EXPECT_EQ(label->frame(), CGRect::make(0, 65, 50, 50));
    EXPECT_EQ(textOf(label->text()), "Now");
    EXPECT_EQ(textOf(label->font()->fontName()), ".HelveticaNeueInterface-UltraLightP2");
    EXPECT_EQ(label->font()->pointSize(), 17.5);
    EXPECT_EQ((send<"textAlignment", NSInteger>(label)), 1);
    EXPECT_EQ(colourOf(send<"textColor", UIColor*>(label)), (Colour{1, 1, 1, 1}));
    EXPECT_EQ(colourOf(send<"backgroundColor", UIColor*>(label)), (Colour{0, 0, 0, 0}));
}

TEST_F(WidgetWeather, IsOwnedByTheWidgetAndItsLabelByTheCardAlone)
{
    Owned<UIView> card;
    Owned<UIView> label;
    {
        const AutoreleasePool pool;
        const auto widget = newWidget();
        send<"loadWeather">(widget.get());
        card = cardOf(widget);
        label = subviewsOf(card).front();
        card->removeFromSuperview();
        EXPECT_EQ(cardOf(widget), card.get());
    }
    EXPECT_EQ(retainCount(card), 1U);
    EXPECT_EQ(retainCount(label), 2U);
    card = nullptr;
    EXPECT_EQ(retainCount(label), 1U);
}

TEST_F(WidgetWeather, CoversTheWidgetWhenItIsShown)
{
    const auto widget = newWidget(CGRect::make(20, 100, 280, 300));
    send<"loadWeather">(widget.get());
    widget->setFrame(CGRect::make(10, 10, 300, 200));
    EXPECT_EQ(cardOf(widget)->frame(), CGRect::make(0, 0, 280, 300));
    send<"showWeather">(widget.get());
    EXPECT_EQ(cardOf(widget)->frame(), CGRect::make(0, 0, 300, 200));
    EXPECT_FALSE(cardOf(widget)->isHidden());
}

TEST_F(WidgetWeather, FollowsTheBoundsAndNotTheFrame)
{
    const auto widget = newWidget();
    send<"loadWeather">(widget.get());
    widget->setBounds(CGRect::make(5, 6, 320, 300));
    send<"showWeather">(widget.get());
    EXPECT_EQ(cardOf(widget)->frame(), CGRect::make(5, 6, 320, 300));
}

TEST_F(WidgetWeather, IsMadeAnewWhenItIsLoadedAgain)
{
    const auto widget = newWidget();
    send<"loadWeather">(widget.get());
    const Owned<UIView> first(cardOf(widget));
    send<"loadWeather">(widget.get());
    EXPECT_NE(cardOf(widget), first.get());
    EXPECT_EQ(cardOf(widget)->superview(), widget.get());
}

TEST_F(WidgetWeather, ShownWithoutACardChangesNothing)
{
    const auto widget = newWidget();
    send<"showWeather">(widget.get());
    EXPECT_EQ(cardOf(widget), nullptr);
    EXPECT_TRUE(calendarOf(widget)->isHidden());
    EXPECT_THAT(subviewsOf(widget), ElementsAre(calendarOf(widget)));
}

// One face and the other

using WidgetFaces = TestOn<RegionalPhone>;

TEST_F(WidgetFaces, DoNotHideOneAnother)
{
    const auto widget = newWidget();
    send<"loadWeather">(widget.get());
    send<"showCalendar">(widget.get());
    EXPECT_TRUE(cardOf(widget)->isHidden());
    send<"showWeather">(widget.get());
    EXPECT_FALSE(calendarOf(widget)->isHidden());
    EXPECT_FALSE(cardOf(widget)->isHidden());
    send<"showCalendar">(widget.get());
    EXPECT_FALSE(calendarOf(widget)->isHidden());
    EXPECT_FALSE(cardOf(widget)->isHidden());
}

TEST_F(WidgetFaces, AreBothHiddenTogether)
{
    const auto widget = newWidget();
    send<"loadWeather">(widget.get());
    send<"showCalendar">(widget.get());
    send<"showWeather">(widget.get());
    send<"hideALL">(widget.get());
    EXPECT_TRUE(calendarOf(widget)->isHidden());
    EXPECT_TRUE(cardOf(widget)->isHidden());
}

TEST_F(WidgetFaces, AreHiddenCalendarFirst)
{
    static std::vector<id> hidden;
    static void (*setHidden)(UIView*, SEL, BOOL);
    const auto widget = newWidget();
    send<"loadWeather">(widget.get());
    setHidden = simulator::replaceMethod<"setHidden:">(
        objc_getClass("UIView"), +[](UIView* self, SEL selector, BOOL hides) {
            if (hides != NO)
                hidden.push_back(self);
            setHidden(self, selector, hides);
        });
    send<"hideALL">(widget.get());
    EXPECT_THAT(hidden, ElementsAre(calendarOf(widget), cardOf(widget)));
}

TEST_F(WidgetFaces, ThatAreAbsentArePassedOver)
{
    const auto widget = newWidget();
    send<"showCalendar">(widget.get());
    send<"hideALL">(widget.get());
    EXPECT_TRUE(calendarOf(widget)->isHidden());

    auto& calendar = variable<UIView*>(widget, "cal");
    calendar->removeFromSuperview();
    objc_release(calendar);
    calendar = nullptr;
    send<"showCalendar">(widget.get());
    send<"showWeather">(widget.get());
    send<"hideALL">(widget.get());
    EXPECT_THAT(subviewsOf(widget), IsEmpty());
}

// The end

using WidgetEnd = TestOn<RegionalPhone>;

TEST_F(WidgetEnd, ReleasesTheCardAndThenTheCalendar)
{
    watchViews();
    {
        const AutoreleasePool pool;
        const auto widget = newWidget();
        send<"loadWeather">(widget.get());
        watched = {{calendarOf(widget), "calendar"}, {cardOf(widget), "card"}};
        // As subviews they would outlive the variables.
        cardOf(widget)->removeFromSuperview();
        calendarOf(widget)->removeFromSuperview();
    }
    EXPECT_THAT(gone, ElementsAre("card", "calendar"));
}

TEST_F(WidgetEnd, TakesItsChildrenAlong)
{
    watchViews();
    {
        const AutoreleasePool pool;
        const auto widget = newWidget();
        send<"loadWeather">(widget.get());
        watched = {{widget.get(), "widget"}, {calendarOf(widget), "calendar"}, {cardOf(widget), "card"}};
    }
    EXPECT_THAT(watched, IsEmpty());
}

TEST_F(WidgetEnd, LeavesACalendarThatOutlivesItWithoutADelegate)
{
    Owned<UIView> calendar;
    {
        const AutoreleasePool pool;
        const auto widget = newWidget();
        calendar = calendarOf(widget);
    }
    EXPECT_EQ((send<"delegate", NSObject*>(calendar.get())), nullptr);
}

// Through the console

TEST(WidgetOverTheConsole, ShowsItsCalendarAboveTheMiddle)
{
    const Console console;
    const auto lines = linesOf(console, "let w send SVWidget alloc\n"
                                        "let w send w initWithFrame: 20,100,280,300\n"
                                        "show w.weather\n"
                                        "show w.cal.isHidden\n"
                                        "send w showCalendar\n"
                                        "show w.cal.center\n"
                                        "show w.cal.isHidden\n"
                                        "send w loadWeather\n"
                                        "send w showWeather\n"
                                        "show w.weather.subviews[0].text\n"
                                        "send w hideALL\n"
                                        "show w.cal.isHidden\n"
                                        "show w.weather.isHidden\n");
    EXPECT_THAT(lines,
                ElementsAre(nullptr, true, nullptr, Json({160, 225}), false, nullptr, nullptr, "Now", nullptr, true, true));
}
