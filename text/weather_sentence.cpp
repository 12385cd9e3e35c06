#include "text/weather_sentence.hpp"

#include "platform/Weather/Weather.hpp"
#include "text/condition_words.hpp"

extern "C" long lroundf(float value) noexcept;

namespace {

City* localCity()
{
    return WeatherPreferences::sharedPreferences()->localWeatherCity();
}

/// The code goes through text, as unsigned decimal digits that are read back as a 32-bit integer.
std::uint32_t readBack(std::uint32_t conditionCode)
{
    NSString* const digits = NSString::stringWithFormat(constantString<"%ld">(), static_cast<long>(conditionCode));
    return static_cast<std::uint32_t>(digits->intValue());
}

long roundedFahrenheit(float celsius)
{
    return lroundf(static_cast<float>(celsius * 9.0 / 5.0 + 32.0));
}

} // namespace

NSString* weatherSentence(NSString* temperature, float celsius, std::uint32_t conditionCode, bool isCelsius)
{
    NSString* const word = conditionWord(readBack(conditionCode));
    NSString* const unit = isCelsius ? constantString<"C">() : constantString<"F">();
    NSString* const shown = isCelsius ? NSString::stringWithFormat(constantString<"%@">(), temperature)
                                      : NSString::stringWithFormat(constantString<"%ld">(), roundedFahrenheit(celsius));
    return NSString::stringWithFormat(constantString<"It's %@%@ %@ and %@.">(), shown, constantString<"\u00B0">(), unit, word);
}

NSString* getTempString()
{
    WeatherLocationManager::sharedWeatherLocationManager()->setLocationTrackingActive(true);
    WeatherPreferences::sharedPreferences()->setLocalWeatherEnabled(true);

    // The service hands out the city it holds at the moment of asking, so each use asks again.
    LocationUpdater* const updater = LocationUpdater::sharedLocationUpdater();
    const id location = WeatherLocationManager::sharedWeatherLocationManager()->location();
    updater->updateWeatherForLocation_city(location, localCity());
    updater->handleCompletionForCity_withUpdateDetail(localCity(), 0);
    localCity()->update();
    NSString* const temperature = localCity()->temperature();
    const auto conditionCode = static_cast<std::uint32_t>(localCity()->conditionCode());
    const float celsius = temperature->floatValue();
    const bool isCelsius = WeatherPreferences::sharedPreferences()->isCelsius();

    return weatherSentence(temperature, celsius, conditionCode, isCelsius);
}
