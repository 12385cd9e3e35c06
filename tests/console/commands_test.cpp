#include <fstream>
#include <gmock/gmock.h>

#include "tests/support/Console.hpp"

/// What each command does, and what it prints.

namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;

/// The stock lock screen, without the library.
class StockConsole : public Console {
public:
    StockConsole() { uninstallLibrary(); }
};

/// The width and height that a PNG file's header tells.
std::pair<unsigned, unsigned> sizeOfPNG(const fs::path& file)
{
    const std::string bytes = readFile(file);
    if (!bytes.starts_with("\x89PNG\r\n\x1A\n") || bytes.size() < 24)
        return {0, 0};
    const auto number = [&](std::size_t at) {
        unsigned value = 0;
        for (std::size_t i = 0; i < 4; ++i)
            value = value << 8 | static_cast<unsigned char>(bytes[at + i]);
        return value;
    };
    return {number(16), number(20)};
}

} // namespace

// Surroundings

TEST(ClockCommand, FreezesTheLocalTime)
{
    EXPECT_EQ(lineOf(Console(), "clock 2014-03-05T08:30:00\nsleep 0.01\nshow NSDate.date"), "2014-03-05T08:30:00Z");
}

TEST(ClockCommand, TakesTheTimeForLocal)
{
    Console console;
    console.environment["TZ"] = "Asia/Tokyo";
    EXPECT_EQ(lineOf(console, "clock 2014-03-05T08:30:00\nshow NSDate.date"), "2014-03-04T23:30:00Z");
}

TEST(ClockCommand, LetsTheClockRunAgain)
{
    const Json line = lineOf(Console(), "clock 2001-01-01T00:00:00\nclock live\nshow NSDate.date");
    EXPECT_GT(line.get<std::string>(), "2024");
}

TEST(ClockCommand, KnowsLeapDays)
{
    EXPECT_EQ(lineOf(Console(), "clock 2016-02-29T12:00:00\nshow NSDate.date"), "2016-02-29T12:00:00Z");
}

TEST(WeatherCommand, SetsTemperatureAndCode)
{
    EXPECT_EQ(lineOf(Console(), "weather 7.5 32\nshow getTempString()"), "It's 7.5° C and Sunny.");
}

TEST(WeatherCommand, TakesTheCityAway)
{
    EXPECT_EQ(lineOf(Console(), "weather none\nshow getTempString()"), "It's (null)° C and Not Available.");
}

TEST(WeatherCommand, ForgetsWhatWasSaved)
{
    EXPECT_THAT(
        linesOf(Console(), "weather --never\nshow getTempString()\nunits fahrenheit\nshow getTempString()\n"
                           "show WeatherPreferences.sharedPreferences.localWeatherCity.temperature\n"
                           "weather 10 32\nshow getTempString()"),
        ElementsAre("It's (null)° C and Not Available.", "It's 32° F and Not Available.", nullptr, "It's 50° F and Sunny."));
}

/// The library takes the text for degrees Celsius whatever the city says of it, and converts what is converted already.
TEST(WeatherCommand, ChoosesTheUnitOfWhatIsSaved)
{
    const std::string unit = "show WeatherPreferences.sharedPreferences.localWeatherCity.isDataCelsius\n";
    EXPECT_THAT(linesOf(Console(), "weather 70 32\nunits fahrenheit\nshow getTempString()\n" + unit +
                                       "weather --unit fahrenheit\nshow getTempString()\n" + unit +
                                       "units celsius\nshow getTempString()\nweather --unit celsius\n" + unit),
                ElementsAre("It's 158° F and Sunny.", true, "It's 158° F and Sunny.", false, "It's 70° C and Sunny.", true));
}

