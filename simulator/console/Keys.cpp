#include "simulator/console/Keys.hpp"

#include <algorithm>
#include <cctype>
#include <filesystem>

#include "platform/Foundation/NSDate.hpp"
#include "simulator/console/raised_exception.hpp"
#include "simulator/foundation/surroundings.hpp"

namespace simulator {

namespace {

/// The next of a list of examples, around and around.
template <class T, std::size_t Count>
const T& next(const T (&examples)[Count], std::size_t& index)
{
    return examples[index++ % Count];
}

struct Notification {
    const char* bundleIdentifier;
    const char* title;
    const char* message;
};

constexpr Notification notifications[] = {
    {"com.apple.MobileSMS", "Ana", "Are you coming to the ferry at six?"},
    {"org.solvane.ferry", "Solvane Ferry", "The six o'clock boat leaves from pier 2."},
    {"com.apple.mobilemail", "Harbour Office", "Your season ticket"},
    {"org.solvane.larder", "Larder", "Milk is best used today."},
    {"com.apple.mobilecal", "Calendar", "Dinner with Mira at eight"},
    {"com.apple.mobilephone", "Missed call", "Mira"},
    {"com.apple.Music", "Music", "A new record by the Harbour Choir"},
};

constexpr const char* names[] = {"Eve", "Maximiliane-Alexandra", "Bo", "Ana"};

struct Weather {
    const char* temperature;
    const char* conditionCode;
};

constexpr Weather weathers[] = {{"-3.5", "16"}, {"31", "32"}, {"12", "11"}, {"21", "26"}};

} // namespace

std::span<const Keys::Key> Keys::all()
{
    static constexpr Key keys[] = {
        {'N', "a notification, next application", &Keys::notifyNext},
        {'M', "one more of that application", &Keys::notifyAgain},
        {'C', "a card", &Keys::addCard},
        {'A', "a system alert", &Keys::addAlert},
        {'X', "clear the list", &Keys::clear},
        {'S', "switch the screen off or on", &Keys::switchScreen},
        {'T', "three hours later", &Keys::goOnThreeHours},
        {'W', "other weather", &Keys::changeWeather},
        {'U', "Celsius or Fahrenheit", &Keys::changeUnits},
        {'E', "another name in the settings", &Keys::changeName},
        {'R', "respring", &Keys::respring},
        {'L', "a new lock screen", &Keys::lock},
        {'P', "a picture of the screen", &Keys::takePicture},
        {'H', "this help", &Keys::toggleHelp},
        {'Q', "close the window", &Keys::close},
    };
    return keys;
}

bool Keys::press(int character)
{
    const auto key =
        std::ranges::find_if(all(), [&](const Key& candidate) { return std::tolower(candidate.letter) == character; });
    if (key == all().end())
        return false;
    (this->*key->answer)();
    return true;
}

void Keys::run(const std::vector<std::string>& words)
{
    status_.clear();
    forgetRaisedException();
    try {
        runCommand(console_, words);
    } catch (const std::exception& problem) {
        status_ = problem.what();
    } catch (...) {
        status_ = describeRaisedException();
    }
}

void Keys::notifyNext()
{
    const Notification& example = next(notifications, notificationIndex_);
    run({"notify", example.bundleIdentifier, example.title, example.message});
}

void Keys::notifyAgain()
{
    const std::size_t last = notificationIndex_ == 0 ? 0 : notificationIndex_ - 1;
    const Notification& example = notifications[last % std::size(notifications)];
    run({"notify", example.bundleIdentifier, example.title, example.message});
}

void Keys::addCard()
{
    run({"card", "boarding-pass", "Boarding pass, pier 2"});
}

void Keys::addAlert()
{
    run({"alert", "Low battery", "10% of the battery is left."});
}

void Keys::clear()
{
    run({"clear"});
}

void Keys::switchScreen()
{
    screenIsOff_ = !screenIsOff_;
    run({"screen", screenIsOff_ ? "off" : "on"});
}

void Keys::goOnThreeHours()
{
    constexpr double threeHours = 3 * 3600;
    surroundings().frozenClock = NSDate::date()->timeIntervalSince1970() + threeHours;
    relayOut();
}

void Keys::changeWeather()
{
    const Weather& example = next(weathers, weatherIndex_);
    run({"weather", example.temperature, example.conditionCode});
    relayOut();
}

void Keys::changeUnits()
{
    run({"units", surroundings().showsCelsius ? "fahrenheit" : "celsius"});
    relayOut();
}

void Keys::changeName()
{
    const char* const name = next(names, nameIndex_);
    run({"name", name});
    run({"post", "loadSolvaneS"});
    if (status_.empty())
        status_ = std::string("The name is ") + name + " now: R shows it";
}

void Keys::respring()
{
    run({"post", "RespringSV"});
}

void Keys::lock()
{
    run({"lock"});
}

void Keys::takePicture()
{
    std::string file;
    int number = 1;
    do {
        file = "lockscreen-" + std::to_string(number++) + ".png";
    } while (std::filesystem::exists(file));
    run({"screenshot", file});
    if (status_.empty())
        status_ = "The picture is in " + file;
}

void Keys::toggleHelp()
{
    showsHelp_ = !showsHelp_;
}

void Keys::close()
{
    wantsToClose_ = true;
}

/// The panel reads the time and the weather when it is laid out.
void Keys::relayOut()
{
    run({"layout"});
}

} // namespace simulator
