#include <gmock/gmock.h>

#include "tests/support/MorningPhone.hpp"
#include "tests/support/programs.hpp"

/// The weather framework is a library of the phone that nobody in SpringBoard asks for but ours: by a load command that allows
/// for its being missing.

namespace {

namespace fs = std::filesystem;

/// Nobody says that temperatures are shown in Celsius.
constexpr const char* noWeather = "It's 32° F and Not Available.";

std::string sentence()
{
    return textOf(exportedFunction<NSString*()>("getTempString")());
}

fs::path library(const Phone& phone)
{
    return phone.tree().libraryFolder() / "Solvane.dylib";
}

bool isLoaded()
{
    return objc_getClass("WeatherPreferences") != nullptr;
}

} // namespace

using WeatherFramework = TestOn<MorningPhone>;

TEST_F(WeatherFramework, IsNotThereBeforeTheLibrary)
{
    EXPECT_FALSE(isLoaded());
}

TEST_F(WeatherFramework, ComesWithTheLibrary)
{
    phone.inject();
    EXPECT_TRUE(isLoaded());
    EXPECT_EQ(sentence(), morningWeather);
}

TEST_F(WeatherFramework, MayBeMissing)
{
    fs::remove(phone.tree().weatherFramework());
    phone.inject();
    EXPECT_FALSE(isLoaded());
    EXPECT_EQ(sentence(), noWeather);
}

TEST_F(WeatherFramework, MayBeDamaged)
{
    writeFile(phone.tree().weatherFramework(), "no library");
    phone.inject();
    EXPECT_FALSE(isLoaded());
    EXPECT_EQ(sentence(), noWeather);
}

TEST_F(WeatherFramework, StaysOnThePhonesDiskWithoutTheLibrary)
{
    fs::remove(library(phone));
    phone.tree().addLibrary(FIXTURE_FOLDER "/calendar_library.dylib", "Other.dylib");
    phone.inject();
    EXPECT_FALSE(isLoaded());
}

TEST_F(WeatherFramework, ComesByTheLibrarysLoadCommandAlone)
{
    ASSERT_EQ(runProgram({pythonProgram(), WITHOUT_WEAK_LIBRARIES_PROGRAM, PACKAGING_TOOLS, library(phone)}).status, 0);
    phone.inject();
    EXPECT_FALSE(isLoaded());
    EXPECT_EQ(sentence(), noWeather);
}
