#include <chrono>
#include <gtest/gtest.h>
#include <thread>

#include "platform/UIKit/UIImage.hpp"
#include "simulator/graphics/Bitmap.hpp"
#include "simulator/uikit/UIImage.hpp"
#include "tests/support/Phone.hpp"
#include "tests/support/Picture.hpp"

/// What the pictures in files cost, and which files are none.

namespace {

namespace fs = std::filesystem;

struct PictureFiles : testing::Test {
    Phone phone;

    static constexpr const char* name = "/Library/Drawing@2x.png";
    static constexpr CGSize size{20, 10};

    fs::path path(const char* file = name) const { return phone.tree().root() / fs::path(file).relative_path(); }
    static Owned<UIImage> read(const char* file = name) { return UIImage::imageWithContentsOfFile(text(file)); }
    static cairo_surface_t* pixelsOf(UIImage* image) { return ivarsOf<simulator::ImageState>(image).bitmap->surface(); }

    void write(std::uint32_t colour) const { writePicture(plainImage(size, 2, colour), path()); }
    /// A file that is as old as the clock of its file system can tell.
    static void growOld() { std::this_thread::sleep_for(std::chrono::milliseconds(100)); }
};

constexpr std::uint32_t red = 0xFFFF0000;
constexpr std::uint32_t blue = 0xFF0000FF;

} // namespace

TEST_F(PictureFiles, AreDecodedOnceHoweverOftenTheyAreRead)
{
    write(red);
    growOld();
    EXPECT_EQ(pixelsOf(read()), pixelsOf(read()));
}

TEST_F(PictureFiles, AreDecodedAnewWhenTheyHaveChanged)
{
    write(red);
    growOld();
    EXPECT_EQ(pictureOf(read()).at(0, 0), red);
    write(blue);
    EXPECT_EQ(pictureOf(read()).at(0, 0), blue);
    write(red);
    EXPECT_EQ(pictureOf(read()).at(0, 0), red);
    fs::remove(path());
    EXPECT_EQ(read(), nullptr);
}

TEST_F(PictureFiles, KeepWhatWasReadWhenTheyChangeBeforeItIsDrawn)
{
    write(red);
    const Owned<UIImage> image = read();
    write(blue);
    EXPECT_EQ(pictureOf(image).at(0, 0), red);
}

TEST_F(PictureFiles, AreKeptUpToABound)
{
    write(red);
    const auto nameOf = [](int number) { return "/Library/" + std::to_string(number) + "@2x.png"; };
    constexpr int many = 100;
    for (int i = 0; i < many; ++i)
        fs::copy_file(path(), path(nameOf(i).c_str()));
    growOld();
    const Owned<UIImage> first = read(nameOf(0).c_str());
    for (int i = 1; i < many; ++i)
        read(nameOf(i).c_str());
    EXPECT_NE(pixelsOf(read(nameOf(0).c_str())), pixelsOf(first));
    EXPECT_EQ(pixelsOf(read(nameOf(many - 1).c_str())), pixelsOf(read(nameOf(many - 1).c_str())));
}

TEST_F(PictureFiles, AreNoneWhenTheyAreCutShortOrChangedOnTheirWay)
{
    write(red);
    const std::string whole = readFile(path());
    for (std::size_t length = 0; length < whole.size(); ++length) {
        writeFile(path(), whole.substr(0, length));
        EXPECT_EQ(read(), nullptr) << length << " bytes";
    }
    for (std::size_t place = 0; place < whole.size(); ++place) {
        std::string changed = whole;
        changed[place] = static_cast<char>(changed[place] ^ 1);
        writeFile(path(), changed);
        EXPECT_EQ(read(), nullptr) << "byte " << place;
    }
}

TEST_F(PictureFiles, AreTransparentWhenTheyAreWholeButHoldNoPixels)
{
    using namespace std::string_literals;
    // Each part of it: the length of its contents, its kind, these, their checksum.
    writeFile(path(), "\x89PNG\r\n\x1a\n"
                      "\0\0\0\rIHDR\0\0\0\2\0\0\0\2\b\6\0\0\0\x72\xb6\x0d\x24"
                      "\0\0\0\0IDAT\x35\xaf\x06\x1e"
                      "\0\0\0\0IEND\xae\x42\x60\x82"s);
    const Owned<UIImage> image = read();
    ASSERT_NE(image, nullptr);
    EXPECT_EQ(image->size(), (CGSize{1, 1}));
    EXPECT_EQ(pictureOf(image).at(0, 0), 0U);
}

TEST_F(PictureFiles, HaveThePixelsThatWereWritten)
{
    const Owned<UIImage> image = patternedImage(size, 2);
    writePicture(image, path());
    EXPECT_EQ(pictureOf(read()), pictureOf(image));
    // Premultiplied, so that each component says something of its own.
    constexpr std::uint32_t faint = 0x80402010;
    write(faint);
    EXPECT_EQ(pictureOf(read()).at(3, 4), faint);
    write(0);
    EXPECT_EQ(pictureOf(read()).at(3, 4), 0U);
}
