#include <gmock/gmock.h>
#include <sys/stat.h>

#include "tests/support/Console.hpp"

/// Where the parts of the stock lock screen stand, and the panel with them.

namespace {

using testing::ElementsAre;
using testing::HasSubstr;

/// A console with that geometry, on a screen of that size.
struct GeometryConsole : Console {
    explicit GeometryConsole(const std::string& geometry, const std::string& screen = "320x568")
    {
        options = {"--geometry", geometry, "--screen", screen};
    }
};

/// A report of a screen of 320 by 480 points, no two of its numbers alike.
Json report()
{
    return Json::parse(R"({
        "system": "7.1",
        "screen": [320, 480],
        "frames": {
            "_dateView": [1, 21, 318, 102],
            "_slideToUnlockView": [2, 401, 316, 50.5],
            "_notificationView": [3, 4, 314, 470],
            "_containerView": [5, 120, 304, 300],
            "_tableView": [6, 7, 290, 280]
        },
        "insets": {"_tableView": [8, 9, 10, 11]}
    })");
}

/// A file with a report in it.
class Report {
public:
    explicit Report(const std::string& text) { writeFile(file(), text); }
    explicit Report(const char* text) : Report(std::string(text)) {}
    explicit Report(const Json& json) : Report(json.dump()) {}

    std::string file() const { return folder_.path() / "report.json"; }
    GeometryConsole console() const { return GeometryConsole(file(), "320x480"); }

private:
    TemporaryFolder folder_;
};

const std::string stockFrames = "show lockScreenView._dateView.frame\n"
                                "show lockScreenView._slideToUnlockView.frame\n"
                                "show listView.frame\n"
                                "show listView._containerView.frame\n"
                                "show listView._tableView.frame\n";

/// The stock lock screen's frames, in that order, where no library is injected.
std::vector<Json> stockFramesOf(const GeometryConsole& console)
{
    console.uninstallLibrary();
    return linesOf(console, "lock\n" + stockFrames);
}

Json frame(double x, double y, double width, double height)
{
    return Json::array({x, y, width, height});
}

} // namespace

TEST(Geometry, IsTheDesksUnlessAnotherIsAskedFor)
{
    EXPECT_EQ(lineOf(Console(), "geometry\n"), lineOf(GeometryConsole("desk"), "geometry\n"));
    EXPECT_EQ(lineOf(Console(), "geometry\n")["name"], "desk");
}

TEST(Geometry, IsInTheHelp)
{
    const Outcome help = runProgram({springboardProgram(), "--help"});
    EXPECT_THAT(help.output, HasSubstr("\n  --geometry WHERE"));
    EXPECT_THAT(help.output, HasSubstr("\n  geometry\n"));
}

TEST(TheDesksGeometry, HasTheClockAtTheFootOfTheScreenAndTheContainerAllOverIt)
{
    EXPECT_THAT(stockFramesOf(GeometryConsole("desk")), ElementsAre(frame(0, 404, 320, 108), nullptr, frame(0, 0, 320, 568),
                                                                    frame(0, 0, 320, 568), frame(0, 0, 320, 568)));
}

TEST(ThePhonesGeometry, HasTheContainerBetweenTheClockAndSlideToUnlock)
{
    EXPECT_THAT(stockFramesOf(GeometryConsole("phone")),
                ElementsAre(frame(0, 20, 320, 108), frame(0, 472, 320, 68), frame(0, 0, 320, 568), frame(0, 130, 320, 342),
                            frame(0, 0, 320, 342)));
}

TEST(ThePhonesGeometry, FollowsTheScreen)
{
    EXPECT_THAT(stockFramesOf(GeometryConsole("phone", "414x736@3")),
                ElementsAre(frame(0, 20, 414, 108), frame(0, 640, 414, 68), frame(0, 0, 414, 736), frame(0, 130, 414, 510),
                            frame(0, 0, 414, 510)));
}

TEST(ThePhonesGeometry, LeavesNothingForTheContainerOnAScreenThatIsTooLow)
{
    EXPECT_EQ(lineOf(GeometryConsole("phone", "100x100"), "lock\nshow listView._containerView.frame\n"), frame(0, 130, 100, 0));
}

