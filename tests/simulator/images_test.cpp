#include <cstdlib>
#include <gtest/gtest.h>
#include <optional>

#include "platform/UIKit/UIImage.hpp"
#include "simulator/foundation/phone_system.hpp"
#include "tests/support/Phone.hpp"
#include "tests/support/Picture.hpp"

/// Which file an image is read from, and how large it is.

namespace {

namespace fs = std::filesystem;

using simulator::System;

/// A file beside the others, and the scale of its pixels.
struct File {
    const char* name;
    CGFloat scale;
};

constexpr File plain{"Drawing.png", 1};
constexpr File twofold{"Drawing@2x.png", 2};
constexpr File threefold{"Drawing@3x.png", 3};
constexpr File files[] = {plain, twofold, threefold};

/// Which files a phone looks for when the plain one is asked for, the best first.
struct Search {
    System system;
    double screen;
    std::vector<File> files;
};

void PrintTo(const Search& search, std::ostream* stream)
{
    *stream << simulator::versionOf(search.system) << " at " << search.screen;
}

const Search searches[] = {
    {System::v8_1, 1, {plain}},
    {System::v8_1, 2, {twofold, plain}},
    {System::v8_1, 3, {threefold, twofold, plain}},
    {System::v8_1, 4, {threefold, twofold, plain}},
    {System::v7_1, 2, {twofold, plain}},
    {System::v7_1, 3, {twofold, plain}},
};

struct ImageFiles : testing::TestWithParam<Search> {
    ImageFiles()
    {
        setenv("SOLVANE_SYSTEM", std::string(simulator::versionOf(GetParam().system)).c_str(), 1);
        phone.emplace(simulator::ScreenSize{320, 568, GetParam().screen});
    }

    std::optional<Phone> phone;

    static constexpr const char* folder = "/Library/Application Support/Drawings/";

    fs::path path(const File& file) const { return phone->tree().root() / fs::path(folder).relative_path() / file.name; }

    /// Puts in place those files whose bits are set; each has a size in points of its own.
    void place(unsigned mix) const
    {
        fs::remove_all(path(plain).parent_path());
        fs::create_directories(path(plain).parent_path());
        for (const File& file : files) {
            if (isIn(mix, file))
                writePicture(plainImage(sizeOf(file), file.scale, colourOf(file)), path(file));
        }
    }

    static bool isIn(unsigned mix, const File& file) { return (mix >> static_cast<unsigned>(file.scale - 1) & 1U) != 0; }
    static CGSize sizeOf(const File& file) { return {10 + file.scale, 20 - file.scale}; }
    static std::uint32_t colourOf(const File& file) { return 0xFF000000U + static_cast<std::uint32_t>(file.scale); }

    static UIImage* read(const File& file) { return UIImage::imageWithContentsOfFile(text(std::string(folder) + file.name)); }

    /// The image is that of the file; none is expected when there is no file.
    static void expectFile(UIImage* image, const std::optional<File>& file)
    {
        ASSERT_EQ(image != nullptr, file.has_value());
        if (!file)
            return;
        EXPECT_EQ(image->size(), sizeOf(*file));
        EXPECT_EQ(image->scale(), file->scale);
        EXPECT_EQ(pictureOf(image).width, static_cast<int>(sizeOf(*file).width * file->scale));
        EXPECT_EQ(pictureOf(image).at(0, 0), colourOf(*file));
    }
};

} // namespace

TEST_P(ImageFiles, AreSearchedForTheBestOneThatIsThere)
{
    for (unsigned mix = 0; mix < 8; ++mix) {
        SCOPED_TRACE(mix);
        place(mix);
        std::optional<File> best;
        for (const File& file : GetParam().files) {
            if (isIn(mix, file) && !best)
                best = file;
        }
        expectFile(read(plain), best);
    }
}

TEST_P(ImageFiles, AreReadByTheirOwnNameWhateverElseIsThere)
{
    for (unsigned mix = 0; mix < 8; ++mix) {
        SCOPED_TRACE(mix);
        place(mix);
        expectFile(read(twofold), isIn(mix, twofold) ? std::optional(twofold) : std::nullopt);
        UIImage* const image = read(threefold);
        if (GetParam().system >= System::v8_1 || image == nullptr) {
            expectFile(image, isIn(mix, threefold) ? std::optional(threefold) : std::nullopt);
            continue;
        }
        // To an older system the name says nothing.
        EXPECT_EQ(image->scale(), 1);
        EXPECT_EQ(image->size(), (CGSize{3 * sizeOf(threefold).width, 3 * sizeOf(threefold).height}));
    }
}

TEST_P(ImageFiles, ArePassedOverWhenTheyAreNoPicture)
{
    place(7);
    std::vector<File> searched = GetParam().files;
    while (!searched.empty()) {
        expectFile(read(plain), searched.front());
        writeFile(path(searched.front()), "no picture");
        searched.erase(searched.begin());
    }
    EXPECT_EQ(read(plain), nullptr);
}

INSTANTIATE_TEST_SUITE_P(Screens, ImageFiles, testing::ValuesIn(searches));
