#include <gmock/gmock.h>

#include "tests/support/Console.hpp"
#include "tests/support/MorningPhone.hpp"
#include "tests/support/Picture.hpp"
#include "tests/support/drawn_texts.hpp"
#include "tests/support/panel.hpp"

/// The road of one notification, from its arrival until it is read: what the panel holds and what the screen shows.

namespace {

using testing::ElementsAre;

/// A rectangle of the screen, in points, at two pixels per point.
struct Area {
    int x, y, width, height;
};

constexpr Area greeting{0, 0, 320, 65};
constexpr Area secondLine{60, 72, 190, 36};
constexpr Area calendarIcon{22, 87, 32, 32};
constexpr Area notificationIcon{266, 87, 32, 32};
/// The only icon of a strip at 76, 100, and the badge on its corner.
constexpr Area onlyIcon{130, 122, 50, 50};
constexpr Area onlyBadge{168, 110, 24, 24};
constexpr Area pane{0, 131, 320, 437};
constexpr Area firstRow{0, 150, 320, 72};
/// The tab above the pane, beside the icon.
constexpr Area tabLeftOfIcon{257, 90, 8, 30};

/// How many pixels of an area differ between two pictures, from 0 to 1.
double difference(const Picture& one, const Picture& other, Area area)
{
    int count = 0;
    for (int y = 2 * area.y; y < 2 * (area.y + area.height); ++y) {
        for (int x = 2 * area.x; x < 2 * (area.x + area.width); ++x)
            count += one.at(x, y) != other.at(x, y) ? 1 : 0;
    }
    return static_cast<double>(count) / (4.0 * area.width * area.height);
}

/// How many pixels of an area fulfil a condition, from 0 to 1.
template <class Condition>
double share(const Picture& picture, Area area, Condition condition)
{
    int count = 0;
    for (int y = 2 * area.y; y < 2 * (area.y + area.height); ++y) {
        for (int x = 2 * area.x; x < 2 * (area.x + area.width); ++x) {
            const std::uint32_t pixel = picture.at(x, y);
            count +=
                condition(static_cast<int>(pixel >> 16 & 255), static_cast<int>(pixel >> 8 & 255), static_cast<int>(pixel & 255));
        }
    }
    return static_cast<double>(count) / (4.0 * area.width * area.height);
}

bool isWhite(int red, int green, int blue)
{
    return red > 235 && green > 235 && blue > 235;
}

double brightness(const Picture& picture, Area area)
{
    double sum = 0;
    share(picture, area, [&](int red, int green, int blue) {
        sum += red + green + blue;
        return true;
    });
    return sum / (3 * 4.0 * area.width * area.height);
}

} // namespace

TEST(OneNotification, GoesFromItsArrivalToBeingRead)
{
    const LockedPhone phone;
    const Picture locked = screenshot();
    EXPECT_GT(share(locked, greeting, isWhite), 0.005);
    EXPECT_GT(share(locked, secondLine, isWhite), 0.005);

    // It arrives.
    const auto item =
        simulator::bulletinItem(text("com.apple.MobileSMS"), text("Ana"), text("Are you coming to the ferry at six?"));
    simulator::addListItem(item);
    EXPECT_EQ(textOf(panel::headline()->text()), "Good morning, Pal.");
    EXPECT_EQ(textOf(panel::subtitle()->text()), "While you were gone...");
    EXPECT_EQ(panel::strip()->subviews()->count(), 1U);
    const Picture arrived = screenshot();
    EXPECT_EQ(difference(locked, arrived, greeting), 0);
    EXPECT_GT(difference(locked, arrived, secondLine), 0.01);
    EXPECT_GT(difference(locked, arrived, onlyIcon), 0.8);
    EXPECT_GT(difference(locked, arrived, onlyBadge), 0.5);
    EXPECT_EQ(difference(locked, arrived, calendarIcon), 0);
    EXPECT_EQ(difference(locked, arrived, notificationIcon), 0);
    // Nothing of the list is to be seen yet: right of the icon there is wallpaper.
    EXPECT_EQ(difference(locked, arrived, {200, 150, 120, 200}), 0);

    // A second one of the same application changes the badge alone.
    simulator::addListItem(simulator::bulletinItem(text("com.apple.MobileSMS"), text("Bo"), text("Me too.")));
    const Picture twice = screenshot();
    EXPECT_EQ(panel::strip()->subviews()->count(), 1U);
    EXPECT_GT(difference(arrived, twice, onlyBadge), 0.02);
    EXPECT_EQ(difference(arrived, twice, {130, 136, 50, 36}), 0);
    EXPECT_EQ(difference(arrived, twice, secondLine), 0);

    // A finger opens the list.
    panel::tap(panel::notificationIcon());
    EXPECT_FALSE(panel::notificationPane()->isHidden());
    EXPECT_EQ(textOf(panel::subtitle()->text()), morningWeather);
    EXPECT_EQ(panel::strip()->subviews()->count(), 0U);
    const Picture opened = screenshot();
    EXPECT_EQ(difference(locked, opened, secondLine), 0);
    EXPECT_GT(difference(locked, opened, pane), 0.95);
    EXPECT_LT(brightness(opened, pane), brightness(locked, pane));
    EXPECT_LT(brightness(opened, tabLeftOfIcon), brightness(locked, tabLeftOfIcon));
    // Two rows, each with a picture on the left and white words right of it.
    for (const int row : {0, 1}) {
        const int top = firstRow.y + firstRow.height * row;
        EXPECT_GT(share(opened, {56, top + 9, 60, 19}, isWhite), 0.02) << row;
        EXPECT_GT(
            share(opened, {15, top + 11, 29, 29},
                  [](int red, int green, int blue) { return std::max({red, green, blue}) - std::min({red, green, blue}) > 60; }),
            0.3)
            << row;
    }
    EXPECT_EQ(share(opened, {56, firstRow.y + 2 * firstRow.height + 9, 250, 60}, isWhite), 0);

    // A double tap closes it, and the list is still SpringBoard's.
    panel::tap(panel::notificationIcon(), 2);
    EXPECT_EQ(screenshot(), locked);
    EXPECT_EQ(instanceVariable<NSArray>(simulator::listController(), "_listItems")->count(), 2U);

    // The next one begins a new row, and counts all that are in the list.
    noteDrawnTexts();
    simulator::addListItem(simulator::bulletinItem(text("com.apple.MobileSMS"), text("Cleo"), nullptr));
    EXPECT_THAT(drawnTexts(), ElementsAre("3"));
    EXPECT_EQ(panel::strip()->subviews()->count(), 1U);
}

