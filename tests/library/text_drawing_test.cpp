#include <algorithm>
#include <cmath>
#include <gmock/gmock.h>
#include <set>

#include "platform/UIKit/NSStringDrawing.hpp"
#include "platform/UIKit/UIColor.hpp"
#include "platform/UIKit/UIFont.hpp"
#include "platform/UIKit/UIGraphics.hpp"
#include "simulator/graphics/contexts.hpp"
#include "simulator/runtime/SimulatedClass.hpp"
#include "tests/support/MessageLog.hpp"
#include "tests/support/Phone.hpp"
#include "tests/support/Picture.hpp"

/// Texts stamped into images.

namespace {

using testing::ElementsAre;

constexpr CGPoint dayPoint{10, 11};
constexpr const char* functionNames[] = {"drawTextInImage", "drawTextInImage2"};

using Stamp = UIImage*(NSString*, UIImage*, CGPoint);

UIImage* stamp(NSString* text, UIImage* image, CGPoint point)
{
    return exportedFunction<Stamp>("drawTextInImage")(text, image, point);
}

UIImage* stamp(const char* utf8, UIImage* image, CGPoint point)
{
    return stamp(text(utf8), image, point);
}

constexpr std::uint32_t transparent = 0;
constexpr std::uint32_t black = 0xFF000000;
constexpr std::uint32_t white = 0xFFFFFFFF;
constexpr std::uint32_t red = 0xFFFF0000;

NSDictionary* boldWhite()
{
    const id objects[] = {UIFont::boldSystemFontOfSize(16), UIColor::whiteColor()};
    const id keys[] = {NSFontAttributeName, NSForegroundColorAttributeName};
    return NSDictionary::dictionaryWithObjects_forKeys_count(objects, keys, 2);
}

/// The width of the text in points, on one line.
CGFloat widthOf(const char* utf8)
{
    return send<"sizeWithAttributes:", CGSize>(text(utf8), boldWhite()).width;
}

CGFloat lineHeight()
{
    return send<"sizeWithAttributes:", CGSize>(text("8"), boldWhite()).height;
}

/// What ink there is when the text is stamped on nothing.
Picture inkOf(const char* utf8, CGSize size, CGPoint point)
{
    return pictureOf(stamp(utf8, plainImage(size, 2, transparent), point));
}

/// Whether the picture holds two lines of text, of which the second begins about a line's height below the first.
bool hasInkInLine(const Picture& picture, CGPoint point, int line)
{
    const int from = static_cast<int>(2 * (point.y + line * lineHeight()));
    const int to = std::min(picture.height, static_cast<int>(2 * (point.y + (line + 1) * lineHeight())));
    for (int y = from; y < to; ++y) {
        for (int x = 0; x < picture.width; ++x) {
            if (picture.at(x, y) >> 24 != 0)
                return true;
        }
    }
    return false;
}

} // namespace

// Size and scale

struct TextDrawingOnAScreen : testing::TestWithParam<int> {
    InjectedPhone phone{{320, 568, static_cast<double>(GetParam())}};
};

TEST_P(TextDrawingOnAScreen, KeepsTheSizeAndTakesTheScreensScale)
{
    for (const CGFloat scale : {1.0, 2.0, 3.0}) {
        UIImage* const result = stamp("31", plainImage({44, 47}, scale, black), dayPoint);
        EXPECT_EQ(result->size(), (CGSize{44, 47}));
        EXPECT_EQ(result->scale(), GetParam());
        EXPECT_EQ(pictureOf(result).width, 44 * GetParam());
        EXPECT_EQ(pictureOf(result).height, 47 * GetParam());
    }
}

TEST_P(TextDrawingOnAScreen, LeavesTheImageAsItIsWithoutText)
{
    const auto image = patternedImage({30, 20}, GetParam());
    EXPECT_EQ(pictureOf(stamp("", image, dayPoint)), pictureOf(image));
}

TEST_P(TextDrawingOnAScreen, StartsAtThePoint)
{
    const int scale = GetParam();
    const auto ink = pictureOf(stamp("31", plainImage({60, 60}, scale, transparent), dayPoint)).ink();
    ASSERT_TRUE(ink);
    EXPECT_GE(ink->left, 10 * scale);
    EXPECT_LE(ink->left, 12 * scale);
    EXPECT_GE(ink->top, 11 * scale);
    EXPECT_LE(ink->bottom, static_cast<int>(std::ceil((11 + lineHeight()) * scale)));
}

