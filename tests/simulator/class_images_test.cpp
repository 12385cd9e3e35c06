#include <gmock/gmock.h>

#include "tests/support/Phone.hpp"

/// Which library a class comes from, as the runtime tells.

namespace {

namespace fs = std::filesystem;
using testing::EndsWith;
using testing::StrEq;

/// Puts another extension's library beside the others.
void install(const Phone& phone, const char* fixture, const char* name)
{
    const fs::path folder = phone.tree().libraryFolder();
    fs::copy_file(fs::path(FIXTURE_FOLDER) / fixture, folder / name);
    fs::copy_file(folder / "Solvane.plist", (folder / name).replace_extension(".plist"));
}

} // namespace

using ClassImages = TestOn<Phone>;

TEST_F(ClassImages, HaveTheirPathOnThePhone)
{
    install(phone, "calendar_library.dylib", "Another.dylib");
    phone.inject();
    EXPECT_THAT(class_getImageName(objc_getClass("APLCalendar")),
                StrEq("/Library/MobileSubstrate/DynamicLibraries/Another.dylib"));
}

TEST_F(ClassImages, AreNoneOfAClassThatIsMadeAtRunTime)
{
    install(phone, "phone_library.dylib", "Another.dylib");
    phone.inject();
    EXPECT_EQ(class_getImageName(objc_getClass("SmallArguments")), nullptr);
    EXPECT_EQ(class_getImageName(objc_getClass("SVWidget")), nullptr);
    EXPECT_EQ(class_getImageName(nullptr), nullptr);
}

TEST_F(ClassImages, AreFoundByTheAddressInALibraryOfThePhonesForm)
{
    install(phone, "phone_library.dylib", "Another.dylib");
    phone.inject();
    EXPECT_THAT(class_getImageName(reinterpret_cast<Class>(exported("truthOf"))),
                StrEq("/Library/MobileSubstrate/DynamicLibraries/Another.dylib"));
}

TEST_F(ClassImages, AreThisMachinesForWhatIsOutsideOfThePhone)
{
    EXPECT_THAT(class_getImageName(objc_getClass("NSString")), EndsWith("libgnustep-base.so.1.28"));
}
