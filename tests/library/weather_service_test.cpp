#include <cstdint>
#include <gmock/gmock.h>
#include <limits>
#include <set>

#include "platform/Weather/Weather.hpp"
#include "simulator/foundation/surroundings.hpp"
#include "simulator/runtime/SimulatedClass.hpp"
#include "tests/support/MessageLog.hpp"
#include "tests/support/Phone.hpp"
#include "tests/support/list_items.hpp"
#include "tests/support/runtime_calls.hpp"

/// How the weather sentence deals with the weather service: what it sends, in which order, and what it makes of the answers.

namespace {

using testing::ElementsAre;

NSString* sentence()
{
    return exportedFunction<NSString*()>("getTempString")();
}

std::string sentenceText()
{
    const AutoreleasePool pool;
    return textOf(sentence());
}

/// What the service answers.
struct Answers {
    NSObject* location = nullptr;
    NSObject* city = nullptr;
    NSObject* temperature = nullptr;
    float celsius = 0;
    NSUInteger conditionCode = 0;
    BOOL showsCelsius = YES;
};
Answers answers;

template <FixedString Name, class Result, class... Arguments>
void answer(const char* className, Result (*implementation)(NSObject*, SEL, Arguments...))
{
    simulator::replaceMethod<Name>(objc_getClass(className), implementation);
}

template <FixedString ClassName>
NSObject* spyObject(const char* name)
{
    struct State {};
    simulator::SimulatedClass<State>(ClassName.text, "NSObject").registerClass();
    NSObject* const object = send<"new", NSObject*>(objc_getClass(ClassName.text));
    MessageLog::name(object, name);
    return object;
}

/// A service that notes every message and gives the answers above.
void takeNotes()
{
    send<"class", Class>(objc_getClass("WeatherLocationManager"));
    send<"class", Class>(objc_getClass("WeatherPreferences"));
    send<"class", Class>(objc_getClass("LocationUpdater"));
    MessageLog::name(objc_getClass("WeatherLocationManager"), "WeatherLocationManager");
    MessageLog::name(objc_getClass("WeatherPreferences"), "WeatherPreferences");
    MessageLog::name(objc_getClass("LocationUpdater"), "LocationUpdater");
    static NSObject* const manager = WeatherLocationManager::sharedWeatherLocationManager();
    static NSObject* const preferences = WeatherPreferences::sharedPreferences();
    static NSObject* const updater = LocationUpdater::sharedLocationUpdater();
    MessageLog::name(manager, "manager");
    MessageLog::name(preferences, "preferences");
    MessageLog::name(updater, "updater");

    const auto metaclass = [](const char* name) { return simulator::metaclassOf(objc_getClass(name)); };
    simulator::replaceMethod<"sharedWeatherLocationManager">(
        metaclass("WeatherLocationManager"), +[](NSObject* self, SEL message) {
            MessageLog::note(self, message);
            return manager;
        });
    simulator::replaceMethod<"sharedPreferences">(
        metaclass("WeatherPreferences"), +[](NSObject* self, SEL message) {
            MessageLog::note(self, message);
            return preferences;
        });
    simulator::replaceMethod<"sharedLocationUpdater">(
        metaclass("LocationUpdater"), +[](NSObject* self, SEL message) {
            MessageLog::note(self, message);
            return updater;
        });
    answer<"setLocationTrackingActive:">(
        "WeatherLocationManager", +[](id self, SEL message, BOOL active) { MessageLog::note(self, message, active); });
    answer<"location">(
        "WeatherLocationManager", +[](id self, SEL message) -> id {
            MessageLog::note(self, message);
            return answers.location;
        });
    answer<"setLocalWeatherEnabled:">(
        "WeatherPreferences", +[](id self, SEL message, BOOL enabled) { MessageLog::note(self, message, enabled); });
    answer<"localWeatherCity">(
        "WeatherPreferences", +[](id self, SEL message) -> id {
            MessageLog::note(self, message);
            return answers.city;
        });
    answer<"isCelsius">(
        "WeatherPreferences", +[](id self, SEL message) -> BOOL {
            MessageLog::note(self, message);
            return answers.showsCelsius;
        });
    answer<"updateWeatherForLocation:city:">(
        "LocationUpdater", +[](id self, SEL message, id location, id city) { MessageLog::note(self, message, location, city); });
    answer<"handleCompletionForCity:withUpdateDetail:">(
        "LocationUpdater",
        +[](id self, SEL message, id city, NSUInteger detail) { MessageLog::note(self, message, city, detail); });

    // The city and its temperature are of classes that the library has never heard of.
    answers.location = spyObject<"SpyLocation">("location");
    answers.city = spyObject<"SpyCity">("city");
    simulator::addMethod<"update">(objc_getClass("SpyCity"), +[](id self, SEL message) { MessageLog::note(self, message); });
    simulator::addMethod<"temperature">(
        objc_getClass("SpyCity"), +[](id self, SEL message) -> id {
            MessageLog::note(self, message);
            return answers.temperature;
        });
    simulator::addMethod<"conditionCode">(
        objc_getClass("SpyCity"), +[](id self, SEL message) -> NSUInteger {
            MessageLog::note(self, message);
            return answers.conditionCode;
        });
    answers.temperature = spyObject<"SpyTemperature">("temperature");
    simulator::addMethod<"floatValue">(
        objc_getClass("SpyTemperature"), +[](id self, SEL message) -> float {
            MessageLog::note(self, message);
            return answers.celsius;
        });
    simulator::addMethod<"description">(objc_getClass("SpyTemperature"), +[](id, SEL) { return constantString<"a few">(); });
}

std::vector<std::string> messagesOfOneSentence()
{
    MessageLog::messages().clear();
    sentenceText();
    return MessageLog::messages();
}

int countOf(const std::vector<std::string>& messages, const std::string& message)
{
    return static_cast<int>(std::ranges::count(messages, message));
}

} // namespace