INSTANTIATE_TEST_SUITE_P(Scales, TextDrawingOnAScreen, testing::Values(1, 2, 3));

using TextDrawing = TestOn<InjectedPhone>;

TEST_F(TextDrawing, KeepsASizeThatIsNoWholeNumberOfPixels)
{
    UIImage* const result = stamp("31", plainImage({29.5, 17.25}, 2, black), dayPoint);
    EXPECT_EQ(result->size(), (CGSize{29.5, 17.25}));
}

TEST_F(TextDrawing, WorksOnThePhonesOwnPictures)
{
    for (const char* name : {"Calendar", "Notification", "Badge"}) {
        UIImage* const image =
            UIImage::imageWithContentsOfFile(text("/Library/Application Support/Solvane/" + std::string(name) + ".png"));
        ASSERT_NE(image, nullptr);
        UIImage* const result = stamp("31", image, dayPoint);
        EXPECT_EQ(result->size(), image->size()) << name;
        EXPECT_NE(pictureOf(result), pictureOf(image)) << name;
    }
}

namespace {

/// One of the phone's own pictures with a number stamped into it, beside the same without.
struct StampedPicture {
    StampedPicture(const char* name, int number, CGPoint point)
        : original(UIImage::imageWithContentsOfFile(text("/Library/Application Support/Solvane/" + std::string(name) + ".png"))),
          plain(pictureOf(stamp("", original, point))), stamped(pictureOf(stamp(std::to_string(number).c_str(), original, point)))
    {
    }

    /// The box of what the number changed; what it must not touch shows in a failure.
    Picture::Box number(bool (*mayBeTouched)(std::uint32_t plain)) const
    {
        Picture changes = plain;
        for (std::size_t i = 0; i < changes.pixels.size(); ++i) {
            const bool isChanged = plain.pixels[i] != stamped.pixels[i];
            EXPECT_TRUE(!isChanged || mayBeTouched(plain.pixels[i])) << "pixel " << i;
            changes.pixels[i] = isChanged ? white : transparent;
        }
        return changes.ink().value_or(Picture::Box{});
    }

    /// How far the box's centre is from that of the whole drawing, in points to the right.
    double offCentre(const Picture::Box& box) const
    {
        const Picture::Box drawing = plain.ink().value_or(Picture::Box{});
        return (box.left + box.right - drawing.left - drawing.right) / 2.0 / 2;
    }

    UIImage* original;
    Picture plain;
    Picture stamped;
};

} // namespace

TEST_F(TextDrawing, PutsEveryDayInsideTheCalendarsOutline)
{
    for (int day = 1; day <= 31; ++day) {
        SCOPED_TRACE(day);
        const StampedPicture calendar("Calendar", day, dayPoint);
        const Picture::Box number = calendar.number([](std::uint32_t plain) { return plain == transparent; });
        EXPECT_LT(std::abs(calendar.offCentre(number)), day < 10 ? 6 : 1.5);
    }
}

TEST_F(TextDrawing, PutsEveryCountOfOneOrTwoDigitsOnTheBadgesDisc)
{
    for (int count = 1; count <= 99; ++count) {
        SCOPED_TRACE(count);
        const StampedPicture badge("Badge", count, {12.5, 7.5});
        const Picture::Box number = badge.number([](std::uint32_t plain) { return plain >> 24 == 0xFF; });
        EXPECT_LT(std::abs(badge.offCentre(number)), count < 10 ? 1 : 6);
    }
}

// Nothing to draw

TEST_F(TextDrawing, GivesNothingForNoImage)
{
    EXPECT_EQ(stamp("31", nullptr, dayPoint), nullptr);
}

TEST_F(TextDrawing, CopiesTheImageForNoText)
{
    const auto image = patternedImage({30, 20}, 2);
    UIImage* const result = stamp(static_cast<NSString*>(nullptr), image, dayPoint);
    EXPECT_NE(result, image.get());
    EXPECT_EQ(pictureOf(result), pictureOf(image));
}

TEST_F(TextDrawing, CopiesTheImageForAnEmptyText)
{
    const auto image = patternedImage({30, 20}, 2);
    UIImage* const result = stamp("", image, dayPoint);
    EXPECT_NE(result, image.get());
    EXPECT_EQ(pictureOf(result), pictureOf(image));
}

TEST_F(TextDrawing, KeepsWhatIsTransparent)
{
    EXPECT_EQ(inkOf("", {30, 20}, dayPoint).ink(), std::nullopt);
}

