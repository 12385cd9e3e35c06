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

TEST(MachineLibraryFile, IsRefusedWhenItIsCutOffAnywhere)
{
    const Phone phone;
    const std::string library = readFile(std::filesystem::path(FIXTURE_FOLDER) / "many_exports_bfd_gnu.dylib");
    const auto file = phone.tree().libraryFolder() / "Cut.dylib";
    // Behind the segments stands what no loader reads.
    for (std::size_t length = 1; length < library.size() / 2; length += 499) {
        writeFile(file, library.substr(0, length));
        EXPECT_THROW(simulator::openImage(file), std::runtime_error) << length << " bytes";
    }
}

INSTANTIATE_TEST_SUITE_P(LinkedWith, MachineLibrary,
                         testing::Values("bfd_gnu", "bfd_sysv", "bfd_both", "lld_gnu", "lld_sysv", "lld_both"),
                         [](const auto& linkedWith) { return std::string(linkedWith.param); });
