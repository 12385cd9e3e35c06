#include "platform/Weather/Weather.hpp"
#include "simulator/foundation/strings.hpp"
#include "simulator/foundation/surroundings.hpp"
#include "simulator/runtime/SimulatedClass.hpp"

/// The weather framework, a library of its own that nobody in SpringBoard asks for: its shared objects, and the city that the
/// phone is in, as the weather application last saved it. News come from that application alone.

namespace simulator {

namespace {

struct CityState {
    Owned<NSString> temperature;
    NSUInteger conditionCode = 0;
    bool dataCelsius = true;
};

/// Asks for news, which come when a city that nobody keeps is long gone.
void update(City*, SEL)
{
}

struct WeatherLocationManagerState {
    bool locationTrackingActive = false;
};

struct WeatherPreferencesState {
    bool localWeatherEnabled = false;
};

struct WeatherUpdaterState {};

struct LocationUpdaterState {};

template <FixedString ClassName>
id sharedInstance(Class, SEL)
{
    static const id shared = send<"new", id>(classNamed<ClassName>());
    return shared;
}

/// Tracking tells a delegate of the location, and nobody in SpringBoard gives it one.
id location(WeatherLocationManager*, SEL)
{
    return nullptr;
}

/// A new one at each call, from the record of that moment. It is there from when local weather is on, as long as the phone
/// knows where it is.
City* localWeatherCity(WeatherPreferences* self, SEL)
{
    const auto& record = surroundings().weather;
    if (!record || !ivarsOf<WeatherPreferencesState>(self).localWeatherEnabled)
        return nullptr;
    Owned<City> city = adopt(send<"new", City*>(classNamed<"City">()));
    auto& state = ivarsOf<CityState>(city.get());
    state.temperature = record->temperature ? toNSString(*record->temperature) : nullptr;
    state.conditionCode = static_cast<NSUInteger>(record->conditionCode);
    state.dataCelsius = surroundings().savesCelsius;
    return city.autorelease();
}

BOOL isCelsius(WeatherPreferences*, SEL)
{
    return BOOL{surroundings().showsCelsius};
}

void updateWeatherForLocation(LocationUpdater*, SEL, id, City*)
{
}

void handleCompletionForCity(LocationUpdater*, SEL, City*, NSUInteger)
{
}

[[gnu::constructor]] void registerWeather()
{
    SimulatedClass<CityState>("City", "NSObject")
        .readOnly<&CityState::temperature>("temperature")
        .readOnly<&CityState::conditionCode>("conditionCode")
        .readOnlyFlag<&CityState::dataCelsius>("dataCelsius")
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