/// The panel's pane keeps the table until the next lock screen's panel takes its place.
TEST(TableCommand, LetsATableOutliveItsListThatCleared)
{
    const std::string scroll = "notify com.apple.MobileSMS\nnotify com.apple.mobilemail\nlayout\ntap notificationIconView\n"
                               "press 160,300\nmove 160,200\nrelease\n";
    EXPECT_THAT(
        linesOf(Console(), "table cleared\nlock\n" + scroll + "let table listView._tableView\nlock\n" + scroll +
                               "show table.delegate\nshow table.dataSource\nlock\nshow listView._tableView.delegate.class"),
        ElementsAre(nullptr, nullptr, "SBLockScreenNotificationListView"));
}

TEST(UnitsCommand, ChoosesTheUnit)
{
    EXPECT_THAT(linesOf(Console(), "weather 10 32\nunits fahrenheit\nshow getTempString()\nunits celsius\nshow getTempString()"),
                ElementsAre("It's 50° F and Sunny.", "It's 10° C and Sunny."));
}

TEST(NameCommand, WritesTheNameAndTellsNobody)
{
    EXPECT_THAT(linesOf(Console(), "name 'Ana María'\nshow userName\npost loadSolvaneS\nshow userName"),
                ElementsAre("Pal", "Ana María"));
}

TEST(NameCommand, DeletesTheName)
{
    EXPECT_THAT(linesOf(Console(), "name Ana\npost loadSolvaneS\nshow userName\nname none\npost loadSolvaneS\nshow userName"),
                ElementsAre("Ana", "Pal"));
}

TEST(NameCommand, KeepsTheOtherKeys)
{
    const Console console;
    console.tree().writePreferencesXML("<dict><key>Other</key><integer>7</integer></dict>");
    EXPECT_EQ(lineOf(console, "name Ana\npost loadSolvaneS\nshow settingsDictionary"), (Json{{"Name", "Ana"}, {"Other", 7}}));
}

TEST(NameCommand, WritesAnEmptyName)
{
    EXPECT_EQ(lineOf(Console(), "name ''\npost loadSolvaneS\nshow userName"), "");
}

TEST(PostCommand, WaitsUntilTheNotificationHasBeenDelivered)
{
    EXPECT_EQ(lineOf(Console(), "name Bo\npost loadSolvaneS\nshow userName"), "Bo");
}

TEST(PostCommand, PassesANameThatNobodyWaitsFor)
{
    EXPECT_THAT(linesOf(Console(), "post nobody.cares"), ElementsAre());
}

// The lock screen

TEST(LockCommand, BuildsALockScreen)
{
    EXPECT_THAT(linesOf(StockConsole(), "show lockScreenView\nlock\nshow lockScreenView.frame\nshow listView.frame\nshow "
                                        "controller.class"),
                ElementsAre(nullptr, Json({0, 0, 320, 568}), Json({0, 0, 320, 568}), "SBLockScreenNotificationListController"));
}

TEST(LockCommand, PutsANewerListViewInTheOldOnesPlace)
{
    const auto lines = linesOf(StockConsole(), "lock\nlet first listView\nlock\nsend first isEqual: @listView\n"
                                               "show first.superview.superview\nshow window.subviews\n");
    ASSERT_EQ(lines.size(), 3U);
    EXPECT_EQ(lines[0], false);
    EXPECT_EQ(lines[1], nullptr);
    EXPECT_EQ(lines[2].size(), 1U);
}

TEST(LayoutCommand, GivesTheTableItsFullFrame)
{
    EXPECT_THAT(
        linesOf(StockConsole(), "lock\nsend listView._tableView setFrame: 1,2,3,4\nlayout\nshow listView._tableView.frame"),
        ElementsAre(nullptr, Json({0, 0, 320, 568})));
}

