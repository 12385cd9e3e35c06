#include "tests/random_days/PhoneModel.hpp"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <nlohmann/json.hpp>
#include <utility>

#include "tests/random_days/state_text.hpp"

/// The phone's surroundings, its lock screen and its two lines.

PhoneModel::PhoneModel(Region region, const Screen& screen) : region_(std::move(region)), screen_(screen)
{
    command("clock 2014-03-05T08:30:00");
    launch();
}

void PhoneModel::message(const std::string& text)
{
    command("send " + text);
    answer("null");
}

namespace {

/// The number that a text begins with, as a float; 0 when it begins with none.
float numberIn(const std::string& text)
{
    const auto isDigit = [&](std::size_t i) { return i < text.size() && text[i] >= '0' && text[i] <= '9'; };
    std::size_t begin = text.find_first_not_of(" \t");
    if (begin == std::string::npos)
        return 0;
    const bool isNegative = text[begin] == '-';
    if (isNegative || text[begin] == '+')
        ++begin;
    std::size_t end = begin;
    while (isDigit(end))
        ++end;
    if (end < text.size() && text[end] == '.') {
        ++end;
        while (isDigit(end))
            ++end;
    }
    float value = 0;
    std::from_chars(text.data() + begin, text.data() + end, value);
    return isNegative ? -value : value;
}

const char* conditionWord(long long code)
{
    static constexpr const char* words[] = {
        "Not Available", "Storm",   "Hurricane", "Thunderstorm", "Thunderstorm", "Snow",          "Sleet",        "Sleet",
        "Rain",          "Drizzle", "Rain",      "Showers",      "Showers",      "Snow Flurries", "Snow Showers", "Snow",
        "Snow",          "Hail",    "Sleet",     "Dust",         "Fog",          "Haze",          "Smoke",        "Blustery",
        "Wind",          "Cold",    "Cloudy",    "Cloudy",       "Cloudy",       "Cloudy",        "Cloudy",       "Clear",
        "Sunny",         "Fair",    "Fair",      "Hail",         "Hot",          "Thunderstorm",  "Thunderstorm", "Thunderstorm",
        "Showers",       "Snowy",   "Snowy",     "Snowy",        "Cloudy",       "Thunderstorm",  "Snowy",        "Thunderstorm"};
    const auto low = static_cast<std::uint32_t>(code);
    return low < std::size(words) ? words[low] : "Not Available";
}

} // namespace

int PhoneModel::bucket() const
{
    const int hour = now_.hour;
    if (hour < 7 || hour > 21)
        return 3;
    if (hour <= 12)
        return 0;
    return hour <= 17 ? 1 : 2;
}

std::string PhoneModel::greeting() const
{
    return greetings_.at(static_cast<std::size_t>(bucket()));
}

std::string PhoneModel::sentence() const
{
    std::string temperature = weather_ ? weather_->temperature : "(null)";
    if (!celsius_) {
        const double value = (weather_ ? numberIn(weather_->temperature) : 0.0F) * 9.0 / 5.0 + 32.0;
        temperature = std::to_string(std::lround(static_cast<float>(value)));
    }
    return "It's " + temperature + "\u00B0 " + (celsius_ ? "C" : "F") + " and " +
           conditionWord(weather_ ? weather_->condition : 0) + '.';
}

void PhoneModel::setClock(const LocalTime& time)
{
    char text[64];
    std::snprintf(text, sizeof text, "clock %04d-%02d-%02dT%02d:%02d:%02d", time.year, time.month, time.day, time.hour,
                  time.minute, time.second);
    command(text);
    now_ = time;
}

void PhoneModel::setWeather(const std::optional<Weather>& weather)
{
    command(weather ? "weather " + word(weather->temperature) + ' ' + std::to_string(weather->condition) : "weather none");
    weather_ = weather;
}

void PhoneModel::setUnits(bool celsius)
{
    command(celsius ? "units celsius" : "units fahrenheit");
    celsius_ = celsius;
}

void PhoneModel::writeName(const std::optional<std::string>& name)
{
    command("name " + (name ? word(*name) : "none"));
    hasSettingsFile_ = true;
    writtenName_ = name;
}

void PhoneModel::reload()
{
    command("post loadSolvaneS");
    hasSettings_ = hasSettingsFile_;
    settingsName_ = writtenName_;
    userName_ = writtenName_.value_or("Pal");
}

void PhoneModel::postAnother()
{
    command("post loadSolvane");
}

/// What happens when SpringBoard starts.
void PhoneModel::launch()
{
    hasSettings_ = hasSettingsFile_;
    settingsName_ = writtenName_;
    userName_ = writtenName_.value_or("Pal");
    const char* const words[] = {"morning", "afternoon", "evening", "night"};
    for (std::size_t i = 0; i < greetings_.size(); ++i)
        greetings_[i] = std::string("Good ") + words[i] + ", " + userName_ + '.';
    // The names that paths may begin with.
    command("let spare Probe.nothing");
    command("let delegate Probe.nothing");
}

void PhoneModel::relaunch()
{
    command("post RespringSV");
    const bool wasLocked = panel_ != nullptr;
    panel_.reset();
    spare_.reset();
    hasArt_ = false;
    finger_ = {};
    fingerIsDown_ = false;
    launch();
    if (wasLocked)
        buildLockScreen();
}

void PhoneModel::lock()
{
    release();
    command("lock");
    buildLockScreen();
}