// The text's looks

TEST_F(TextDrawing, IsWhiteOnNothing)
{
    const Picture picture = inkOf("31", {60, 60}, dayPoint);
    for (const std::uint32_t pixel : picture.pixels)
        ASSERT_EQ(pixel, (pixel >> 24) * 0x01010101U);
    EXPECT_TRUE(std::ranges::count(picture.pixels, white) > 0);
}

TEST_F(TextDrawing, IsOpaqueWhiteOnAnyColour)
{
    for (const std::uint32_t colour : {black, red, 0xFF00FF00U, 0x80000080U}) {
        const Picture picture = pictureOf(stamp("31", plainImage({60, 60}, 2, colour), dayPoint));
        EXPECT_GT(std::ranges::count(picture.pixels, white), 20) << std::hex << colour;
    }
}

TEST_F(TextDrawing, DoesNotShowOnWhite)
{
    const auto image = plainImage({60, 60}, 2, white);
    EXPECT_EQ(pictureOf(stamp("31", image, dayPoint)), pictureOf(image));
}

TEST_F(TextDrawing, IsSetInTheBoldSystemFaceAtSixteenPoints)
{
    UIGraphicsBeginImageContextWithOptions({60, 60}, NO, 2);
    const id objects[] = {UIFont::fontWithName_size(text(".HelveticaNeueInterface-Bold"), 16), UIColor::whiteColor()};
    const id keys[] = {NSFontAttributeName, NSForegroundColorAttributeName};
    NSStringDrawing::drawInRect_withAttributes(text("31"), {dayPoint, {60, 60}},
                                               NSDictionary::dictionaryWithObjects_forKeys_count(objects, keys, 2));
    UIImage* const expected = UIGraphicsGetImageFromCurrentImageContext();
    UIGraphicsEndImageContext();
    ASSERT_NE(pictureOf(expected).ink(), std::nullopt);
    EXPECT_EQ(inkOf("31", {60, 60}, dayPoint), pictureOf(expected));
}

TEST_F(TextDrawing, GoesThroughTheStepsInOrder)
{
    const auto image = plainImage({44, 47}, 2, black);
    MessageLog::name(image.get(), "image");
    NSString* const day = text("31 is a text that is no small object");
    MessageLog::name(day, "text");
    MessageLog::name(UIColor::whiteColor(), "white");
    Noted<"UIImage", "size", CGSize>::install();
    Noted<"UIImage", "drawInRect:", void, CGRect>::install();
    Noted<"UIColor", "set", void>::install();
    Noted<"NSString", "drawInRect:withAttributes:", void, CGRect, id>::install();
    stamp(day, image, dayPoint);
    ASSERT_EQ(MessageLog::messages().size(), 4U);
    EXPECT_EQ(MessageLog::messages()[0], "image size");
    EXPECT_EQ(MessageLog::messages()[1], "image drawInRect: 0,0,44,47");
    EXPECT_THAT(MessageLog::messages()[2], testing::EndsWith(" set"));
    EXPECT_EQ(MessageLog::messages()[3], "text drawInRect:withAttributes: 10,11,44,47 ?");
}

TEST_F(TextDrawing, CoversTheImage)
{
    const auto image = patternedImage({60, 60}, 2);
    const Picture before = pictureOf(image);
    const Picture after = pictureOf(stamp("31", image, dayPoint));
    const Picture ink = inkOf("31", {60, 60}, dayPoint);
    for (std::size_t i = 0; i < ink.pixels.size(); ++i) {
        if (ink.pixels[i] == transparent) {
            ASSERT_EQ(after.pixels[i], before.pixels[i]) << i;
        } else if (ink.pixels[i] == white) {
            ASSERT_EQ(after.pixels[i], white) << i;
        }
    }
}

// The text's place

TEST_F(TextDrawing, HasNothingLeftOfThePointOrAboveIt)
{
    for (const char* utf8 : {"1", "31", "88", "9999"}) {
        const auto ink = inkOf(utf8, {80, 60}, dayPoint).ink();
        ASSERT_TRUE(ink) << utf8;
        EXPECT_GE(ink->left, 20) << utf8;
        EXPECT_GE(ink->top, 22) << utf8;
    }
}

