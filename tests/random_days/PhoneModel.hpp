#pragma once

#include <array>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "tests/random_days/LocalTime.hpp"
#include "tests/random_days/MonthModel.hpp"
#include "tests/random_days/region.hpp"

/// A notification in the lock screen's list.
struct Item {
    enum class Kind { bulletin, card, alert, unknown };
    Kind kind;
    std::string identifier;
    LocalTime arrival{};
};

/// What the weather service holds of the local city.
struct Weather {
    std::string temperature;
    long long condition;
};

/// What a phone with Solvane in it should be. Each method is something that happens to it: it gives the console the commands
/// that make it happen, says what they print, and changes what the phone should be from then on.
class PhoneModel {
public:
    PhoneModel(Region region, const Screen& screen);

    const Screen& screen() const { return screen_; }

    // The surroundings
    void setClock(const LocalTime& time);
    void setWeather(const std::optional<Weather>& weather);
    void setUnits(bool celsius);
    void writeName(const std::optional<std::string>& name);
    void reload();
    void relaunch();
    void postAnother();

    // The lock screen. Without one, nothing happens.
    void lock();
    void layOut();
    void add(const Item& item, const std::vector<std::string>& words);
    /// SpringBoard tells again of an item that is in its list.
    void addAgain(std::size_t index);
    void clear();
    void tearDown();
    void switchScreen(bool off);
    void addArt();
    void addUnderlay();

    // The finger
    void tap(double x, double y, int times);
    void tapIcon(bool notification, int times);
    void press(double x, double y);
    void release();
    void releaseAt(double x, double y);
    void swipe(double x, double y, const std::string& direction);

    // Messages to the panel's objects
    void send(const std::string& panelMessage);
    void sendToWidget(const std::string& message);
    void setWidgetFrame(Rect frame);
    void clearStrip();
    void showStrip();
    void setStripHeight(int height);
    void addToStrip(std::size_t index, long count);

    // Calendars: the widget's, and another that lies on top of the lock screen
    enum class Which { widgets, spare };
    void makeSpare(int side, bool plain, int x, int y);
    void dropSpare();
    void sendToCalendar(Which which, const std::string& message);
    void plotCell(Which which, long x, long y, long day, bool isGrey);
    void selectDay(Which which, std::size_t index, bool releases);
    void setTouchable(Which which, bool touchable);
    void setDelegate(Which which, const std::string& className);
    void dropDelegate();

    // Questions, whose answers are printed
    void ask(int question, std::size_t index);
    static constexpr int questionCount = 8;

    /// The commands since the last call, and the lines that they print.
    struct Conversation {
        std::string commands;
        std::vector<std::string> answers;
    };
    Conversation takeConversation();
    /// The whole state, as the probe tells it, and the log's lines since the last call.
    std::string takeState();
    std::vector<std::string> takeLog();

private:
    struct StripIcon {
        double y = 0;
        double side = 0;
        bool isInStrip = false;
        std::string image;
        std::string badge;
    };

    struct Card {
        Rect frame;
        bool hidden = true;
    };

    struct Panel {
        std::optional<std::string> headline;
        std::string subtitle;
        int dayOfIcon = 0;
        bool calendarPaneIsHidden = true;
        bool notificationPaneIsHidden = true;
        bool tabIsHidden = true;
        Rect tab{};
        std::string mask = "none";
        double topPocketAlpha = 0;
        Rect strip{};
        Rect stripContent{};
        bool stripHasItems = false;
        /// Where the icons stand, from left to right.
        std::string row;
        std::map<std::string, StripIcon> icons;
        Rect widget{};
        std::vector<Card> cards;
        std::unique_ptr<MonthModel> month;
        std::vector<Item> items;
        bool screenIsOff = false;
        int artViews = 0;
    };

    struct Target {
        enum class Kind { nothing, calendarIcon, notificationIcon, calendar } kind = Kind::nothing;
        MonthModel* calendar = nullptr;
        std::optional<MonthModel::Button> button = std::nullopt;
        double x = 0;
        double y = 0;
    };

    void command(const std::string& text) { conversation_.commands += text + '\n'; }
    void answer(const std::string& text) { conversation_.answers.push_back(text); }
    /// A message without a result.
    void message(const std::string& text);

    void launch();
    void buildLockScreen();
    void makeLayoutPass();
    int bucket() const;
    std::string greeting() const;
    std::string sentence() const;
    void showAwayText();
    void addIcon(const Item& item, long count);
    void layOutRow();
    void emptyStrip();
    void closePanes();
    void openCalendar();
    void openNotifications();
    void cutTab();
    Rect iconFrame(bool notification) const;
    Target targetAt(double x, double y);
    static Target targetIn(MonthModel& calendar, double x, double y);
    void fingerDown(double x, double y);
    void fingerUp(bool moved);
    MonthModel* calendar(Which which);
    static const char* pathOf(Which which);

    std::string iconSource(const Item& item) const;
    std::string describePanel() const;
    std::string describeStrip() const;

    Region region_;
    Screen screen_;
    LocalTime now_{2014, 3, 5, 8, 30, 0};
    std::optional<Weather> weather_ = Weather{"21", 26};
    bool celsius_ = true;

    bool hasSettingsFile_ = false;
    std::optional<std::string> writtenName_;
    bool hasSettings_ = false;
    std::optional<std::string> settingsName_;
    std::string userName_;
    std::array<std::string, 4> greetings_;

    std::unique_ptr<Panel> panel_;
    bool hasArt_ = false;
    std::unique_ptr<MonthModel> spare_;
    Target finger_;
    bool fingerIsDown_ = false;

    std::vector<std::string> log_;
    std::vector<std::string> heard_;
    Conversation conversation_;
};

/// A word of the console, quoted where it must be.
std::string word(const std::string& text);
/// A text as the console prints it.
std::string json(const std::string& text);