TEST(ThePhonesGeometry, HasThePanelStandInTheContainer)
{
    EXPECT_THAT(linesOf(GeometryConsole("phone"),
                        "lock\ntap 38,233\nshow calendarPaneView.isHidden\nshow calendarPaneView.frame\n"
                        "show calendarPaneView.superview.frame\n"),
                ElementsAre(false, frame(0, 130, 320, 212), frame(0, 130, 320, 342)));
}

namespace {

const std::string slidAside = "show listView.frame\n";
const Json aside = frame(320, 0, 320, 568);
const Json inPlace = frame(0, 0, 320, 568);

} // namespace

TEST(SlideToUnlock, BringsThePasscodesPageAndBack)
{
    EXPECT_THAT(linesOf(GeometryConsole("phone"), "lock\nswipe 60,510 right\n" + slidAside + "swipe 300,510 left\n" + slidAside +
                                                      "swipe 60,200 down\n" + slidAside),
                ElementsAre(aside, inPlace, inPlace));
}

TEST(SlideToUnlock, IsNotOnTheDesk)
{
    EXPECT_EQ(lineOf(GeometryConsole("desk"), "lock\nswipe 60,510 right\n" + slidAside), inPlace);
}

TEST(SlideToUnlock, LeavesTheFingerToAStripThatScrolls)
{
    std::string notifications;
    for (const char* application : {"mobilemail", "MobileSMS", "Music", "mobilephone"})
        notifications += std::string("notify com.apple.") + application + '\n';
    EXPECT_THAT(linesOf(GeometryConsole("phone"), "lock\n" + notifications +
                                                      "layout\nswipe 200,280 left\nshow appsView.contentOffset\n"
                                                      "swipe 100,280 right\nshow appsView.contentOffset\n" +
                                                      slidAside),
                ElementsAre(Json::array({72, 0}), Json::array({0, 0}), inPlace));
}

TEST(SlideToUnlock, LeavesTheFingerToTheOpenListAndNotToTheMonth)
{
    EXPECT_THAT(linesOf(GeometryConsole("phone"), "lock\nnotify com.apple.mobilemail\ntap notificationIconView\n"
                                                  "swipe 60,300 right\n" +
                                                      slidAside + "tap calendarIconView\nswipe 60,300 right\n" + slidAside),
                ElementsAre(inPlace, aside));
}

TEST(SlideToUnlock, LeavesATapToTheIcons)
{
    EXPECT_EQ(lineOf(GeometryConsole("phone"), "lock\ntap calendarIconView\nshow calendarPaneView.isHidden\n"), false);
}

TEST(AReport, TellsWhereEachPartStands)
{
    const Json frames = report()["frames"];
    EXPECT_THAT(stockFramesOf(Report(report()).console()),
                ElementsAre(frames["_dateView"], frames["_slideToUnlockView"], frames["_notificationView"],
                            frames["_containerView"], frames["_tableView"]));
}

TEST(AReport, TellsWhereRowsBegin)
{
    const Report file(report());
    EXPECT_EQ(lineOf(file.console(), "geometry\n")["insets"]["_tableView"], report()["insets"]["_tableView"]);
    // Contents at rest begin below the inset.
    EXPECT_EQ(lineOf(file.console(), "lock\nshow listView._tableView.bounds\n")[1], -8);
}

TEST(AReport, MayBeOfALockScreenWithoutSlideToUnlock)
{
    Json without = report();
    without["frames"]["_slideToUnlockView"] = nullptr;
    EXPECT_EQ(lineOf(Report(without).console(), "lock\nshow lockScreenView._slideToUnlockView\n"), nullptr);
}

TEST(AReport, IsWhatTheGeometryCommandPrints)
{
    const Json printed = lineOf(GeometryConsole("phone", "320x480"), "geometry\n");
    const Report file(printed);
    Json expected = printed;
    expected["name"] = file.file();
    EXPECT_EQ(lineOf(file.console(), "geometry\n"), expected);
}

