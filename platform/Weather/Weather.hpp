#pragma once

#include "platform/Foundation/NSObject.hpp"

class NSString;

/// The weather framework inside SpringBoard. It is private and may be absent; its classes are found by name.

/// A place with its weather.
class City : public NSObject {
public:
    void update() { send<"update">(this); }
    /// Degrees Celsius, as text.
    NSString* temperature() const { return send<"temperature", NSString*>(this); }
    NSUInteger conditionCode() const { return send<"conditionCode", NSUInteger>(this); }
};

/// Knows where the phone is.
class WeatherLocationManager : public NSObject {
public:
    static WeatherLocationManager* sharedWeatherLocationManager()
    {
        return send<"sharedWeatherLocationManager", WeatherLocationManager*>(classNamed<"WeatherLocationManager">());
    }
    void setLocationTrackingActive(bool active) { send<"setLocationTrackingActive:">(this, BOOL{active}); }
    id location() const { return send<"location", id>(this); }
};

/// What the user chose in the weather application.
class WeatherPreferences : public NSObject {
public:
    static WeatherPreferences* sharedPreferences()
    {
        return send<"sharedPreferences", WeatherPreferences*>(classNamed<"WeatherPreferences">());
    }
    void setLocalWeatherEnabled(bool enabled) { send<"setLocalWeatherEnabled:">(this, BOOL{enabled}); }
    /// Nil when the local city is not known.
    City* localWeatherCity() const { return send<"localWeatherCity", City*>(this); }
    bool isCelsius() const { return send<"isCelsius", BOOL>(this) != NO; }
};

class WeatherUpdater : public NSObject {};

/// Fetches the weather of a place.
class LocationUpdater : public WeatherUpdater {
public:
    static LocationUpdater* sharedLocationUpdater()
    {
        return send<"sharedLocationUpdater", LocationUpdater*>(classNamed<"LocationUpdater">());
    }
    void updateWeatherForLocation_city(id location, City* city) { send<"updateWeatherForLocation:city:">(this, location, city); }
    void handleCompletionForCity_withUpdateDetail(City* city, NSUInteger detail)
    {
        send<"handleCompletionForCity:withUpdateDetail:">(this, city, detail);
    }
};
