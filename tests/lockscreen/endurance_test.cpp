#include <gmock/gmock.h>

#include "simulator/foundation/system_log.hpp"
#include "tests/support/MorningPhone.hpp"
#include "tests/support/Picture.hpp"
#include "tests/support/list_items.hpp"
#include "tests/support/live_objects.hpp"
#include "tests/support/panel.hpp"

/// A lock screen that goes on for weeks leaves nothing behind.

namespace {

constexpr const char* applications[] = {"com.apple.mobilemail", "com.apple.MobileSMS", "com.apple.mobilecal", "org.solvane.ferry",
                                        "org.example.removed"};

class Endurance : public testing::Test {
protected:
    /// What is done so often; whatever is made once is made by the first rounds.
    template <class Round>
    void expectNothingLeft(int rounds, Round round)
    {
        const auto doOften = [&](int times) {
            for (int i = 0; i < times; ++i) {
                const AutoreleasePool pool;
                round(i);
                simulator::takeSystemLog();
            }
        };
        doOften(3);
        const auto before = livingObjects();
        doOften(rounds);
        EXPECT_EQ(livingObjects(), before);
    }

    static void clear() { send<"clearItemsForNotificationCenter">(simulator::listController()); }

    LockedPhone phone_;
};

} // namespace

TEST_F(Endurance, TenThousandNotificationsLeaveNothingBehind)
{
    std::vector<Owned<NSObject>> items;
    for (int i = 0; i < 10; ++i)
        items.push_back(notification(applications[i % 5]));
    expectNothingLeft(1000, [&](int) {
        for (const auto& item : items)
            simulator::addListItem(item);
        clear();
    });
}

TEST_F(Endurance, ItemsOfEveryKindLeaveNothingBehind)
{
    expectNothingLeft(200, [](int) {
        simulator::addListItem(simulator::cardItem(text("pass.1"), text("Ferry")));
        simulator::addListItem(simulator::systemAlertItem(text("Low Battery"), text("20% left")));
        simulator::addListItem(simulator::unknownItem());
        simulator::addListItem(simulator::bulletinItem(nullptr, nullptr, nullptr));
        simulator::addListItem(notification("noIdentifier"));
        clear();
    });
}

TEST_F(Endurance, TapsAndLayoutsLeaveNothingBehind)
{
    expectNothingLeft(200, [](int) {
        notify(applications[0]);
        panel::tap(panel::calendarIcon());
        panel::tap(panel::notificationIcon());
        panel::layOut();
        panel::tap(panel::notificationIcon(), 2);
        clear();
    });
}

TEST_F(Endurance, TheScreenLeavesNothingBehind)
{
    expectNothingLeft(1000, [](int i) { send<"setInScreenOffMode:">(simulator::listController(), BOOL{i % 2 == 0}); });
}

TEST_F(Endurance, LockScreensLeaveNothingBehind)
{
    expectNothingLeft(100, [](int) {
        simulator::lockScreen();
        notify(applications[1]);
        panel::tap(panel::notificationIcon());
    });
}

TEST_F(Endurance, ArtViewsLeaveNothingBehind)
{
    expectNothingLeft(1000, [](int) {
        const Class cls = objc_getClass("_NowPlayingArtView");
        const auto art = adopt(send<"alloc", UIView*>(cls)->initWithFrame(CGRect::make(0, 0, 320, 320)));
    });
}

TEST_F(Endurance, PicturesOfTheScreenLeaveNothingBehind)
{
    expectNothingLeft(4, [](int i) {
        notify(applications[i % 5]);
        screenshot();
        panel::tap(panel::calendarIcon());
        screenshot();
        clear();
    });
}