TEST(NotifyCommand, AddsABulletinOfAnApplication)
{
    const auto lines = linesOf(StockConsole(), "lock\nnotify com.apple.MobileSMS Ana 'Are you coming?'\n"
                                               "show controller._listItems\n"
                                               "show controller._listItems[0].activeBulletin.sectionID\n"
                                               "show controller._listItems[0].activeBulletin.title\n"
                                               "show controller._listItems[0].activeBulletin.message\n"
                                               "show controller._listItems[0].iconImage.size\n");
    EXPECT_THAT(lines, ElementsAre(Json::array({{{"class", "SBAwayBulletinListItem"}}}), "com.apple.MobileSMS", "Ana",
                                   "Are you coming?", Json({29, 29})));
}

TEST(NotifyCommand, MayLeaveTitleAndMessageOut)
{
    EXPECT_THAT(linesOf(StockConsole(), "lock\nnotify com.apple.MobileSMS\nshow controller._listItems[0].activeBulletin.title\n"
                                        "show controller._listItems[0].activeBulletin.message\n"),
                ElementsAre(nullptr, nullptr));
}

TEST(CardCommand, AddsACard)
{
    EXPECT_THAT(linesOf(StockConsole(), "lock\ncard pass.ferry 'Boarding pass'\nshow controller._listItems\n"
                                        "show controller._listItems[0].cardItem.identifier\n"
                                        "show controller._listItems[0].cardItem.title\n"),
                ElementsAre(Json::array({{{"class", "SBAwayCardListItem"}}}), "pass.ferry", "Boarding pass"));
}

TEST(AlertCommand, AddsASystemAlert)
{
    EXPECT_THAT(linesOf(StockConsole(), "lock\nalert 'Low Battery' '20%'\nshow controller._listItems\n"
                                        "show controller._listItems[0].title\n"),
                ElementsAre(Json::array({{{"class", "SBAwaySystemAlertItem"}}}), "Low Battery"));
}

TEST(UnknownCommand, AddsAnItemOfAnotherClass)
{
    EXPECT_EQ(lineOf(StockConsole(), "lock\nunknown\nshow controller._listItems"), Json::array({{{"class", "SBAwayListItem"}}}));
}

TEST(ItemCommands, PutTheNewestItemFirst)
{
    EXPECT_EQ(lineOf(StockConsole(), "lock\nunknown\nalert a\nshow controller._listItems"),
              Json::array({{{"class", "SBAwaySystemAlertItem"}}, {{"class", "SBAwayListItem"}}}));
}

TEST(ClearCommand, EmptiesTheList)
{
    EXPECT_EQ(lineOf(StockConsole(), "lock\nunknown\nalert a\nclear\nshow controller._listItems"), Json::array());
}

TEST(TeardownCommand, PartsTheViewFromItsController)
{
    EXPECT_THAT(linesOf(StockConsole(), "lock\nshow listView.model.class\nteardown\nshow listView.model"),
                ElementsAre("SBLockScreenNotificationListController", nullptr));
}

TEST(ScreenCommand, SwitchesTheScreen)
{
    EXPECT_THAT(linesOf(StockConsole(), "lock\nscreen off\nshow lockScreenView.isHidden\nscreen on\nshow "
                                        "lockScreenView.isHidden"),
                ElementsAre(true, false));
}

TEST(ArtCommand, ShowsTheArtView)
{
    EXPECT_EQ(lineOf(Console(), "lock\nart\nshow lockScreenView.subviews[0]")["class"], "_NowPlayingArtView");
}

TEST(UnderlayCommand, AddsTheUnderlayToTheStockLockScreen)
{
    const auto lines =
        linesOf(StockConsole(), "lock\nshow lockScreenView\nunderlay\nshow lockScreenView\nunderlay\nshow lockScreenView");
    ASSERT_EQ(lines.size(), 3U);
    EXPECT_EQ(lines[1]["subviews"], lines[0]["subviews"].get<int>() + 1);
    EXPECT_EQ(lines[2]["subviews"], lines[1]["subviews"]);
}

namespace {

const std::string requesters = "show lockScreenView._contentUnderlayRequesters.count\n"
                               "show lockScreenView.simulator_underlay.alpha\n";

} // namespace

