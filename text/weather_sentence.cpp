#include "text/weather_sentence.hpp"

#include "platform/Weather/Weather.hpp"
#include "platform/runtime/Owned.hpp"
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

NSString* weatherSentence(NSString* temperature, std::uint32_t conditionCode, bool (*isCelsius)())
{
    const Owned<NSString> word(conditionWord(readBack(conditionCode)));
    const float celsius = temperature->floatValue();
    const bool showsCelsius = isCelsius();
    NSString* const unit = showsCelsius ? constantString<"C">() : constantString<"F">();
    NSString* const shown = showsCelsius ? NSString::stringWithFormat(constantString<"%@">(), temperature)
                                         : NSString::stringWithFormat(constantString<"%ld">(), roundedFahrenheit(celsius));
    return NSString::stringWithFormat(constantString<"It's %@%@ %@ and %@.">(), shown, constantString<"\u00B0">(), unit,
                                      word.get());
}

NSString* getTempString()
{
    WeatherLocationManager::sharedWeatherLocationManager()->setLocationTrackingActive(true);
    WeatherPreferences::sharedPreferences()->setLocalWeatherEnabled(true);

    // The service hands out the city it holds at the moment of asking, so each use asks again. What is kept from one message
    // to the next is owned: the service may have let it go by then.
    const Owned<LocationUpdater> updater(LocationUpdater::sharedLocationUpdater());
    const Owned<NSObject> location(WeatherLocationManager::sharedWeatherLocationManager()->location());
    updater->updateWeatherForLocation_city(location, localCity());
    updater->handleCompletionForCity_withUpdateDetail(localCity(), 0);
    localCity()->update();
    const Owned<NSString> temperature(localCity()->temperature());
    const auto conditionCode = static_cast<std::uint32_t>(localCity()->conditionCode());

    return weatherSentence(temperature, conditionCode, [] { return WeatherPreferences::sharedPreferences()->isCelsius(); });
}
