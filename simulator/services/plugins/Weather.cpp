#include "platform/Weather/Weather.hpp"
#include "simulator/foundation/strings.hpp"
#include "simulator/foundation/surroundings.hpp"
#include "simulator/runtime/SimulatedClass.hpp"

/// The weather framework, a library of its own that nobody in SpringBoard asks for: its shared objects, and the city that the
/// phone is in.

namespace simulator {

namespace {

struct CityState {
    // The weather of the last update.
    Owned<NSString> temperature;
    NSUInteger conditionCode = 0;
};

void update(City* self, SEL)
{
    const auto& weather = surroundings().weather;
    if (!weather)
        return;
    auto& city = ivarsOf<CityState>(self);
    city.temperature = weather->temperature ? toNSString(*weather->temperature) : nullptr;
    city.conditionCode = static_cast<NSUInteger>(weather->conditionCode);
}

struct WeatherLocationManagerState {
    bool locationTrackingActive = false;
};

struct WeatherPreferencesState {
    bool localWeatherEnabled = false;
    Owned<City> city;
};

struct WeatherUpdaterState {};

struct LocationUpdaterState {};

template <FixedString ClassName>
id sharedInstance(Class, SEL)
{
    static const id shared = send<"new", id>(classNamed<ClassName>());
    return shared;
}

id location(WeatherLocationManager*, SEL)
{
    return nullptr;
}

/// The city is there from the moment local weather is on, as long as the phone knows where it is.
City* localWeatherCity(WeatherPreferences* self, SEL)
{
    auto& preferences = ivarsOf<WeatherPreferencesState>(self);
    if (!surroundings().weather || !preferences.localWeatherEnabled)
        return nullptr;
    if (preferences.city == nullptr) {
        preferences.city = adopt(send<"new", City*>(classNamed<"City">()));
        preferences.city->update();
    }
    return preferences.city;
}

BOOL isCelsius(WeatherPreferences*, SEL)
{
    return BOOL{surroundings().showsCelsius};
}

void updateWeatherForLocation(LocationUpdater*, SEL, id, City* city)
{
    city->update();
}

void handleCompletionForCity(LocationUpdater*, SEL, City*, NSUInteger)
{
}

[[gnu::constructor]] void registerWeather()
{
    SimulatedClass<CityState>("City", "NSObject")
        .readOnly<&CityState::temperature>("temperature")
        .readOnly<&CityState::conditionCode>("conditionCode")
        .method<"update">(update)
        .registerClass();
    SimulatedClass<WeatherLocationManagerState>("WeatherLocationManager", "NSObject")
        .classMethod<"sharedWeatherLocationManager">(sharedInstance<"WeatherLocationManager">)
        .flag<&WeatherLocationManagerState::locationTrackingActive>("locationTrackingActive")
        .method<"location">(location)
        .registerClass();
    SimulatedClass<WeatherPreferencesState>("WeatherPreferences", "NSObject")
        .classMethod<"sharedPreferences">(sharedInstance<"WeatherPreferences">)
        .flag<&WeatherPreferencesState::localWeatherEnabled>("localWeatherEnabled")
        .method<"localWeatherCity">(localWeatherCity)
        .method<"isCelsius">(isCelsius)
        .registerClass();
    SimulatedClass<WeatherUpdaterState>("WeatherUpdater", "NSObject").registerClass();
    SimulatedClass<LocationUpdaterState>("LocationUpdater", "WeatherUpdater")
        .classMethod<"sharedLocationUpdater">(sharedInstance<"LocationUpdater">)
        .method<"updateWeatherForLocation:city:">(updateWeatherForLocation)
        .method<"handleCompletionForCity:withUpdateDetail:">(handleCompletionForCity)
        .registerClass();
}

} // namespace

} // namespace simulator