TEST(PasscodeCommand, HasItsPageRequestTheUnderlayBesideOthers)
{
    EXPECT_THAT(linesOf(StockConsole(), "lock\npasscode on\n" + requesters + "underlay\n" + requesters + "passcode off\n" +
                                            requesters +
                                            "send lockScreenView _removeLockContentUnderlayWithRequester: "
                                            "@controller\n" +
                                            requesters),
                ElementsAre(1, 1, 2, 1, 1, 1, nullptr, 0, nullptr));
}

TEST(PasscodeCommand, SlidesEverythingElseAwayAndBack)
{
    EXPECT_THAT(linesOf(Console(), "lock\npasscode on\npasscode on\nshow listView.frame\npasscode off\npasscode off\n"
                                   "show listView.frame\n"),
                ElementsAre(Json::array({320, 0, 320, 568}), Json::array({0, 0, 320, 568})));
}

TEST(PasscodeCommand, GetsNoUnderlayWithTheLibrary)
{
    EXPECT_THAT(linesOf(Console(), "lock\nunderlay\npasscode on\n" + requesters + "passcode off\n" + requesters),
                ElementsAre(0, nullptr, 0, nullptr));
}

TEST(UnderlayCommand, AddsNothingWithTheLibrary)
{
    const auto lines = linesOf(Console(), "lock\nshow lockScreenView\nunderlay\nshow lockScreenView");
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_EQ(lines[1], lines[0]);
}

// Objects

TEST(ShowCommand, ShowsAViewWithItsGeometry)
{
    EXPECT_EQ(lineOf(StockConsole(), "lock\nshow listView"), (Json{{"class", "SBLockScreenNotificationListView"},
                                                                   {"frame", {0, 0, 320, 568}},
                                                                   {"bounds", {0, 0, 320, 568}},
                                                                   {"hidden", false},
                                                                   {"alpha", 1},
                                                                   {"subviews", 1}}));
}

TEST(ShowCommand, ShowsStringsNumbersAndNil)
{
    EXPECT_THAT(linesOf(Console(), "show stormString\nshow stormString.length\nshow settingsDictionary\nshow window.isHidden"),
                ElementsAre("Storm", 5, nullptr, false));
}

TEST(ShowCommand, ShowsTheFunctionsResults)
{
    EXPECT_THAT(linesOf(Console(), "clock 2014-03-05T08:30:00\nshow dateStatus()\nshow dateStatusString()\nshow getTempString()"),
                ElementsAre(0, "Good morning, Pal.", "It's 21° C and Cloudy."));
}

TEST(ShowCommand, ShowsAClassByItsName)
{
    EXPECT_EQ(lineOf(Console(), "show UIView"), "UIView");
}

TEST(ShowCommand, GivesNilForEveryStepFromNil)
{
    EXPECT_EQ(lineOf(Console(), "show settingsDictionary.anything[3].more"), nullptr);
}

TEST(ShowCommand, ReadsDictionariesByTheirKeys)
{
    const Console console;
    console.tree().writePreferencesXML(
        "<dict><key>Name</key><string>Ana</string><key>List</key><array><integer>4</integer><real>2.5"
        "</real><true/></array></dict>");
    EXPECT_THAT(linesOf(console,
                        "show 'settingsDictionary[\"Name\"]'\nshow settingsDictionary[Name]\n"
                        "show settingsDictionary[List]\nshow settingsDictionary[List][1]\nshow settingsDictionary[none]"),
                ElementsAre("Ana", "Ana", Json({4, 2.5, true}), 2.5, nullptr));
}

TEST(ShowCommand, EscapesWhatJSONEscapes)
{
    const Console console;
    console.tree().writePreferencesXML("<dict><key>Name</key><string>a\"b\\c&#10;d</string></dict>");
    EXPECT_EQ(lineOf(console, "show userName"), "a\"b\\c\nd");
}

