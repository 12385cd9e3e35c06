#include <gtest/gtest.h>

#include "platform/UIKit/UIImage.hpp"
#include "platform/Weather/Weather.hpp"
#include "simulator/foundation/surroundings.hpp"
#include "simulator/runtime/SimulatedClass.hpp"
#include "tests/support/MorningPhone.hpp"
#include "tests/support/objects.hpp"
#include "tests/transcripts/text_tables.hpp"

/// The sentences and the drawing of texts.

namespace {

using tables::Drawing;
using tables::Weather;

NSString* getTempString()
{
    return exportedFunction<NSString*()>("getTempString")();
}

/// The sentence at its first use in a process.
void expectFirstSentence(Weather weather)
{
    const InjectedMorningPhone phone;
    weather.isFirst = true;
    if (weather.hasCity)
        simulator::surroundings().weather = simulator::LocalWeather{weather.temperature, weather.code};
    else
        simulator::surroundings().weather = std::nullopt;
    simulator::surroundings().showsCelsius = weather.isCelsius;
    for (const std::string& name : weather.missing)
        hideClass(name);
    Transcript().expect([] { getTempString(); }, tables::weather(weather));
}

} // namespace

TEST(WeatherTranscript, InCelsius)
{
    expectFirstSentence({.temperature = "21.4"});
}

TEST(WeatherTranscript, InFahrenheit)
{
    expectFirstSentence({.temperature = "21.4", .code = 32, .word = "Sunny", .isCelsius = false});
}

TEST(WeatherTranscript, ForAConditionBelowZero)
{
    expectFirstSentence({.code = -1, .word = "Not Available"});
}

TEST(WeatherTranscript, WithoutATemperature)
{
    expectFirstSentence({.temperature = std::nullopt});
}

TEST(WeatherTranscript, WithoutATemperatureInFahrenheit)
{
    expectFirstSentence({.temperature = std::nullopt, .isCelsius = false});
}

TEST(WeatherTranscript, WithoutACity)
{
    expectFirstSentence({.hasCity = false});
}

TEST(WeatherTranscript, WithoutTheLocationManager)
{
    expectFirstSentence({.missing = {"WeatherLocationManager"}});
}

TEST(WeatherTranscript, WithoutThePreferences)
{
    expectFirstSentence({.missing = {"WeatherPreferences"}});
}

TEST(WeatherTranscript, WithoutTheUpdater)
{
    expectFirstSentence({.missing = {"LocationUpdater"}});
}

TEST(WeatherTranscript, WithoutAnyOfTheService)
{
    expectFirstSentence({.missing = {"WeatherLocationManager", "WeatherPreferences", "LocationUpdater"}});
}

TEST(WeatherTranscript, TheSecondTime)
{
    const InjectedMorningPhone phone;
    getTempString();
    Transcript().expect([] { getTempString(); }, tables::weather());
}

TEST(WeatherTranscript, HandsTheLocationOn)
{
    const InjectedMorningPhone phone;
    getTempString();
    static id here;
    here = newObject("NSObject");
    simulator::replaceMethod<"location">(
        objc_getClass("WeatherLocationManager"), +[](WeatherLocationManager*, SEL) { return here; });
    Transcript().expect([] { getTempString(); }, tables::weather({.location = "here"}));
}

// The greeting

TEST(GreetingTranscript, OfTheBucket)
{
    const InjectedMorningPhone phone;
    Transcript().expect([] { exportedFunction<NSInteger()>("dateStatus")(); }, tables::hour());
}

TEST(GreetingTranscript, OfTheText)
{
    const InjectedMorningPhone phone;
    Transcript().expect([] { exportedFunction<NSString*()>("dateStatusString")(); }, tables::hour());
}

// Texts drawn into images

namespace {

using Draw = UIImage*(NSString*, UIImage*, CGPoint);

class DrawingTranscript : public testing::TestWithParam<const char*> {
protected:
    UIImage* imageOf(const char* name)
    {
        return UIImage::imageWithContentsOfFile(text(std::string("/Library/Application Support/Solvane/") + name));
    }

    void expect(NSString* text, UIImage* image, CGPoint point)
    {
        const Drawing drawing{image == nullptr ? "nil" : "image", image->size(), text, point};
        Transcript()
            .name("image", image)
            .expect([&] { exportedFunction<Draw>(GetParam())(text, image, point); }, tables::drawing(drawing));
    }

    InjectedMorningPhone phone_;
};

} // namespace

TEST_P(DrawingTranscript, OfATextAndAnImage)
{
    expect(text("31"), imageOf("Calendar.png"), {10, 11});
}

TEST_P(DrawingTranscript, OfAnEmptyText)
{
    expect(text(""), imageOf("Notification.png"), {10, 11});
}

TEST_P(DrawingTranscript, WithoutAText)
{
    expect(nullptr, imageOf("Badge.png"), {12.5, 7.5});
}

TEST_P(DrawingTranscript, WithoutAnImage)
{
    expect(text("31"), nullptr, {10, 11});
}

INSTANTIATE_TEST_SUITE_P(Both, DrawingTranscript, testing::Values("drawTextInImage", "drawTextInImage2"));