TEST_F(TextDrawing, MovesWithThePoint)
{
    const auto here = inkOf("31", {80, 80}, {10, 11}).ink();
    const auto there = inkOf("31", {80, 80}, {15, 4}).ink();
    ASSERT_TRUE(here && there);
    EXPECT_EQ(there->left, here->left + 10);
    EXPECT_EQ(there->right, here->right + 10);
    EXPECT_EQ(there->top, here->top - 14);
    EXPECT_EQ(there->bottom, here->bottom - 14);
}

TEST_F(TextDrawing, MovesByHalfAPoint)
{
    const auto here = inkOf("8", {40, 40}, {12, 7}).ink();
    const auto there = inkOf("8", {40, 40}, {12.5, 7.5}).ink();
    ASSERT_TRUE(here && there);
    EXPECT_EQ(there->left, here->left + 1);
    EXPECT_EQ(there->top, here->top + 1);
}

TEST_F(TextDrawing, IsNotCentred)
{
    // A longer text begins where a shorter one does, on a wider image where it does on a narrow one.
    const auto shortText = inkOf("3", {80, 60}, dayPoint).ink();
    const auto longText = inkOf("3333", {80, 60}, dayPoint).ink();
    const auto widerImage = inkOf("3", {160, 120}, dayPoint).ink();
    ASSERT_TRUE(shortText && longText && widerImage);
    EXPECT_EQ(longText->left, shortText->left);
    EXPECT_EQ(longText->top, shortText->top);
    EXPECT_EQ(*widerImage, *shortText);
}

TEST_F(TextDrawing, StaysOnOneLineAsLongAsItIsNoWiderThanTheImage)
{
    // The line's width is the image's, whatever there is to the right of the point.
    const CGFloat width = std::ceil(widthOf("88 88")) + 2;
    const Picture picture = inkOf("88 88", {width, 80}, dayPoint);
    EXPECT_TRUE(hasInkInLine(picture, dayPoint, 0));
    EXPECT_FALSE(hasInkInLine(picture, dayPoint, 1));
    EXPECT_EQ(picture.ink()->right, picture.width);
}

TEST_F(TextDrawing, WrapsWhenItIsWiderThanTheImage)
{
    const CGFloat width = std::floor(widthOf("88 88")) - 2;
    const Picture picture = inkOf("88 88", {width, 80}, dayPoint);
    EXPECT_TRUE(hasInkInLine(picture, dayPoint, 0));
    EXPECT_TRUE(hasInkInLine(picture, dayPoint, 1));
    EXPECT_GE(picture.ink()->left, 20);
}

TEST_F(TextDrawing, WrapsAWordThatIsWiderThanTheImage)
{
    const Picture picture = inkOf("888888", {std::ceil(widthOf("888")), 80}, dayPoint);
    EXPECT_TRUE(hasInkInLine(picture, dayPoint, 1));
}

TEST_F(TextDrawing, IsCutOffAtTheRightEdge)
{
    const CGFloat width = std::ceil(widthOf("8888")) + 1;
    UIImage* const result = stamp("8888", plainImage({width, 40}, 2, transparent), {width - 12, 5});
    EXPECT_EQ(result->size(), (CGSize{width, 40}));
    EXPECT_EQ(pictureOf(result).ink()->right, pictureOf(result).width);
}

TEST_F(TextDrawing, IsCutOffAtTheBottomEdge)
{
    const Picture picture = inkOf("8", {40, 20}, {10, 11});
    EXPECT_EQ(picture.height, 40);
    EXPECT_EQ(picture.ink()->bottom, 40);
}

TEST_F(TextDrawing, KeepsTheSizeForALongCount)
{
    UIImage* const result = stamp("9223372036854775807 9223372036854775807", plainImage({25, 25}, 2, transparent), {12.5, 7.5});
    EXPECT_EQ(result->size(), (CGSize{25, 25}));
    EXPECT_GE(pictureOf(result).ink()->left, 25);
}

TEST_F(TextDrawing, ShowsNothingBeyondTheEdges)
{
    EXPECT_EQ(inkOf("31", {30, 20}, {30, 0}).ink(), std::nullopt);
    EXPECT_EQ(inkOf("31", {30, 20}, {0, 20}).ink(), std::nullopt);
}

// Manners

TEST_F(TextDrawing, GivesANewImageThatTheCallerDoesNotOwn)
{
    const auto image = plainImage({30, 20}, 2, black);
    id weak = nullptr;
    {
        const AutoreleasePool pool;
        UIImage* const first = stamp("1", image, dayPoint);
        EXPECT_NE(first, stamp("1", image, dayPoint));
        objc_storeWeak(&weak, first);
        EXPECT_EQ(weak, first);
    }
    EXPECT_EQ(weak, nullptr);
}

