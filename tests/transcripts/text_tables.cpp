#include "tests/transcripts/text_tables.hpp"
#include "tests/support/objects.hpp"

#include <cmath>

#include "platform/UIKit/NSStringDrawing.hpp"
#include "tests/support/Phone.hpp"
#include "tests/transcripts/recording.hpp"

namespace tables {

namespace {

/// What is said to one of the weather service's shared objects: they are asked for anew each time, through their class.
class Service {
public:
    Service(const Weather& weather, std::string className, std::string getter, std::string role)
        : className_(std::move(className)), getter_(std::move(getter)), role_(std::move(role)),
          isMissing_(weather.missing.contains(className_)), isFound_(!weather.isFirst && !isMissing_)
    {
    }

    bool isMissing() const { return isMissing_; }

    /// A class that was not found is looked for again at each use, and whatever is said to it reaches nobody.
    Rows ask()
    {
        Rows rows;
        if (!isFound_)
            rows.push_back("objc_getClass " + className_);
        isFound_ = !isMissing_;
        if (!isMissing_)
            rows.push_back(className_ + ' ' + getter_ + " = " + role_);
        return rows;
    }

    Rows say(const std::string& message) { return ask() + (isMissing_ ? Rows{} : Rows{role_ + ' ' + message}); }

private:
    std::string className_;
    std::string getter_;
    std::string role_;
    bool isMissing_;
    bool isFound_;
};

} // namespace

std::string quoted(const std::string& text)
{
    return '\'' + text + '\'';
}

Rows format(const std::string& format, const std::string& result)
{
    return {"NSString stringWithFormat: " + quoted(format) + " -> " + quoted(result)};
}

Rows weather(const Weather& weather)
{
    Service locations(weather, "WeatherLocationManager", "sharedWeatherLocationManager", "locations");
    Service preferences(weather, "WeatherPreferences", "sharedPreferences", "preferences");
    Service updater(weather, "LocationUpdater", "sharedLocationUpdater", "updater");
    const bool hasCity = weather.hasCity && !preferences.isMissing();
    const std::string city = hasCity ? "city" : "nil";
    const auto askForCity = [&] { return preferences.say(hasCity ? "localWeatherCity = city" : "localWeatherCity"); };
    const auto sayToCity = [&](const std::string& message) {
        return askForCity() + (hasCity ? Rows{"city " + message} : Rows{});
    };
    const auto sayToUpdater = [&](const std::string& message) {
        return updater.isMissing() ? Rows{} : Rows{"updater " + message};
    };

    Rows rows = locations.say("setLocationTrackingActive: YES") + preferences.say("setLocalWeatherEnabled: YES") + updater.ask();
    rows = rows + locations.say("location" + (weather.location == "nil" ? "" : " = " + weather.location)) + askForCity() +
           sayToUpdater("updateWeatherForLocation: " + (locations.isMissing() ? "nil" : weather.location) + " city: " + city);
    rows = rows + askForCity() + sayToUpdater("handleCompletionForCity: " + city + " withUpdateDetail: 0");
    rows = rows + sayToCity("update") + sayToCity("temperature") + sayToCity("conditionCode");

    // "%ld" is for a number of the processor's own width.
    const auto code = std::to_string(hasCity ? static_cast<long>(static_cast<std::uint32_t>(weather.code)) : 0);
    rows = rows + format("%ld", code) + Rows{quoted(code) + " intValue"};
    const auto& temperature = hasCity ? weather.temperature : std::nullopt;
    if (temperature)
        rows.push_back(quoted(*temperature) + " floatValue");
    rows = rows + preferences.say("isCelsius");
    std::string degrees = temperature.value_or("(null)");
    if (weather.isCelsius && !preferences.isMissing()) {
        rows = rows + format("%@", degrees);
    } else {
        const auto fahrenheit = static_cast<float>(std::strtof(degrees.c_str(), nullptr) * 9.0 / 5.0 + 32.0);
        degrees = std::to_string(std::lround(fahrenheit));
        rows = rows + Rows{"lroundf " + number(fahrenheit)} + format("%ld", degrees);
    }
    const std::string unit = weather.isCelsius && !preferences.isMissing() ? "C" : "F";
    return rows + format("It's %@%@ %@ and %@.",
                         "It's " + degrees + "\u00b0 " + unit + " and " + (hasCity ? weather.word : "Not Available") + ".");
}

Rows hour()
{
    return {"[NSCalendar alloc] initWithCalendarIdentifier: 'gregorian' = gregorian", "NSDate date = now",
            "gregorian components: 32 fromDate: now = time", "time hour"};
}

Rows drawing(const Drawing& drawing)
{
    const std::string size = number(drawing.size.width) + ' ' + number(drawing.size.height) + ')';
    Rows rows;
    if (drawing.image != "nil")
        rows.push_back(drawing.image + " size");
    rows.push_back("UIGraphicsBeginImageContextWithOptions (" + size + " NO 0");
    if (drawing.image != "nil")
        rows.push_back(drawing.image + " drawInRect: (0 0 " + size);
    rows = rows + Rows{"UIColor whiteColor = white", "white set", "UIFont boldSystemFontOfSize: 16 = bold", "UIColor whiteColor",
                       "NSDictionary dictionaryWithObjects: {bold white} forKeys: {" + quoted(textOf(NSFontAttributeName)) + ' ' +
                           quoted(textOf(NSForegroundColorAttributeName)) + "} count: 2 = attributes"};
    if (drawing.text != nullptr)
        rows.push_back(quoted(textOf(drawing.text)) + " drawInRect: (" + number(drawing.point.x) + ' ' + number(drawing.point.y) +
                       ' ' + size + " withAttributes: attributes");
    return rows + Rows{"UIGraphicsGetImageFromCurrentImageContext" + std::string(drawing.image == "nil" ? "" : " = drawn"),
                       "UIGraphicsEndImageContext"};
}

} // namespace tables