void PhoneModel::buildLockScreen()
{
    panel_ = std::make_unique<Panel>();
    panel_->dayOfIcon = now_.day;
    panel_->month = std::make_unique<MonthModel>(region_, now_, Rect{0, 0, 320, 320}, log_);
    panel_->month->touchable = false;
    panel_->month->delegate = "SVWidget";
    makeLayoutPass();
}

void PhoneModel::layOut()
{
    if (panel_ == nullptr)
        return;
    command("layout");
    makeLayoutPass();
}

void PhoneModel::makeLayoutPass()
{
    const double width = screen_.width;
    const double height = screen_.height - 130;
    panel_->strip = {76, 100, width - 152, 100};
    panel_->widget = {0, 0, width, height};
    panel_->month->frame.x = width / 2 - 160;
    panel_->month->frame.y = height / 2 - 25 - 160;
    panel_->month->hidden = false;
    panel_->headline = greeting();
    panel_->subtitle = sentence();
}

void PhoneModel::showAwayText()
{
    panel_->subtitle = bucket() == 3 ? "While you were asleep..." : "While you were gone...";
}

void PhoneModel::add(const Item& item, const std::vector<std::string>& words)
{
    if (panel_ == nullptr)
        return;
    std::string line;
    for (std::size_t i = 0; i < words.size(); ++i)
        line += i == 0 ? words[i] : ' ' + word(words[i]);
    command(line);
    // A card that is in the list already is only updated.
    const auto isThatCard = [&](const Item& other) {
        return other.kind == Item::Kind::card && other.identifier == item.identifier;
    };
    if (item.kind == Item::Kind::card && std::ranges::any_of(panel_->items, isThatCard))
        return;
    // Newest first, by the clock; what came last before what is as new.
    const auto place = std::ranges::find_if(panel_->items, [&](const Item& other) { return other.arrival <= now_; });
    panel_->items.insert(place, {item.kind, item.identifier, now_});
    panel_->stripHasItems = true;
    showAwayText();
    addIcon(item, 0);
    layOutRow();
}

void PhoneModel::addAgain(std::size_t index)
{
    if (panel_ == nullptr || panel_->items.empty())
        return;
    index %= panel_->items.size();
    message("controller _updateModelAndViewForAdditionOfItem: @controller._listItems[" + std::to_string(index) + ']');
    showAwayText();
    addIcon(panel_->items[index], 0);
    layOutRow();
}

void PhoneModel::clear()
{
    if (panel_ == nullptr)
        return;
    command("clear");
    panel_->items.clear();
    panel_->subtitle = sentence();
    emptyStrip();
}

void PhoneModel::tearDown()
{
    if (panel_ == nullptr)
        return;
    command("teardown");
    panel_->subtitle = sentence();
    emptyStrip();
}

void PhoneModel::switchScreen(bool off)
{
    if (panel_ == nullptr)
        return;
    command(off ? "screen off" : "screen on");
    panel_->screenIsOff = off;
    panel_->headline = greeting();
    panel_->subtitle = sentence();
}

void PhoneModel::addArt()
{
    if (panel_ == nullptr)
        return;
    command("art");
    hasArt_ = true;
    ++panel_->artViews;
}

void PhoneModel::addUnderlay()
{
    if (panel_ != nullptr)
        command("underlay");
}

void PhoneModel::ask(int question, std::size_t index)
{
    const auto calendarAnswer = [&](const char* message, long value) {
        if (panel_ == nullptr)
            return;
        command(std::string("send widgetView.cal ") + message);
        answer(std::to_string(value));
    };
    switch (question) {
    case 0:
        command("show getTempString()");
        answer(json(sentence()));
        break;
    case 1:
        command("show dateStatusString()");
        answer(json(greeting()));
        break;
    case 2:
        command("show dateStatus()");
        answer(std::to_string(bucket()));
        break;
    case 3:
        if (panel_ != nullptr)
            calendarAnswer("getTotalDaysInCurrentMonth", panel_->month->totalDays());
        break;
    case 4:
        if (panel_ != nullptr)
            calendarAnswer("getOffsetDays", panel_->month->offsetDays());
        break;
    case 5:
        if (panel_ == nullptr || panel_->items.empty())
            break;
        index %= panel_->items.size();
        command("send appsView identifierForListItem: @controller._listItems[" + std::to_string(index) + ']');
        answer(json(panel_->items[index].identifier));
        break;
    case 6: {
        if (panel_ == nullptr || !region_.hasThreeLetterMonths)
            break;
        char time[16];
        std::snprintf(time, sizeof time, ", %02d:%02d", now_.hour, now_.minute);
        command("send widgetView.cal getStringFromDate: @NSDate.date");
        answer(json(std::to_string(now_.day) + ' ' +
                    std::string(region_.months.at(static_cast<std::size_t>(now_.month - 1))).substr(0, 3) + ' ' +
                    std::to_string(now_.year) + time));
        break;
    }
    default:
        if (panel_ == nullptr)
            break;
        command("send widgetView.cal getCalenderEventsForDay: @NSDate.date");
        answer(json(""));
    }
}

PhoneModel::Conversation PhoneModel::takeConversation()
{
    return std::exchange(conversation_, {});
}

std::vector<std::string> PhoneModel::takeLog()
{
    return std::exchange(log_, {});
}

std::string word(const std::string& text)
{
    std::string quotedWord = "'";
    for (const char character : text)
        quotedWord += character == '\'' ? std::string("'\\''") : std::string(1, character);
    return quotedWord + '\'';
}

std::string json(const std::string& text)
{
    return nlohmann::json(text).dump();
}
