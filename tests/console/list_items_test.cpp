#include <gmock/gmock.h>

#include "tests/support/Console.hpp"

/// Notifications that arrive, change and go, and what the panel makes of it.

namespace {

using testing::ElementsAre;
using testing::HasSubstr;

const std::string items = "show controller._listItems.count\n";
const std::string titles = "show controller._listItems[0].title\nshow controller._listItems[0].message\n";
const std::string mira = "notify --person Mira com.apple.MobileSMS Mira ";

std::vector<Json> answers(const std::string& script)
{
    return linesOf(Console(), "clock 2014-03-05T08:30:00\nlock\n" + script);
}

const std::string icons = "show appsView.iconImgViews.count\n";

std::string complaintOf(const std::string& script)
{
    const ConsoleRun run = Console().run("lock\n" + script);
    EXPECT_EQ(run.status, 2);
    return run.errors;
}

} // namespace

TEST(NotifyCommand, GivesANotificationAnItemOfItsOwn)
{
    EXPECT_THAT(answers("notify com.apple.MobileSMS Mira One\nnotify com.apple.MobileSMS Mira Two\n" + items), ElementsAre(2));
}

TEST(NotifyCommand, LetsANotificationFromTheSamePersonJoinTheItem)
{
    EXPECT_THAT(answers(mira + "One\n" + mira + "Two\n" + items + "show controller._listItems[0].bulletins.count\n" + titles),
                ElementsAre(1, 2, "Mira", "Two"));
}

TEST(NotifyCommand, KeepsPersonsAndApplicationsApart)
{
    EXPECT_THAT(answers(mira +
                        "One\nnotify --person Ana com.apple.MobileSMS Ana Two\n"
                        "notify --person Mira com.apple.mobilemail Mira Three\n"
                        "notify com.apple.MobileSMS Mira Four\n" +
                        items),
                ElementsAre(4));
}

TEST(NotifyCommand, AsksForTheApplicationBehindThePerson)
{
    EXPECT_THAT(complaintOf("notify --person Mira"), HasSubstr("usage: notify --person NAME BUNDLE-ID [TITLE [MESSAGE]]"));
}

TEST(ANotificationThatJoinsAnItem, ChangesNothingOfThePanel)
{
    EXPECT_THAT(
        answers(mira + "One\nscreen on\n" + "show subtitleLabel.text\n" + mira + "Two\nshow subtitleLabel.text\n" + icons),
        ElementsAre("It's 21° C and Cloudy.", "It's 21° C and Cloudy.", 1));
}

TEST(ModifyCommand, GivesANotificationOtherTexts)
{
    EXPECT_THAT(answers("notify com.apple.MobileSMS Mira One\nmodify 0 Ana Two\n" + items + titles),
                ElementsAre(1, "Ana", "Two"));
}

TEST(ModifyCommand, GivesACardAnotherTitle)
{
    EXPECT_THAT(answers("card pass.1 Ferry\nmodify 0 Train\n" + items +
                        "show controller._listItems[0].title\nshow controller._listItems[0].cardItem.identifier\n"),
                ElementsAre(1, "Train", "pass.1"));
}

TEST(CardCommand, UpdatesACardThatTheListHas)
{
    EXPECT_THAT(answers("card pass.1 Ferry\ncard pass.2 Train\ncard pass.1 Boat\n" + items +
                        "show controller._listItems[1].title\nshow appsView.iconImgViews.count\n"),
                ElementsAre(2, "Boat", 2));
}

TEST(AlertCommand, GivesEachAlertAnItem)
{
    EXPECT_THAT(answers("alert Low\nalert Low\n" + items), ElementsAre(2));
}

TEST(ModifyCommand, RefusesAnItemWithoutTexts)
{
    EXPECT_THAT(complaintOf("unknown\nmodify 0 Ana"), HasSubstr("item 0 has no texts"));
}

TEST(RemoveCommand, WithdrawsTheLatestOfSeveralNotifications)
{
    EXPECT_THAT(answers(mira + "One\n" + mira + "Two\nremove 0\n" + items + titles), ElementsAre(1, "Mira", "One"));
}

TEST(RemoveCommand, TakesTheItemWithItsLastNotification)
{
    EXPECT_THAT(answers(mira + "One\nalert Low\nremove 1\n" + items + "remove 0\n" + items), ElementsAre(1, 0));
}

TEST(RemoveCommand, LeavesTheIconInTheStripUntilTheStripIsEmptied)
{
    EXPECT_THAT(answers(mira + "One\nremove 0\n" + icons + "clear\n" + icons), ElementsAre(1, 0));
}

TEST(PlacesInTheList, AreCheckedAgainstIt)
{
    EXPECT_THAT(complaintOf("remove 0"), HasSubstr("there is no item 0 in the list, which has 0"));
    EXPECT_THAT(complaintOf("unknown\nmodify -1 Ana"), HasSubstr("there is no item -1 in the list, which has 1"));
}
