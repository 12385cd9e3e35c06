#include <gmock/gmock.h>

#include "platform/UIKit/UIView.hpp"
#include "simulator/foundation/system_log.hpp"
#include "simulator/loader/injection.hpp"
#include "tests/support/Phone.hpp"
#include "tests/support/runtime_calls.hpp"

/// The library where it cannot do its work: it does nothing then.

namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

Class allocateView(const char* name)
{
    return objc_allocateClassPair(objc_getClass("UIView"), name, 0);
}

void makeView(const char* name)
{
    objc_registerClassPair(allocateView(name));
}

/// Loads the library, which has a reason to do nothing, and looks for what it did.
void expectNothingButALine(const Phone& phone, const std::string& line)
{
    fs::copy_file(fs::path(FIXTURE_FOLDER) / "recording_library.dylib", phone.tree().artLibrary(),
                  fs::copy_options::overwrite_existing);
    phone.tree().writePreferencesXML("<dict><key>Name</key><string>Ana</string></dict>");
    const std::string names[] = {"APLCalendar", "SVWidget", "SVAppsView"};
    std::vector<Class> before;
    for (const std::string& name : names)
        before.push_back(objc_getClass(name.c_str()));
    const objc_protocol* const protocol = objc_getProtocol("APLCalendarDelegate");
    simulator::takeSystemLog();

    simulator::injectLibraries({});
    EXPECT_THAT(simulator::takeSystemLog(), ElementsAre(line));
    EXPECT_THAT(loadedLibraries(), IsEmpty());
    EXPECT_THAT(installedMethods(), IsEmpty());
    for (std::size_t i = 0; i < std::size(names); ++i)
        EXPECT_EQ(objc_getClass(names[i].c_str()), before[i]) << names[i];
    EXPECT_EQ(objc_getProtocol("APLCalendarDelegate"), protocol);
    for (const char* name : {"settingsDictionary", "userName", "palString", "morningString", "nightString", "sunnyString"})
        EXPECT_EQ(exportedVariable(name), nullptr) << name;

    phone.post("loadSolvaneS");
    EXPECT_EQ(exportedVariable("settingsDictionary"), nullptr);
    simulator::lockScreen();
    EXPECT_EQ(exportedVariable("headlineLabel"), nullptr);
    EXPECT_THAT(simulator::takeSystemLog(), IsEmpty());
}

class TakenName : public testing::TestWithParam<const char*> {};

} // namespace

// A name that is taken

TEST_P(TakenName, OfAClassMadeAtRunTimeIsLeftToIt)
{
    const Phone phone;
    makeView(GetParam());
    expectNothingButALine(phone,
                          std::string("Solvane stands aside: there is a class ") + GetParam() + " already (made at run time)");
}

INSTANTIATE_TEST_SUITE_P(Each, TakenName, testing::Values("APLCalendar", "SVWidget", "SVAppsView"),
                         [](const auto& name) { return std::string(name.param); });

using StandingAside = TestOn<Phone>;

TEST_F(StandingAside, TellsWhichLibraryHasTheClass)
{
    simulator::openImage(phone.tree().addLibrary(fs::path(FIXTURE_FOLDER) / "calendar_library.dylib", "Another.dylib"));
    expectNothingButALine(phone, "Solvane stands aside: there is a class APLCalendar already "
                                 "(/Library/MobileSubstrate/DynamicLibraries/Another.dylib)");
}

TEST_F(StandingAside, IsForTheProtocolToo)
{
    objc_registerProtocol(objc_allocateProtocol("APLCalendarDelegate"));
    expectNothingButALine(phone, "Solvane stands aside: there is a protocol APLCalendarDelegate already");
}

TEST_F(StandingAside, IsForTheSecondOfTwoCopies)
{
    phone.tree().addLibrary(phone.tree().libraryFolder() / "Solvane.dylib", "Twice.dylib");
    phone.inject();
    EXPECT_THAT(simulator::takeSystemLog(),
                ElementsAre("Solvane stands aside: there is a class APLCalendar already (made at run time)"));
    EXPECT_THAT(installedMethods(), SizeIs(12));
    simulator::lockScreen();
    EXPECT_EQ(classNameOf(exportedVariable("widgetView")), "SVWidget");
}

TEST_F(StandingAside, IsForEveryProcessButSpringBoard)
{
    hideClass("SpringBoard");
    expectNothingButALine(phone, "Solvane stands aside: this is not SpringBoard");
}

/// Nobody sees a class before it is registered: the library takes the name, and it is the other's class that comes too late.
TEST_F(StandingAside, IsNotForAClassThatIsNotRegisteredYet)
{
    const Class others = allocateView("APLCalendar");
    phone.inject();
    const Class calendar = objc_getClass("APLCalendar");
    ASSERT_NE(calendar, nullptr);
    EXPECT_NE(calendar, others);
    EXPECT_THAT(installedMethods(), SizeIs(12));
    objc_registerClassPair(others);
    EXPECT_EQ(objc_getClass("APLCalendar"), calendar);
    simulator::lockScreen();
    EXPECT_EQ(classNameOf(exportedVariable("widgetView")), "SVWidget");
}
