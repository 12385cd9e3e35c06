#include <cmath>
#include <gtest/gtest.h>

#include "platform/UIKit/NSStringDrawing.hpp"
#include "platform/UIKit/UIFont.hpp"
#include "platform/UIKit/UILabel.hpp"
#include "platform/UIKit/UIWindow.hpp"
#include "tests/support/Phone.hpp"
#include "tests/support/Picture.hpp"

/// How large labels and fonts are, and where a label's text stands.

namespace {

constexpr const char* regular = "HelveticaNeue";
constexpr const char* ultraLight = ".HelveticaNeueInterface-UltraLightP2";
constexpr CGRect place = CGRect::make(10, 20, 200, 60);

Owned<UILabel> label(const std::string& string, UIFont* font, CGRect frame = place)
{
    Owned<UILabel> made = adopt(UILabel::alloc()->initWithFrame(frame));
    made->setFont(font);
    made->setTextColor(UIColor::whiteColor());
    made->setText(text(string));
    return made;
}

UIFont* fontNamed(const char* name, CGFloat size)
{
    return UIFont::fontWithName_size(text(name), size);
}

/// The size of the text alone.
CGSize sizeOf(const std::string& string, UIFont* font)
{
    const id fonts[] = {font};
    const id keys[] = {NSFontAttributeName};
    return send<"sizeWithAttributes:", CGSize>(text(string), NSDictionary::dictionaryWithObjects_forKeys_count(fonts, keys, 1));
}

/// What shows on a black screen with that view alone; the ink is what is not black.
Picture screenWith(UIView* view)
{
    simulator::springBoardWindow()->addSubview(view);
    Picture picture = screenshot();
    view->removeFromSuperview();
    return picture;
}

Picture::Box inkOf(UIView* view)
{
    constexpr std::uint32_t faintest = 0x40;
    const auto box = screenWith(view).boxOf([](std::uint32_t pixel) { return (pixel & 0xFF) > faintest; });
    EXPECT_TRUE(box);
    return box.value_or(Picture::Box{});
}

} // namespace

// Sizes

struct LabelOnAScreen : testing::TestWithParam<double> {
    Phone phone{{414, 736, GetParam()}};
};

TEST_P(LabelOnAScreen, TakesTheFewestWholePixelsThatHoldItsText)
{
    for (const char* name : {regular, ultraLight, "HelveticaNeue-Bold", "Verdana"}) {
        for (const double size : {11.0, 12.0, 15.0, 16.0, 17.0, 17.5, 37.5}) {
            for (const char* string : {"Hello there", "1", "Good evening, Maximilian."}) {
                UIFont* const font = fontNamed(name, static_cast<CGFloat>(size));
                const CGSize needed = sizeOf(string, font);
                const CGSize given = label(string, font)->sizeThatFits({50, 10});
                for (const auto& [side, enough] : {std::pair(given.width, needed.width), {given.height, needed.height}}) {
                    const double pixels = static_cast<double>(side) * GetParam();
                    const double neededPixels = static_cast<double>(enough) * GetParam();
                    EXPECT_NEAR(pixels, std::round(pixels), 1e-3) << name << ' ' << size << ' ' << string;
                    EXPECT_GE(pixels, neededPixels - 1e-3) << name << ' ' << size << ' ' << string;
                    EXPECT_LT(pixels, neededPixels + 1) << name << ' ' << size << ' ' << string;
                }
            }
        }
    }
}

TEST_P(LabelOnAScreen, FitsItsFrameToWholePixels)
{
    const auto fitted = label("Hello there", fontNamed(regular, 16));
    fitted->sizeToFit();
    EXPECT_NEAR(fitted->bounds().size.height, std::ceil(19.088 * GetParam()) / GetParam(), 1e-5);
}

INSTANTIATE_TEST_SUITE_P(Scales, LabelOnAScreen, testing::Values(1, 2, 3));

// Fonts

using Fonts = TestOn<Phone>;

