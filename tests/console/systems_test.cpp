#include <algorithm>
#include <gmock/gmock.h>

#include "tests/support/Console.hpp"

/// Which system the phone runs.

namespace {

using testing::ElementsAre;

/// A console on that system.
struct SystemConsole : Console {
    explicit SystemConsole(const std::string& version) { options = {"--system", version}; }
};

constexpr const char* lookUps = "let applications send SBApplicationController sharedInstance\n"
                                "send applications respondsToSelector: applicationWithDisplayIdentifier:\n"
                                "send applications respondsToSelector: applicationWithBundleIdentifier:\n";

class Systems : public testing::TestWithParam<const char*> {};

INSTANTIATE_TEST_SUITE_P(All, Systems, testing::Values("7.0", "7.0.4", "7.1", "8.1", "8.4"), [](const auto& info) {
    std::string name = info.param;
    std::ranges::replace(name, '.', '_');
    return name;
});

} // namespace

TEST_P(Systems, IsTheOneThatWasAskedForAfterARelaunchToo)
{
    EXPECT_THAT(linesOf(SystemConsole(GetParam()), "system\npost RespringSV\nsystem\n"), ElementsAre(GetParam(), GetParam()));
}

TEST_P(Systems, FindsAnApplicationByTheMethodOfItsTime)
{
    const bool isSeven = GetParam()[0] == '7';
    EXPECT_THAT(linesOf(SystemConsole(GetParam()), lookUps), ElementsAre(isSeven, !isSeven));
}

TEST(System, IsEightPointOneUnlessAnotherIsAskedFor)
{
    const PhoneTree tree;
    const auto run = consoleRun(runProgram({springboardProgram(), "--root", tree.root(), "--script", "-"}, {}, "system\n"));
    EXPECT_EQ(run.line(), "8.1");
}