using WeatherService = TestOn<InjectedPhone>;

TEST_F(WeatherService, IsAskedInAFixedOrder)
{
    takeNotes();
    EXPECT_THAT(messagesOfOneSentence(),
                ElementsAre("WeatherLocationManager sharedWeatherLocationManager", "manager setLocationTrackingActive: YES",
                            "WeatherPreferences sharedPreferences", "preferences setLocalWeatherEnabled: YES",
                            "LocationUpdater sharedLocationUpdater", "WeatherLocationManager sharedWeatherLocationManager",
                            "manager location", "WeatherPreferences sharedPreferences", "preferences localWeatherCity",
                            "updater updateWeatherForLocation:city: location city", "WeatherPreferences sharedPreferences",
                            "preferences localWeatherCity", "updater handleCompletionForCity:withUpdateDetail: city 0",
                            "WeatherPreferences sharedPreferences", "preferences localWeatherCity", "city update",
                            "WeatherPreferences sharedPreferences", "preferences localWeatherCity", "city temperature",
                            "WeatherPreferences sharedPreferences", "preferences localWeatherCity", "city conditionCode",
                            "temperature floatValue", "WeatherPreferences sharedPreferences", "preferences isCelsius"));
}

TEST_F(WeatherService, IsAskedForTheCityFiveTimes)
{
    takeNotes();
    EXPECT_EQ(countOf(messagesOfOneSentence(), "preferences localWeatherCity"), 5);
}

TEST_F(WeatherService, IsAskedForTheLocationManagerTwice)
{
    takeNotes();
    EXPECT_EQ(countOf(messagesOfOneSentence(), "WeatherLocationManager sharedWeatherLocationManager"), 2);
}

TEST_F(WeatherService, IsAskedForTheUpdaterOnce)
{
    takeNotes();
    EXPECT_EQ(countOf(messagesOfOneSentence(), "LocationUpdater sharedLocationUpdater"), 1);
}

