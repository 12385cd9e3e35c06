#include <gmock/gmock.h>

#include "tests/support/Phone.hpp"

/// Which library a class comes from, as the runtime tells.

namespace {

namespace fs = std::filesystem;
using testing::EndsWith;
using testing::StrEq;

const fs::path fixtures = FIXTURE_FOLDER;

} // namespace

using ClassImages = TestOn<Phone>;

TEST_F(ClassImages, HaveTheirPathOnThePhone)
{
    phone.tree().addLibrary(fixtures / "calendar_library.dylib", "Another.dylib");
    phone.inject();
    EXPECT_THAT(class_getImageName(objc_getClass("APLCalendar")),
                StrEq("/Library/MobileSubstrate/DynamicLibraries/Another.dylib"));
}

TEST_F(ClassImages, AreNoneOfAClassThatIsMadeAtRunTime)
{
    phone.tree().addLibrary(fixtures / "phone_library.dylib", "Another.dylib");
    phone.inject();
    EXPECT_EQ(class_getImageName(objc_getClass("SmallArguments")), nullptr);
    EXPECT_EQ(class_getImageName(objc_getClass("SVWidget")), nullptr);
    EXPECT_EQ(class_getImageName(nullptr), nullptr);
}

TEST_F(ClassImages, AreFoundByTheAddressInALibraryOfThePhonesForm)
{
    phone.tree().addLibrary(fixtures / "phone_library.dylib", "Another.dylib");
    phone.inject();
    EXPECT_THAT(class_getImageName(reinterpret_cast<Class>(exported("truthOf"))),
                StrEq("/Library/MobileSubstrate/DynamicLibraries/Another.dylib"));
}

TEST_F(ClassImages, AreThisMachinesForWhatIsOutsideOfThePhone)
{
    EXPECT_THAT(class_getImageName(objc_getClass("NSString")), EndsWith("libgnustep-base.so.1.28"));
}