TEST(TreeCommand, ShowsTheViewsBelow)
{
    const Json tree = lineOf(StockConsole(), "lock\ntree listView");
    ASSERT_EQ(tree["subviews"].size(), 1U);
    EXPECT_EQ(tree["subviews"][0]["class"], "UIView");
    EXPECT_EQ(tree["subviews"][0]["subviews"][0]["class"], "SBLockScreenNotificationTableView");
}

TEST(TreeCommand, BeginsAtTheWindowWithoutAPath)
{
    const auto lines = linesOf(StockConsole(), "lock\ntree\ntree window");
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_EQ(lines[0]["class"], "UIWindow");
    EXPECT_EQ(lines[0], lines[1]);
}

TEST(TreeCommand, IsNullForNil)
{
    EXPECT_EQ(lineOf(StockConsole(), "tree listView"), nullptr);
}

TEST(SendCommand, PrintsTheResult)
{
    EXPECT_THAT(linesOf(Console(),
                        "send stormString length\nsend stormString uppercaseString\nsend stormString isEqualToString: Storm\n"
                        "send stormString characterAtIndex: 1"),
                ElementsAre(5, "STORM", true, 116));
}

TEST(SendCommand, ReadsArgumentsByTheirTypes)
{
    const auto lines =
        linesOf(Console(), "let view send UIView alloc\nlet view send view initWithFrame: 1,2,30,40\n"
                           "send view setCenter: 50,60\nshow view.frame\nsend view setAlpha: 0.5\nshow view.alpha\n"
                           "send view setHidden: YES\nshow view.isHidden\nsend view setTag: -3\nshow view.tag\n"
                           "send view isKindOfClass: UIView\nsend view respondsToSelector: frame\n"
                           "send view isEqual: @view\nsend view isEqual: nil\n"
                           "send stormString substringWithRange: 1,3");
    EXPECT_THAT(lines, ElementsAre(nullptr, Json({35, 40, 30, 40}), nullptr, 0.5, nullptr, true, nullptr, -3, true, true, true,
                                   false, "tor"));
}

TEST(SendCommand, GivesNullForAReceiverThatIsNil)
{
    EXPECT_EQ(lineOf(Console(), "send settingsDictionary whatever: 1 2"), nullptr);
}

TEST(LetCommand, KeepsAnObjectUnderAName)
{
    EXPECT_THAT(linesOf(Console(), "let s stormString\nshow s\nlet s send s lowercaseString\nshow s"),
                ElementsAre("Storm", "storm"));
}

TEST(LetCommand, MayKeepNil)
{
    EXPECT_EQ(lineOf(Console(), "let s settingsDictionary\nshow s"), nullptr);
}

TEST(LetCommand, ComesBeforeExportedVariablesOfTheSameName)
{
    EXPECT_EQ(lineOf(Console(), "let stormString sunnyString\nshow stormString"), "Sunny");
}

TEST(AddCommand, PutsAViewIntoTheWindow)
{
    const auto lines =
        linesOf(StockConsole(), "lock\nlet v send UIView alloc\nlet v send v initWithFrame: 0,0,20,30\nadd v 60,300\n"
                                "show v.frame\nshow v.superview.class");
    EXPECT_THAT(lines, ElementsAre(Json({60, 300, 20, 30}), "UIWindow"));
}

TEST(LogCommand, GivesTheLinesOnce)
{
    // The calendar's swipe is one of the two things that the library writes into the log.
    const auto lines = linesOf(Console(), "let cal send APLCalendar new\nlog\nsend cal swipePerformed: nil\nlog\nlog");
    EXPECT_THAT(lines, ElementsAre(testing::_, nullptr, Json({"Swipe!"}), Json::array()));
}

TEST(QuitCommand, EndsTheScript)
{
    EXPECT_THAT(linesOf(Console(), "show stormString\nquit\nnonsense\n"), ElementsAre("Storm"));
}