TEST_F(WeatherService, IsSwitchedOnByEverySentence)
{
    takeNotes();
    messagesOfOneSentence();
    const auto again = messagesOfOneSentence();
    EXPECT_EQ(countOf(again, "manager setLocationTrackingActive: YES"), 1);
    EXPECT_EQ(countOf(again, "preferences setLocalWeatherEnabled: YES"), 1);
}

TEST_F(WeatherService, IsAskedTheSameEveryTime)
{
    takeNotes();
    const auto first = messagesOfOneSentence();
    EXPECT_EQ(messagesOfOneSentence(), first);
}

TEST_F(WeatherService, IsAskedForTheValueOfTheTemperatureInFahrenheitToo)
{
    takeNotes();
    answers.showsCelsius = NO;
    EXPECT_EQ(countOf(messagesOfOneSentence(), "temperature floatValue"), 1);
}

TEST_F(WeatherService, StaysSwitchedOn)
{
    sentenceText();
    const BOOL isTracking = send<"isLocationTrackingActive", BOOL>(WeatherLocationManager::sharedWeatherLocationManager());
    const BOOL isEnabled = send<"isLocalWeatherEnabled", BOOL>(WeatherPreferences::sharedPreferences());
    EXPECT_EQ(isTracking, YES);
    EXPECT_EQ(isEnabled, YES);
}

namespace {

/// How often the city is asked for while that happens. Each sentence asks five times.
template <class Happening>
int sentencesDuring(const Happening& happening)
{
    MessageLog::messages().clear();
    happening();
    return countOf(MessageLog::messages(), "preferences localWeatherCity") / 5;
}

} // namespace

TEST_F(WeatherService, IsAskedTwiceAtALockOnceAtItsEndAndOnceAtEachLayoutPass)
{
    takeNotes();
    EXPECT_EQ(sentencesDuring([] { simulator::lockScreen(); }), 2);
    EXPECT_EQ(sentencesDuring([] { simulator::listController()->prepareForTeardown(); }), 1);
    const auto layOut = [] {
        simulator::listView()->setNeedsLayout();
        simulator::listView()->layoutIfNeeded();
    };
    EXPECT_EQ(sentencesDuring(layOut), 1);
    EXPECT_EQ(sentencesDuring([] { notify("com.apple.mobilemail"); }), 0);
    EXPECT_EQ(sentencesDuring([] { simulator::listController()->setInScreenOffMode(true); }), 1);
}

// The city that the service hands out

namespace {

City* localCity()
{
    return WeatherPreferences::sharedPreferences()->localWeatherCity();
}

struct LocalCity : TestOn<InjectedPhone> {
    LocalCity() { WeatherPreferences::sharedPreferences()->setLocalWeatherEnabled(true); }
};

} // namespace

TEST_F(LocalCity, IsMadeAnewAtEachCall)
{
    const AutoreleasePool pool;
    City* const first = localCity();
    EXPECT_NE(localCity(), first);
}

TEST_F(LocalCity, IsKeptByNobody)
{
    id weak = nullptr;
    {
        const AutoreleasePool pool;
        objc_storeWeak(&weak, localCity());
        EXPECT_NE(weak, nullptr);
    }
    EXPECT_EQ(weak, nullptr);
}

TEST_F(LocalCity, KeepsTheRecordThatItWasMadeFrom)
{
    City* const city = localCity();
    simulator::surroundings().weather = simulator::LocalWeather{"-3", 16};
    city->update();
    LocationUpdater::sharedLocationUpdater()->updateWeatherForLocation_city(nullptr, city);
    EXPECT_EQ(textOf(city->temperature()), "21");
    EXPECT_EQ(city->conditionCode(), 26U);
    EXPECT_EQ(textOf(localCity()->temperature()), "-3");
    EXPECT_EQ(localCity()->conditionCode(), 16U);
}

