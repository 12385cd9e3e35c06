#include <cstdlib>
#include <gmock/gmock.h>

#include "simulator/runtime/SimulatedClass.hpp"
#include "tests/support/Phone.hpp"

/// Which greeting belongs to which hour. The phone is in universal time here.

namespace {

NSInteger bucketAt(const std::string& time)
{
    freezeClockAtUniversalTime(time);
    return exportedFunction<NSInteger()>("dateStatus")();
}

NSString* greetingAt(const std::string& time)
{
    freezeClockAtUniversalTime(time);
    return exportedFunction<NSString*()>("dateStatusString")();
}

class Greeting : public testing::Test {
protected:
    Greeting()
    {
        ::setenv("TZ", "UTC", 1);
        phone_ = std::make_unique<InjectedPhone>();
    }

    /// Both functions must agree.
    static void expect(const std::string& hour, NSInteger bucket, const char* variable)
    {
        EXPECT_EQ(bucketAt("2014-03-05T" + hour), bucket) << hour;
        EXPECT_EQ(greetingAt("2014-03-05T" + hour), exportedVariable<NSString>(variable)) << hour;
    }

    static void expectMorning(const std::string& hour) { expect(hour, 0, "morningString"); }
    static void expectAfternoon(const std::string& hour) { expect(hour, 1, "afternoonString"); }
    static void expectEvening(const std::string& hour) { expect(hour, 2, "eveningString"); }
    static void expectNight(const std::string& hour) { expect(hour, 3, "nightString"); }

    std::unique_ptr<Phone> phone_;
};

} // namespace

TEST_F(Greeting, SixFiftyNineIsNight)
{
    expectNight("06:59:59");
}

TEST_F(Greeting, SevenIsMorning)
{
    expectMorning("07:00:00");
}

TEST_F(Greeting, TwelveFiftyNineIsMorning)
{
    expectMorning("12:59:59");
}

TEST_F(Greeting, ThirteenIsAfternoon)
{
    expectAfternoon("13:00:00");
}

TEST_F(Greeting, SeventeenFiftyNineIsAfternoon)
{
    expectAfternoon("17:59:59");
}

TEST_F(Greeting, EighteenIsEvening)
{
    expectEvening("18:00:00");
}

TEST_F(Greeting, TwentyOneFiftyNineIsEvening)
{
    expectEvening("21:59:59");
}

TEST_F(Greeting, TwentyTwoIsNight)
{
    expectNight("22:00:00");
}

TEST_F(Greeting, TwentyThreeFiftyNineIsNight)
{
    expectNight("23:59:59");
}

TEST_F(Greeting, MidnightIsNight)
{
    expectNight("00:00:00");
}

TEST_F(Greeting, FollowsTheClockFromCallToCall)
{
    EXPECT_EQ(textOf(greetingAt("2014-03-05T08:00:00")), "Good morning, Pal.");
    EXPECT_EQ(textOf(greetingAt("2014-03-05T15:00:00")), "Good afternoon, Pal.");
    EXPECT_EQ(textOf(greetingAt("2014-03-05T20:00:00")), "Good evening, Pal.");
    EXPECT_EQ(textOf(greetingAt("2014-03-06T02:00:00")), "Good night, Pal.");
}

TEST_F(Greeting, IsTheVeryObjectThatTheVariableHoldsNow)
{
    NSString* const other = text("Hello.");
    exportedVariable<NSString>("morningString") = other;
    EXPECT_EQ(greetingAt("2014-03-05T08:00:00"), other);
}

TEST_F(Greeting, IsNotOwnedByTheCaller)
{
    const NSUInteger before = retainCount(exportedVariable("eveningString"));
    {
        const AutoreleasePool pool;
        greetingAt("2014-03-05T19:00:00");
    }
    EXPECT_EQ(retainCount(exportedVariable("eveningString")), before);
}

TEST_F(Greeting, StaysWithTheCallerWhenTheVariableGetsAnother)
{
    id weak = nullptr;
    NSString* const greeting = NSString::alloc()->initWithUTF8String("a greeting that is long enough to be an object");
    exportedVariable<NSString>("morningString") = greeting;
    objc_storeWeak(&weak, greeting);
    {
        const AutoreleasePool pool;
        EXPECT_EQ(greetingAt("2014-03-05T08:00:00"), greeting);
        exportedVariable<NSString>("morningString") = nullptr;
        objc_release(greeting);
        EXPECT_EQ(weak, greeting);
    }
    EXPECT_EQ(weak, nullptr);
}

TEST_F(Greeting, IsNilWhenTheVariableIsEmptied)
{
    for (const char* variable : {"morningString", "afternoonString", "eveningString", "nightString"})
        exportedVariable(variable) = nullptr;
    for (const char* hour : {"08", "14", "19", "23"})
        EXPECT_EQ(greetingAt("2014-03-05T" + std::string(hour) + ":00:00"), nullptr) << hour;
}

// The calendar

namespace {

int calendarsMade = 0;
int calendarsGone = 0;
std::vector<std::string> identifiers;
std::vector<NSUInteger> unitMasks;

NSObject* (*previousInit)(NSObject*, SEL, NSString*);
void (*previousDealloc)(NSObject*, SEL);
NSObject* (*previousComponents)(NSObject*, SEL, NSUInteger, NSObject*);

/// Follows the calendars from their making to their end.
void followCalendars()
{
    // Foundation gives calendars of a class of its own.
    NSObject* const sample = send<"currentCalendar", NSObject*>(objc_getClass("NSCalendar"));
    const Class cls = object_getClass(sample);
    previousInit = simulator::replaceMethod<"initWithCalendarIdentifier:">(
        cls, +[](NSObject* self, SEL message, NSString* identifier) -> NSObject* {
            ++calendarsMade;
            identifiers.push_back(textOf(reinterpret_cast<NSObject*>(identifier)));
            return previousInit(self, message, identifier);
        });
    previousComponents = simulator::replaceMethod<"components:fromDate:">(
        cls, +[](NSObject* self, SEL message, NSUInteger units, NSObject* date) -> NSObject* {
            unitMasks.push_back(units);
            return previousComponents(self, message, units, date);
        });
    previousDealloc = simulator::replaceMethod<"dealloc">(
        cls, +[](NSObject* self, SEL message) {
            ++calendarsGone;
            previousDealloc(self, message);
        });
}

} // namespace

TEST_F(Greeting, MakesAGregorianCalendarForEachCall)
{
    followCalendars();
    bucketAt("2014-03-05T08:00:00");
    greetingAt("2014-03-05T08:00:00");
    EXPECT_EQ(calendarsMade, 2);
    EXPECT_THAT(identifiers, testing::Each("gregorian"));
}

TEST_F(Greeting, AsksTheCalendarForTheHourAlone)
{
    followCalendars();
    bucketAt("2014-03-05T08:00:00");
    greetingAt("2014-03-05T08:00:00");
    EXPECT_THAT(unitMasks, testing::ElementsAre(32U, 32U));
}

TEST_F(Greeting, LetsGoOfItsCalendarBeforeItReturns)
{
    followCalendars();
    bucketAt("2014-03-05T08:00:00");
    EXPECT_EQ(calendarsGone, 1);
    greetingAt("2014-03-05T08:00:00");
    EXPECT_EQ(calendarsGone, 2);
}