TEST(SleepCommand, DeliversNotificationsMeanwhile)
{
    const Console console;
    LiveConsole live(console.root());
    EXPECT_EQ(live.ask("show userName"), "Pal");
    console.tree().writePreferencesXML("<dict><key>Name</key><string>Ana</string></dict>");
    live.type("sleep 60");
    EXPECT_EQ(postFromOutside(console.root(), "loadSolvaneS").status, 0);
}

// Screenshots

class ScreenshotCommand : public testing::TestWithParam<std::tuple<const char*, unsigned, unsigned>> {};

TEST_P(ScreenshotCommand, WritesAPictureOfTheScreensPixels)
{
    const auto [screen, width, height] = GetParam();
    Console console;
    console.options = {"--screen", screen};
    const fs::path file = console.root().parent_path() / "picture.png";
    linesOf(console, "clock 2014-03-05T08:30:00\nlock\nscreenshot " + file.native());
    EXPECT_EQ(sizeOfPNG(file), std::pair(width, height));
}

INSTANTIATE_TEST_SUITE_P(Screens, ScreenshotCommand,
                         testing::Values(std::tuple("320x568", 640U, 1136U), std::tuple("320x480@1", 320U, 480U),
                                         std::tuple("375x667@2", 750U, 1334U), std::tuple("414x736@3", 1242U, 2208U),
                                         std::tuple("100x100@4", 400U, 400U)));

TEST(ScreenshotCommand, IsTheSamePictureEveryTime)
{
    const Console console;
    const fs::path folder = console.root().parent_path();
    const std::string script = "clock 2014-03-05T08:30:00\nlock\nscreenshot " + folder.native();
    linesOf(console, script + "/a.png");
    linesOf(console, script + "/b.png");
    EXPECT_EQ(readFile(folder / "a.png"), readFile(folder / "b.png"));
}

TEST(ScreenshotCommand, ShowsWhatChanged)
{
    const Console console;
    const fs::path folder = console.root().parent_path();
    linesOf(console, "clock 2014-03-05T08:30:00\nlock\nscreenshot " + folder.native() + "/a.png\nscreenshot " + folder.native() +
                         "/b.png\nclock 2014-03-05T09:41:00\nlock\nscreenshot " + folder.native() + "/c.png");
    EXPECT_EQ(readFile(folder / "a.png"), readFile(folder / "b.png"));
    EXPECT_NE(readFile(folder / "a.png"), readFile(folder / "c.png"));
}

// The finger, on the stock list

namespace {

const std::string twoRows = "lock\nnotify com.apple.MobileSMS Ana\nnotify com.apple.mobilemail Bo\nlayout\n";
const std::string manyRows = "lock\nnotify a\nnotify b\nnotify c\nnotify d\nnotify e\nnotify f\nnotify g\nnotify h\nlayout\n";
const std::string showRows = "show listView._tableView.visibleCells[0].isHighlighted\n"
                             "show listView._tableView.visibleCells[1].isHighlighted\n"
                             "show listView._tableView.visibleCells[0].isSelected\n"
                             "show listView._tableView.visibleCells[1].isSelected\n";
const std::string showOffset = "show listView._tableView.contentOffset\n";

/// A view v whose taps t are counted: the recogniser's action adds it to an array.
const std::string countedTaps = "lock\nlet v send UIView alloc\nlet v send v initWithFrame: 0,0,100,100\nadd v 100,200\n"
                                "let log send NSMutableArray new\n"
                                "let t send UITapGestureRecognizer alloc\nlet t send t initWithTarget:action: @log addObject:\n"
                                "send v addGestureRecognizer: @t\n";

} // namespace

TEST(PressCommand, HighlightsTheRowUnderTheFinger)
{
    EXPECT_THAT(linesOf(StockConsole(), twoRows + "press 160,150\n" + showRows), ElementsAre(false, true, false, false));
}