TEST_F(LocalCity, HasNoLocationThoughTrackingIsOn)
{
    WeatherLocationManager::sharedWeatherLocationManager()->setLocationTrackingActive(true);
    EXPECT_EQ(WeatherLocationManager::sharedWeatherLocationManager()->location(), nullptr);
}

// What becomes of the answers

using WeatherSentence = TestOn<InjectedPhone>;

TEST_F(WeatherSentence, ShowsTheTemperatureObjectAsItReadsInCelsius)
{
    takeNotes();
    answers.celsius = 12;
    answers.conditionCode = 26;
    EXPECT_EQ(sentenceText(), "It's a few° C and Cloudy.");
}

TEST_F(WeatherSentence, ShowsTheTemperatureObjectsValueInFahrenheit)
{
    takeNotes();
    answers.celsius = 12;
    answers.conditionCode = 26;
    answers.showsCelsius = NO;
    EXPECT_EQ(sentenceText(), "It's 54° F and Cloudy.");
}

TEST_F(WeatherSentence, RoundsHalvesAwayFromZero)
{
    takeNotes();
    answers.showsCelsius = NO;
    const std::pair<float, const char*> cases[] = {
        {-17.5F, "1"},   // 0.5
        {-22.5F, "-9"},  // -8.5
        {-2.5F, "28"},   // 27.5
        {2.5F, "37"},    // 36.5
        {-27.5F, "-18"}, // -17.5
        {-37.5F, "-36"}, // -35.5
        {21.4F, "71"},   {-40, "-40"}, {100, "212"},
    };
    for (const auto& [celsius, fahrenheit] : cases) {
        answers.celsius = celsius;
        const std::string shown = sentenceText();
        EXPECT_TRUE(shown.starts_with("It's " + std::string(fahrenheit) + "°")) << celsius << ": " << shown;
    }
}

TEST_F(WeatherSentence, HasNotAvailableForACityWithoutTemperatureAndCode)
{
    takeNotes();
    answers.temperature = nullptr;
    EXPECT_EQ(sentenceText(), "It's (null)° C and Not Available.");
    answers.showsCelsius = NO;
    EXPECT_EQ(sentenceText(), "It's 32° F and Not Available.");
}

TEST_F(WeatherSentence, KeepsTheWordOfACityWithoutTemperature)
{
    simulator::surroundings().weather = simulator::LocalWeather{std::nullopt, 32};
    EXPECT_EQ(sentenceText(), "It's (null)° C and Sunny.");
    simulator::surroundings().showsCelsius = false;
    EXPECT_EQ(sentenceText(), "It's 32° F and Sunny.");
}

TEST_F(WeatherSentence, LooksAtTheLow32BitsOfACodeAlone)
{
    takeNotes();
    const std::pair<std::int64_t, const char*> cases[] = {
        {(std::int64_t{1} << 32) + 26, "Cloudy"},
        {(std::int64_t{7} << 32) + 32, "Sunny"},
        {(std::int64_t{1} << 32), "Not Available"},
        {std::numeric_limits<std::int64_t>::min() + 47, "Thunderstorm"},
        {std::numeric_limits<std::int64_t>::min(), "Not Available"},
        {std::numeric_limits<std::int64_t>::max(), "Not Available"},
        {-1, "Not Available"},
        {std::numeric_limits<std::int32_t>::min(), "Not Available"},
        {std::numeric_limits<std::int32_t>::max(), "Not Available"},
        {std::int64_t{1} << 31, "Not Available"},
        {(std::int64_t{1} << 32) - 1, "Not Available"},
    };
    for (const auto& [code, word] : cases) {
        // Where an integer of the platform has 32 bits, these are all there is.
        answers.conditionCode = static_cast<NSUInteger>(code);
        EXPECT_EQ(sentenceText(), "It's a few° C and " + std::string(word) + ".") << code;
    }
}