TEST(OneNotification, BringsTheStripToScrollWhenItIsOneApplicationTooMany)
{
    const Console console;
    const auto lines = linesOf(console, "clock 2014-03-05T08:30:00\n"
                                        "lock\n"
                                        "notify org.example.a\n"
                                        "notify org.example.b\n"
                                        "swipe 230,150 left\n"
                                        "show appsView.contentOffset\n"
                                        "notify org.example.c\n"
                                        "notify org.example.d\n"
                                        "notify org.example.e\n"
                                        "swipe 230,150 left\n"
                                        "show appsView.contentOffset\n"
                                        "swipe 90,150 right\n"
                                        "show appsView.contentOffset\n");
    EXPECT_THAT(lines, ElementsAre(Json({0, 0}), Json({132, 0}), Json({0, 0})));
}

TEST(OneNotification, IsSeenInAStripThatWasScrolledBeforeItWasEmptied)
{
    for (const char* screen : {"320x568@2", "375x667@2", "414x736@3"}) {
        Console console;
        console.options = {"--screen", screen};
        const auto lines = linesOf(console, "clock 2014-03-05T08:30:00\n"
                                            "lock\n"
                                            "notify org.example.a\n"
                                            "notify org.example.b\n"
                                            "notify org.example.c\n"
                                            "notify org.example.d\n"
                                            "notify org.example.e\n"
                                            "notify org.example.f\n"
                                            "swipe appsView left\n"
                                            "swipe appsView left\n"
                                            "show appsView.contentOffset\n"
                                            "clear\n"
                                            "show appsView.contentOffset\n"
                                            "notify org.example.a\n"
                                            "show appsView.contentOffset\n");
        ASSERT_EQ(lines.size(), 3U);
        EXPECT_NE(lines[0], Json({0, 0})) << screen;
        EXPECT_EQ(lines[1], Json({0, 0})) << screen;
        EXPECT_EQ(lines[2], Json({0, 0})) << screen;
    }
}

TEST(OneNotification, IsSeenOnTheConsoleAllTheWay)
{
    const Console console;
    const auto lines = linesOf(console, "clock 2014-03-05T23:00:00\n"
                                        "weather 21 26\n"
                                        "lock\n"
                                        "notify com.apple.MobileSMS Ana \"Are you coming?\"\n"
                                        "show subtitleLabel.text\n"
                                        "tree appsView\n"
                                        "tap notificationIconView\n"
                                        "show subtitleLabel.text\n"
                                        "show appsView.subviews\n"
                                        "show notificationPaneView.isHidden\n"
                                        "show listView._tableView.visibleCells\n"
                                        "clear\n"
                                        "show listView._tableView.visibleCells\n");
    ASSERT_EQ(lines.size(), 7U);
    EXPECT_EQ(lines[0], "While you were asleep...");
    const Json& icon = lines[1]["subviews"].at(0);
    EXPECT_EQ(icon["class"], "UIImageView");
    EXPECT_EQ(icon["frame"], Json({54, 22, 50, 50}));
    EXPECT_EQ(icon["subviews"].at(0)["frame"], Json({37.5, -12.5, 25, 25}));
    EXPECT_EQ(icon["subviews"].at(0)["image"], Json::parse(R"({"size":[35,35],"scale":2})"));
    EXPECT_EQ(lines[2], "It's 21° C and Cloudy.");
    EXPECT_EQ(lines[3], Json::array());
    EXPECT_EQ(lines[4], false);
    EXPECT_EQ(lines[5].size(), 1U);
}