TEST(PressCommand, LeavesTheRowsAloneOutsideOfThem)
{
    EXPECT_THAT(linesOf(StockConsole(), twoRows + "press 160,10\n" + showRows + "release\npress 160,300\n" + showRows),
                ElementsAre(false, false, false, false, false, false, false, false));
}

TEST(PressCommand, TakesAViewForAPlace)
{
    EXPECT_THAT(linesOf(StockConsole(), twoRows + "press listView._tableView.visibleCells[1]\n" + showRows),
                ElementsAre(false, true, false, false));
}

TEST(ReleaseCommand, SelectsTheRow)
{
    EXPECT_THAT(linesOf(StockConsole(), twoRows + "press 160,150\nrelease\n" + showRows), ElementsAre(false, false, false, true));
}

TEST(ReleaseCommand, MayLiftTheFingerElsewhere)
{
    EXPECT_THAT(linesOf(StockConsole(), twoRows + "press 160,150\nrelease 160,80\n" + showRows),
                ElementsAre(false, false, true, false));
}

TEST(ReleaseCommand, DoesNothingWithoutAFinger)
{
    EXPECT_THAT(linesOf(StockConsole(), twoRows + "release\nrelease 10,10\n" + showRows),
                ElementsAre(false, false, false, false));
}

TEST(ReleaseCommand, EndsATapWhenItComesSoonEnough)
{
    const std::string count = "show log.count\n";
    EXPECT_THAT(linesOf(StockConsole(), countedTaps + "press v\nrelease\n" + count + "press v\nsleep 0.2\nrelease\n" + count +
                                            "press v\nsleep 0.9\nrelease\n" + count + "tap v\n" + count),
                ElementsAre(nullptr, 1, 2, 2, 3));
}

TEST(ReleaseCommand, LetsTheListComeToRestBeforeTheNextCommand)
{
    const auto lines = linesOf(StockConsole(), manyRows + "press 160,100\nmove 160,300\n" + showOffset + "release\n" +
                                                   showOffset + "show listView._tableView.isDecelerating\n");
    ASSERT_EQ(lines.size(), 3U);
    EXPECT_LT(lines[0][1], -20);
    EXPECT_EQ(lines[1], Json({0, -20}));
    EXPECT_EQ(lines[2], false);
}

TEST(MoveCommand, DrawsTheListAlongAndLeavesItInTheFingersHold)
{
    EXPECT_THAT(linesOf(StockConsole(), manyRows + "press 160,300\nmove 160,250\n" + showOffset +
                                            "show listView._tableView.isDragging\nmove 160,290 3\n" + showOffset),
                ElementsAre(Json({0, 30}), true, Json({0, -10})));
}

TEST(MoveCommand, TakesItsTime)
{
    // A finger that has rested for a while pushes nothing.
    EXPECT_THAT(linesOf(StockConsole(), manyRows + "press 160,300\nmove 160,250\nmove 160,250 0.5\nrelease\n" + showOffset),
                ElementsAre(Json({0, 30})));
    const auto slow = lineOf(StockConsole(), manyRows + "press 160,300\nmove 160,250 1\nrelease\n" + showOffset);
    const auto quick = lineOf(StockConsole(), manyRows + "press 160,300\nmove 160,250\nrelease\n" + showOffset);
    EXPECT_GT(slow[1], 30);
    EXPECT_GT(quick[1], slow[1]);
}

TEST(MoveCommand, HoldsAFingerForTooLongATapWithoutWaitingForIt)
{
    EXPECT_THAT(linesOf(StockConsole(), countedTaps + "press v\nmove v 60\nrelease\nshow log.count\n"), ElementsAre(nullptr, 0));
}

TEST(TapCommand, SelectsTheRow)
{
    EXPECT_THAT(linesOf(StockConsole(), twoRows + "tap 160,80\n" + showRows), ElementsAre(false, false, true, false));
}