TEST_F(WeatherSentence, IsANewStringEveryTime)
{
    NSString* const first = sentence();
    NSString* const second = sentence();
    EXPECT_NE(first, second);
    EXPECT_EQ(textOf(first), textOf(second));
}

TEST_F(WeatherSentence, IsAutoreleased)
{
    id weak = nullptr;
    {
        const AutoreleasePool pool;
        NSString* const made = sentence();
        objc_storeWeak(&weak, made);
        EXPECT_EQ(retainCount(made), 1U);
        EXPECT_EQ(weak, made);
    }
    EXPECT_EQ(weak, nullptr);
}

TEST_F(WeatherSentence, FollowsTheWeatherBetweenTwoCalls)
{
    simulator::surroundings().weather = simulator::LocalWeather{"21", 26};
    EXPECT_EQ(sentenceText(), "It's 21° C and Cloudy.");
    simulator::surroundings().weather = simulator::LocalWeather{"-3", 16};
    EXPECT_EQ(sentenceText(), "It's -3° C and Snow.");
    simulator::surroundings().showsCelsius = false;
    EXPECT_EQ(sentenceText(), "It's 27° F and Snow.");
}

TEST_F(WeatherSentence, HasADegreeSignOfOneCharacter)
{
    simulator::surroundings().weather = simulator::LocalWeather{"7", 32};
    NSString* const made = sentence();
    ASSERT_EQ(textOf(made), "It's 7\u00B0 C and Sunny.");
    EXPECT_EQ(made->characterAtIndex(6), 0x00B0);
    EXPECT_EQ(made->characterAtIndex(7), ' ');
    EXPECT_EQ(made->length(), 20U);
}

namespace {

/// Something that the service has let go of before the sentence was made.
id weakObject = nullptr;
bool wasThere = false;

void letGoOf(NSObject*& object)
{
    objc_release(object);
    wasThere = weakObject != nullptr;
    object = nullptr;
}

/// A sentence, in the middle of which the service forgets what `forgotten` holds.
std::string sentenceWithout(NSObject* forgotten)
{
    objc_storeWeak(&weakObject, forgotten);
    return sentenceText();
}

} // namespace

TEST_F(WeatherSentence, IsMadeOfATemperatureThatTheCityHasForgotten)
{
    takeNotes();
    simulator::replaceMethod<"conditionCode">(
        objc_getClass("SpyCity"), +[](NSObject*, SEL) -> NSUInteger {
            letGoOf(answers.temperature);
            return 26;
        });
    EXPECT_EQ(sentenceWithout(answers.temperature), "It's a few° C and Cloudy.");
    EXPECT_TRUE(wasThere);
    EXPECT_EQ(weakObject, nullptr);
}

TEST_F(WeatherSentence, TellsTheUpdaterOfALocationThatTheManagerHasForgotten)
{
    takeNotes();
    simulator::replaceMethod<"localWeatherCity">(
        objc_getClass("WeatherPreferences"), +[](NSObject*, SEL) -> id {
            if (answers.location != nullptr)
                letGoOf(answers.location);
            return answers.city;
        });
    sentenceWithout(answers.location);
    EXPECT_TRUE(wasThere);
    EXPECT_EQ(weakObject, nullptr);
}

TEST_F(WeatherSentence, KeepsTheUpdaterUntilItIsMade)
{
    takeNotes();
    static NSObject* updater = nullptr;
    updater = spyObject<"SpyUpdater">("updater");
    const Class cls = objc_getClass("SpyUpdater");
    simulator::addMethod<"updateWeatherForLocation:city:">(cls, +[](id, SEL, id, id) { letGoOf(updater); });
    simulator::addMethod<"handleCompletionForCity:withUpdateDetail:">(cls, +[](id, SEL, id, NSUInteger) {});
    simulator::replaceMethod<"sharedLocationUpdater">(
        simulator::metaclassOf(objc_getClass("LocationUpdater")), +[](NSObject*, SEL) { return updater; });
    sentenceWithout(updater);
    EXPECT_TRUE(wasThere);
    EXPECT_EQ(weakObject, nullptr);
}