TEST(AReport, HoldsAfterARelaunchToo)
{
    const Report file(report());
    EXPECT_EQ(lineOf(file.console(), "lock\npost RespringSV\nshow listView._containerView.frame\n"),
              report()["frames"]["_containerView"]);
}

TEST(TheListView, TellsTheContainersInsetsOnSystemsThatHaveAMethodForThem)
{
    for (const auto& [system, answers] : {std::pair{"7.1", true}, std::pair{"8.1", false}}) {
        GeometryConsole console("phone");
        console.options.insert(console.options.end(), {"--system", system});
        EXPECT_EQ(lineOf(console, "send SBLockScreenNotificationListView instancesRespondToSelector: _contentViewInsets\n"),
                  answers)
            << system;
    }
}

namespace {

void expectRefused(const std::string& geometry, const std::string& complaint)
{
    const GeometryConsole console(geometry, "320x480");
    const ConsoleRun run = console.run("quit\n");
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(run.errors, "springboard: --geometry: " + geometry + ": " + complaint + "\n");
}

void expectRefused(const Report& report, const std::string& complaint)
{
    expectRefused(report.file(), complaint);
}

/// The report with another value at that place.
Report reportWith(const char* place, const Json& value)
{
    Json changed = report();
    changed[Json::json_pointer(place)] = value;
    return Report(changed);
}

} // namespace

TEST(AReport, IsRefusedWhenItIsNoRegularFile)
{
    const TemporaryFolder folder;
    expectRefused("/no/such/report", "No such file or directory");
    expectRefused(folder.path(), "Is a directory");
    expectRefused("/dev/null", "it is no regular file");
    const std::string pipe = folder.path() / "pipe";
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    expectRefused(pipe, "it is no regular file");
    expectRefused(Report(std::string((1 << 20) + 1, ' ')), "File too large");
}

TEST(AReport, IsRefusedWhenItIsNoJSON)
{
    expectRefused(Report(""), "it is no JSON");
    expectRefused(Report("{\"screen\": [320, 480]"), "it is no JSON");
    expectRefused(Report("{\"screen\": [1e999, 480]}"), "it is no JSON");
    expectRefused(Report(std::string(500000, '[')), "it is no JSON");
}

TEST(AReport, IsRefusedWhenSomethingIsMissing)
{
    for (const char* text : {"[]", "5", "null", "\"screen\"", "{}", "{\"frames\": {}}"})
        expectRefused(Report(text), "it lacks screen");
    expectRefused(Report("{\"screen\": [320, 480], \"frames\": [1, 2]}"), "it lacks frames/_notificationView");
    for (const char* view : {"_dateView", "_slideToUnlockView", "_notificationView", "_containerView", "_tableView"}) {
        Json without = report();
        without["frames"].erase(view);
        expectRefused(Report(without), std::string("it lacks frames/") + view);
    }
    Json without = report();
    without.erase("insets");
    expectRefused(Report(without), "it lacks insets/_tableView");
}

TEST(AReport, IsRefusedWhenAPlaceIsNotSaidInNumbers)
{
    const std::string fourNumbers = "frames/_dateView must be 4 numbers from -10000 to 10000";
    for (const char* bad : {"null", "5", "{}", "[1, 2, 3]", "[1, 2, 3, 4, 5]", "[1, 2, 3, \"4\"]", "[1, 2, 3, 10001]",
                            "[-10000.5, 2, 3, 4]", "[1, 2, 3, null]"})
        expectRefused(reportWith("/frames/_dateView", Json::parse(bad)), fourNumbers);
    expectRefused(reportWith("/frames/_tableView", {1, 2, -3, 4}), "frames/_tableView has a side below 0");
    expectRefused(reportWith("/insets/_tableView", {1, 2, 3}), "insets/_tableView must be 4 numbers from -10000 to 10000");
}

TEST(AReport, IsRefusedWhenItIsOfAnotherScreen)
{
    expectRefused(reportWith("/screen", {375, 667}), "it is of a screen of 375x667 points: choose that with --screen");
}