TEST_F(Fonts, MeasureTheirLinesAsThePhonesDo)
{
    struct Metrics {
        const char* name;
        CGFloat size;
        double ascender, descender, leading, lineHeight;
    };
    constexpr Metrics recorded[] = {
        {regular, 16, 15.232, -3.408, 0.448, 19.088},
        {ultraLight, 37.5, 35.7, -7.9875, 1.05, 44.7375},
        {ultraLight, 17.5, 16.66, -3.7275, 0.49, 20.8775},
        {".HelveticaNeueInterface-Bold", 16, 15.232, -3.408, 0.448, 19.088},
        {"Verdana", 2048, 2059, -430, 0, 2489},
        {"Verdana-Bold", 2048, 2059, -430, 0, 2489},
    };
    for (const Metrics& metrics : recorded) {
        UIFont* const font = fontNamed(metrics.name, metrics.size);
        EXPECT_NEAR(font->ascender(), metrics.ascender, 1e-4) << metrics.name;
        EXPECT_NEAR(font->descender(), metrics.descender, 1e-4) << metrics.name;
        EXPECT_NEAR(font->leading(), metrics.leading, 1e-4) << metrics.name;
        EXPECT_NEAR(font->lineHeight(), metrics.lineHeight, 1e-4) << metrics.name;
        EXPECT_NEAR(sizeOf("8", font).height, metrics.lineHeight, 1e-4) << metrics.name;
        EXPECT_NEAR(sizeOf("8\n8", font).height, 2 * metrics.lineHeight, 1e-4) << metrics.name;
    }
}

TEST_F(Fonts, GiveBoldDigitsHelveticasWidth)
{
    UIFont* const bold = UIFont::boldSystemFontOfSize(16);
    constexpr double digitWidth = 0.556 * 16;
    for (int digit = 0; digit < 10; ++digit)
        EXPECT_NEAR(sizeOf(std::to_string(digit), bold).width, digitWidth, 0.01) << digit;
    EXPECT_NEAR(sizeOf("30", bold).width, 17.79, 0.01);
}

TEST_F(Fonts, GiveBoldLettersHelveticasWidths)
{
    struct Letter {
        const char* letter;
        double width;
    };
    // In thousandths of the size: Helvetica Bold's, then Helvetica's.
    constexpr Letter bold[] = {{"A", 722}, {"M", 833}, {"a", 556}, {"i", 278}, {"m", 889}, {" ", 278}, {"!", 333}, {"@", 975}};
    constexpr Letter plain[] = {{"A", 667}, {"M", 833}, {"a", 556}, {"i", 222}, {"m", 833}, {" ", 278}, {"!", 278}, {"@", 1015}};
    for (const auto& [letter, width] : bold)
        EXPECT_NEAR(sizeOf(letter, UIFont::boldSystemFontOfSize(1000)).width, width, 0.5) << letter;
    for (const auto& [letter, width] : plain)
        EXPECT_NEAR(sizeOf(letter, UIFont::systemFontOfSize(1000)).width, width, 0.5) << letter;
}

// Shrinking

struct ShrunkLabel : TestOn<Phone> {
    static constexpr CGFloat fullSize = 40;

    /// A line that must shrink to about half its size, and may.
    static Owned<UILabel> shrunk()
    {
        Owned<UILabel> made = label(wide, fontNamed(ultraLight, fullSize));
        made->setAdjustsFontSizeToFitWidth(true);
        made->setMinimumScaleFactor(0.25);
        return made;
    }

    static double fittingSize() { return fullSize * place.size.width / sizeOf(wide, fontNamed(ultraLight, fullSize)).width; }

    static constexpr const char* wide = "HHHHHHHHHHHHHH";
};

TEST_F(ShrunkLabel, StandsOnTheBaselineOfItsFullSize)
{
    const Picture::Box full = inkOf(label("HHH", fontNamed(ultraLight, fullSize)));
    const Picture::Box small = inkOf(shrunk());
    ASSERT_LT(small.bottom - small.top, 0.7 * (full.bottom - full.top)) << "it was to shrink";
    EXPECT_EQ(small.bottom, full.bottom);
}

TEST_F(ShrunkLabel, HasABaselineAdjustmentWithThreeValues)
{
    const auto some = shrunk();
    EXPECT_EQ(some->baselineAdjustment(), UIBaselineAdjustmentAlignBaselines);
    for (const auto adjustment :
         {UIBaselineAdjustmentNone, UIBaselineAdjustmentAlignCenters, UIBaselineAdjustmentAlignBaselines}) {
        some->setBaselineAdjustment(adjustment);
        EXPECT_EQ(some->baselineAdjustment(), adjustment);
    }
}

