#include <gmock/gmock.h>

#include "simulator/foundation/system_log.hpp"
#include "simulator/loader/Image.hpp"
#include "simulator/runtime/SimulatedClass.hpp"
#include "tests/support/Phone.hpp"
#include "tests/support/SettingsPage.hpp"

/// The page's code where it cannot be of use: it makes nothing and says so.

namespace {

using testing::ElementsAre;

struct Nothing {};

} // namespace

TEST(ThePagesCode, StandsAsideInAProcessThatIsNotTheSettings)
{
    Phone springboard;
    simulator::openImage(springboard.tree().root() / "Library/PreferenceBundles/Solvane.bundle/Solvane");
    EXPECT_EQ(objc_getClass("SVSettingsController"), nullptr);
    EXPECT_THAT(simulator::takeSystemLog(), ElementsAre("Solvane's page stands aside: these are not the Settings"));
}

TEST(ThePagesCode, StandsAsideWhereItsNameIsTaken)
{
    SettingsPage settings;
    const Class taken = simulator::SimulatedClass<Nothing>("SVSettingsController", "PSListController").registerClass();
    settings.open();
    EXPECT_EQ(objc_getClass("SVSettingsController"), taken);
    EXPECT_EQ(class_getInstanceMethod(taken, sel_registerName("relaunch:")), nullptr);
    EXPECT_THAT(simulator::takeSystemLog(),
                ElementsAre("Solvane's page stands aside: there is a class SVSettingsController already"));
}