TEST_F(WeatherSentence, HasTheWordThatThereWasBeforeTheTemperatureWasRead)
{
    takeNotes();
    answers.conditionCode = 26;
    static NSObject*& cloudy = exportedVariable("cloudyString");
    cloudy = NSString::alloc()->initWithUTF8String("a word that is long enough to be an object");
    simulator::replaceMethod<"floatValue">(
        objc_getClass("SpyTemperature"), +[](NSObject*, SEL) -> float {
            letGoOf(cloudy);
            return 12;
        });
    EXPECT_EQ(sentenceWithout(cloudy), "It's a few° C and a word that is long enough to be an object.");
    EXPECT_TRUE(wasThere);
}

TEST_F(WeatherSentence, ReadsTheTemperatureBeforeItAsksForTheUnit)
{
    takeNotes();
    simulator::replaceMethod<"floatValue">(
        objc_getClass("SpyTemperature"), +[](NSObject*, SEL) -> float {
            answers.showsCelsius = NO;
            return 12;
        });
    EXPECT_EQ(sentenceText(), "It's 54° F and Not Available.");
}

// Condition words

using ConditionWords = TestOn<InjectedPhone>;

TEST_F(ConditionWords, AreExportedUnderTheirNames)
{
    constexpr std::pair<const char*, const char*> words[] = {
        {"stormString", "Storm"},
        {"hurricaneString", "Hurricane"},
        {"thunderstromString", "Thunderstorm"},
        {"snowString", "Snow"},
        {"sleetString", "Sleet"},
        {"rainString", "Rain"},
        {"drizzleString", "Drizzle"},
        {"showersString", "Showers"},
        {"flurriesString", "Snow Flurries"},
        {"snowshowersString", "Snow Showers"},
        {"hailString", "Hail"},
        {"dustString", "Dust"},
        {"fogString", "Fog"},
        {"hazeString", "Haze"},
        {"smokeString", "Smoke"},
        {"blusterString", "Blustery"},
        {"windString", "Wind"},
        {"coldString", "Cold"},
        {"cloudyString", "Cloudy"},
        {"clearString", "Clear"},
        {"sunnyString", "Sunny"},
        {"fairString", "Fair"},
        {"hotString", "Hot"},
        {"snowyString", "Snowy"},
        {"notAvString", "Not Available"},
    };
    for (const auto& [name, word] : words)
        EXPECT_EQ(textOf(exportedVariable(name)), word) << name;
}

TEST_F(ConditionWords, ShowInTheNextSentenceWhenTheyAreChanged)
{
    exportedVariable<NSString>("cloudyString") = NSString::alloc()->initWithUTF8String("Grey");
    simulator::surroundings().weather = simulator::LocalWeather{"21", 26};
    EXPECT_EQ(sentenceText(), "It's 21° C and Grey.");
}

TEST_F(ConditionWords, EachBelongToCodesOfTheirOwn)
{
    // The variables are told apart even where their texts are alike.
    const std::pair<const char*, std::set<long>> codesOfWords[] = {
        {"stormString", {1}},
        {"hurricaneString", {2}},
        {"thunderstromString", {3, 4, 37, 38, 39, 45, 47}},
        {"snowString", {5, 15, 16}},
        {"sleetString", {6, 7, 18}},
        {"rainString", {8, 10}},
        {"drizzleString", {9}},
        {"showersString", {11, 12, 40}},
        {"flurriesString", {13}},
        {"snowshowersString", {14}},
        {"hailString", {17, 35}},
        {"dustString", {19}},
        {"fogString", {20}},
        {"hazeString", {21}},
        {"smokeString", {22}},
        {"blusterString", {23}},
        {"windString", {24}},
        {"coldString", {25}},
        {"cloudyString", {26, 27, 28, 29, 30, 44}},
        {"clearString", {31}},
        {"sunnyString", {32}},
        {"fairString", {33, 34}},
        {"hotString", {36}},
        {"snowyString", {41, 42, 43, 46}},
        {"notAvString", {0, 48, 49}},
    };
    for (const auto& [name, codes] : codesOfWords) {
        auto& variable = exportedVariable<NSString>(name);
        NSString* const before = variable;
        variable = NSString::alloc()->initWithUTF8String("CHANGED");
        std::set<long> changed;
        for (long code = 0; code < 50; ++code) {
            simulator::surroundings().weather = simulator::LocalWeather{"1", code};
            if (sentenceText() == "It's 1° C and CHANGED.")
                changed.insert(code);
        }
        EXPECT_EQ(changed, codes) << name;
        variable = before;
    }
}