TEST_F(ShrunkLabel, StandsWhereItsBaselineAdjustmentSays)
{
    const double size = fittingSize();
    UIFont* const small = fontNamed(ultraLight, static_cast<CGFloat>(size));
    UIFont* const full = fontNamed(ultraLight, fullSize);
    const double middle = (place.size.height - small->lineHeight()) / 2;
    const double top = (place.size.height - full->lineHeight()) / 2;
    struct Stand {
        UIBaselineAdjustment adjustment;
        double top;
    };
    for (const auto& [adjustment, y] : {
             Stand{UIBaselineAdjustmentAlignBaselines, top + full->ascender() - small->ascender()},
             Stand{UIBaselineAdjustmentAlignCenters, middle},
             Stand{UIBaselineAdjustmentNone, top},
         }) {
        const auto adjusted = shrunk();
        adjusted->setBaselineAdjustment(adjustment);
        CGRect frame = place;
        frame.origin.y += static_cast<CGFloat>(y);
        frame.size.height = small->lineHeight();
        // Room for what rounding adds to the width.
        frame.size.width += 1;
        const Picture::Box expected = inkOf(label(wide, small, frame));
        const Picture::Box found = inkOf(adjusted);
        EXPECT_NEAR(found.top, expected.top, 1) << adjustment;
        EXPECT_NEAR(found.bottom, expected.bottom, 1) << adjustment;
    }
}

TEST_F(ShrunkLabel, IsMovedByNoAdjustmentAtItsFullSize)
{
    const auto full = label("HHH", fontNamed(ultraLight, fullSize));
    const Picture::Box plain = inkOf(full);
    full->setAdjustsFontSizeToFitWidth(true);
    full->setMinimumScaleFactor(0.25);
    for (const auto adjustment :
         {UIBaselineAdjustmentAlignBaselines, UIBaselineAdjustmentAlignCenters, UIBaselineAdjustmentNone}) {
        full->setBaselineAdjustment(adjustment);
        EXPECT_EQ(inkOf(full), plain) << adjustment;
    }
}

TEST_F(ShrunkLabel, IsNotShrunkBelowItsSmallestShare)
{
    const auto cut = shrunk();
    cut->setMinimumScaleFactor(0.75);
    const double height = inkOf(label("HHH", fontNamed(ultraLight, 0.75 * fullSize))).bottom -
                          inkOf(label("HHH", fontNamed(ultraLight, 0.75 * fullSize))).top;
    const Picture::Box ink = inkOf(cut);
    EXPECT_NEAR(ink.bottom - ink.top, height, 1);
}

TEST_F(ShrunkLabel, IsNotShrunkAtAllWithoutASmallestShare)
{
    const auto cut = shrunk();
    cut->setMinimumScaleFactor(0);
    EXPECT_EQ(screenWith(cut), screenWith(label(wide, fontNamed(ultraLight, fullSize))));
}

TEST_F(ShrunkLabel, ShowsItsWholeText)
{
    // An ellipsis would leave out the last letters: the E of the end has ink up to the label's right edge, in its whole height.
    for (int letters = 8; letters < 40; ++letters) {
        const auto line = shrunk();
        line->setMinimumScaleFactor(0.01);
        line->setText(text(std::string(static_cast<std::size_t>(letters), 'n') + 'H'));
        const Picture picture = screenWith(line);
        const auto rightmost = picture.boxOf([](std::uint32_t pixel) { return (pixel & 0xFF) > 0x20; });
        ASSERT_TRUE(rightmost);
        int rows = 0;
        for (int y = rightmost->top; y < rightmost->bottom; ++y) {
            bool hasInk = false;
            for (int x = rightmost->right - 3; x < rightmost->right; ++x)
                hasInk = hasInk || (picture.at(x, y) & 0xFF) > 0x10;
            rows += hasInk ? 1 : 0;
        }
        EXPECT_EQ(rows, rightmost->bottom - rightmost->top) << letters;
    }
}
