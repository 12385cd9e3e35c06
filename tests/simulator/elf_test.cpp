#include <gmock/gmock.h>

#include "simulator/loader/injection.hpp"
#include "tests/support/Phone.hpp"

/// Libraries in the machine's own form, however they were linked.

namespace {

using testing::SizeIs;

/// The linker of a library, and the table that the machine's loader finds its symbols by.
class MachineLibrary : public testing::TestWithParam<const char*> {};

} // namespace

TEST_P(MachineLibrary, ShowsAllThatItExports)
{
    constexpr int half = 200;
    const Phone phone;
    const auto file = std::filesystem::path(FIXTURE_FOLDER) / (std::string("many_exports_") + GetParam() + ".dylib");
    simulator::injectLibraries({file});
    EXPECT_THAT(simulator::openImage(file).exports(), SizeIs(2 * half));
    for (int i = 0; i < half; ++i) {
        const std::string number = std::to_string(i);
        EXPECT_EQ(exported("variable" + number), exportedFunction<void*()>("addressOfVariable" + number)());
    }
}

INSTANTIATE_TEST_SUITE_P(LinkedWith, MachineLibrary,
                         testing::Values("bfd_gnu", "bfd_sysv", "bfd_both", "lld_gnu", "lld_sysv", "lld_both"),
                         [](const auto& linkedWith) { return std::string(linkedWith.param); });