TEST_F(ConditionWords, LeaveTheSentenceWithoutAWordWhenTheVariableIsEmptied)
{
    exportedVariable<NSString>("cloudyString") = nullptr;
    simulator::surroundings().weather = simulator::LocalWeather{"21", 26};
    EXPECT_EQ(sentenceText(), "It's 21° C and (null).");
}

// Class handles

using WeatherClasses = TestOn<InjectedPhone>;

TEST_F(WeatherClasses, AreNotLookedUpAtLoad)
{
    EXPECT_EQ(lookupsOf("WeatherPreferences"), 0);
}

TEST_F(WeatherClasses, AreLookedUpOnce)
{
    sentenceText();
    sentenceText();
    EXPECT_EQ(lookupsOf("WeatherLocationManager"), 1);
    EXPECT_EQ(lookupsOf("WeatherPreferences"), 1);
    EXPECT_EQ(lookupsOf("LocationUpdater"), 1);
    EXPECT_EQ(lookupsOf("City"), 0);
}

TEST_F(WeatherClasses, AreLookedUpAtEveryUseWhileTheyAreMissing)
{
    hideClass("WeatherLocationManager");
    hideClass("LocationUpdater");
    sentenceText();
    sentenceText();
    EXPECT_EQ(lookupsOf("WeatherLocationManager"), 4);
    EXPECT_EQ(lookupsOf("LocationUpdater"), 2);
    EXPECT_EQ(lookupsOf("WeatherPreferences"), 1);
}

TEST_F(WeatherClasses, AreUsedFromTheMomentTheyAppear)
{
    hideClass("WeatherPreferences");
    EXPECT_EQ(sentenceText(), "It's 32° F and Not Available.");
    showClass("WeatherPreferences");
    EXPECT_EQ(sentenceText(), "It's 21° C and Cloudy.");
}

TEST_F(WeatherClasses, GiveTheEmptySentenceWithoutPreferences)
{
    hideClass("WeatherPreferences");
    EXPECT_EQ(sentenceText(), "It's 32° F and Not Available.");
}

TEST_F(WeatherClasses, AreNotNeededForTheLocation)
{
    hideClass("WeatherLocationManager");
    takeNotes();
    answers.conditionCode = 26;
    EXPECT_EQ(sentenceText(), "It's a few° C and Cloudy.");
    EXPECT_EQ(countOf(messagesOfOneSentence(), "updater updateWeatherForLocation:city: nil city"), 1);
}

TEST_F(WeatherClasses, AreNotNeededForTheUpdate)
{
    hideClass("LocationUpdater");
    takeNotes();
    answers.conditionCode = 26;
    EXPECT_EQ(sentenceText(), "It's a few° C and Cloudy.");
    EXPECT_EQ(countOf(messagesOfOneSentence(), "city update"), 1);
}

TEST_F(WeatherClasses, MayAllBeMissing)
{
    hideClass("WeatherLocationManager");
    hideClass("WeatherPreferences");
    hideClass("LocationUpdater");
    EXPECT_EQ(sentenceText(), "It's 32° F and Not Available.");
}