TEST(TapCommand, SelectsOneRowAtATime)
{
    EXPECT_THAT(linesOf(StockConsole(), twoRows + "tap 160,80\ntap 160,150\n" + showRows),
                ElementsAre(false, false, false, true));
}

TEST(TapCommand, DoesNothingOutsideTheRows)
{
    EXPECT_THAT(linesOf(StockConsole(), twoRows + "tap 160,10\ntap 160,300\n" + showRows),
                ElementsAre(false, false, false, false));
}

TEST(TapCommand, CountsItsTaps)
{
    EXPECT_THAT(
        linesOf(
            StockConsole(),
            countedTaps +
                "send t setNumberOfTapsRequired: 2\ntap v\nshow log.count\ntap v 2\nshow log.count\ntap v 3\nshow log.count\n"),
        ElementsAre(nullptr, nullptr, 0, 1, 2));
}

TEST(SwipeCommand, ScrollsALongList)
{
    // The finger's 160 points, and what the list goes on by itself: 600 points a second come to 300.
    std::string rows = manyRows;
    for (int i = 0; i < 8; ++i)
        rows += "notify more\n";
    const auto lines = linesOf(StockConsole(), rows + "layout\n" + showOffset + "swipe 160,300 up\n" + showOffset);
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_EQ(lines[1][1], lines[0][1].get<double>() + 459.5);
}

TEST(SwipeCommand, LeavesAListThatBouncesAtItsEnd)
{
    const auto lines = linesOf(StockConsole(), manyRows + "swipe 160,300 up\nswipe 160,300 up\n" + showOffset);
    // Eight rows of 72 points, and the inset of 190 below them.
    EXPECT_THAT(lines, ElementsAre(Json({0, 8 * 72 + 190 - 568})));
}

TEST(SwipeCommand, DoesNotScrollAShortList)
{
    const auto lines = linesOf(StockConsole(), twoRows + showOffset + "swipe 160,150 up\n" + showOffset);
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_EQ(lines[1], lines[0]);
}

TEST(SwipeCommand, SelectsNoRow)
{
    EXPECT_THAT(linesOf(StockConsole(), manyRows + "swipe 160,80 up\n" + showRows), ElementsAre(false, false, false, false));
}

TEST(SwipeCommand, EndsTheHighlightOfTheRowItBeganOn)
{
    const auto lines = linesOf(StockConsole(), manyRows + "swipe listView._tableView.visibleCells[1] up\n" + showRows);
    EXPECT_THAT(lines, ElementsAre(false, false, false, false));
}

TEST(SwipeCommand, LiftsAFingerThatIsDownFirst)
{
    const auto lines =
        linesOf(StockConsole(), manyRows + "press listView._tableView.visibleCells[1]\nswipe 160,300 up\n" + showRows);
    EXPECT_THAT(lines, ElementsAre(false, false, false, true));
}

TEST(SwipeCommand, ScrollsBackDown)
{
    const auto lines = linesOf(StockConsole(), manyRows + showOffset + "swipe 160,300 up\nswipe 160,300 down\n" + showOffset);
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_EQ(lines[1], lines[0]);
}

TEST(SwipeCommand, TellsARecogniserItsDirection)
{
    const std::string script = "lock\nlet v send UIView alloc\nlet v send v initWithFrame: 0,0,200,200\nadd v 60,200\n"
                               "let log send NSMutableArray new\n"
                               "let s send UISwipeGestureRecognizer alloc\nlet s send s initWithTarget:action: @log addObject:\n"
                               "send s setDirection: 2\nsend v addGestureRecognizer: @s\n";
    EXPECT_THAT(linesOf(StockConsole(), script + "swipe v right\nswipe v up\nshow log.count\nswipe v left\nshow log.count\n"),
                ElementsAre(nullptr, nullptr, 0, 1));
}