TEST_F(TextDrawing, StaysWithTheCallerWhenTheContextLetsItsImageGo)
{
    const auto image = plainImage({30, 20}, 2, black);
    for (const char* function : functionNames) {
        const AutoreleasePool pool;
        // One reference is the context's, the other one the function's own.
        EXPECT_EQ(retainCount(exportedFunction<Stamp>(function)(text("1"), image, dayPoint)), 2U) << function;
    }
}

TEST_F(TextDrawing, LeavesTheGivenImageAlone)
{
    const auto image = patternedImage({60, 60}, 2);
    const Picture before = pictureOf(image);
    stamp("31", image, dayPoint);
    EXPECT_EQ(pictureOf(image), before);
}

TEST_F(TextDrawing, LetsGoOfTextAndImage)
{
    const auto image = plainImage({30, 20}, 2, black);
    const auto longText = adopt(NSString::alloc()->initWithUTF8String("a text that is long enough to be an object"));
    {
        const AutoreleasePool pool;
        stamp(longText, image, dayPoint);
    }
    EXPECT_EQ(retainCount(image), 1U);
    EXPECT_EQ(retainCount(longText), 1U);
}

TEST_F(TextDrawing, HoldsTextAndImageWhileItDraws)
{
    static const auto image = plainImage({30, 20}, 2, black);
    static const auto longText = adopt(NSString::alloc()->initWithUTF8String("a text that is long enough to be an object"));
    static NSUInteger counts[2];
    simulator::replaceMethod<"drawInRect:">(
        objc_getClass("UIImage"), +[](NSObject*, SEL, CGRect) {
            counts[0] = retainCount(image);
            counts[1] = retainCount(longText);
        });
    stamp(longText, image, dayPoint);
    EXPECT_THAT(counts, ElementsAre(2U, 2U));
}

TEST_F(TextDrawing, LeavesNoContextBehind)
{
    ASSERT_EQ(simulator::currentGraphicsContext(), nullptr);
    stamp("31", plainImage({30, 20}, 2, black), dayPoint);
    EXPECT_EQ(simulator::currentGraphicsContext(), nullptr);
    stamp("31", nullptr, dayPoint);
    EXPECT_EQ(simulator::currentGraphicsContext(), nullptr);
}

TEST_F(TextDrawing, LeavesTheCurrentContextAsItWas)
{
    UIGraphicsBeginImageContextWithOptions({10, 10}, NO, 2);
    const auto bitmap = simulator::currentGraphicsContext()->bitmap;
    UIColor::blackColor()->set();
    const simulator::Colour fill = simulator::currentGraphicsContext()->fill;
    stamp("31", plainImage({30, 20}, 2, black), {0, 0});
    stamp("31", nullptr, {0, 0});
    ASSERT_NE(simulator::currentGraphicsContext(), nullptr);
    EXPECT_EQ(simulator::currentGraphicsContext()->bitmap, bitmap);
    EXPECT_EQ(simulator::currentGraphicsContext()->fill, fill);
    EXPECT_EQ(pictureOf(UIGraphicsGetImageFromCurrentImageContext()).ink(), std::nullopt);
    UIGraphicsEndImageContext();
    EXPECT_EQ(simulator::currentGraphicsContext(), nullptr);
}

// The two functions

TEST_F(TextDrawing, IsTwoFunctions)
{
    EXPECT_NE(exported(functionNames[0]), exported(functionNames[1]));
}

TEST_F(TextDrawing, GivesTheSamePixelsByEitherFunction)
{
    const auto image = patternedImage({60, 60}, 2);
    for (const char* utf8 : {"", "7", "31", "a longer text in several lines"}) {
        for (const CGPoint point : {dayPoint, CGPoint{12.5, 7.5}}) {
            const Picture first = pictureOf(exportedFunction<Stamp>(functionNames[0])(text(utf8), image, point));
            const Picture second = pictureOf(exportedFunction<Stamp>(functionNames[1])(text(utf8), image, point));
            EXPECT_EQ(first, second) << utf8;
        }
    }
}

TEST_F(TextDrawing, GivesNothingForNoImageByTheSecondFunctionToo)
{
    EXPECT_EQ(exportedFunction<Stamp>(functionNames[1])(text("1"), nullptr, dayPoint), nullptr);
    EXPECT_EQ(simulator::currentGraphicsContext(), nullptr);
}
