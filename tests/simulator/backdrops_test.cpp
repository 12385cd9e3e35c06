#include <algorithm>
#include <gtest/gtest.h>

#include "platform/UIKit/UIWindow.hpp"
#include "platform/UIKit/_UIBackdropView.hpp"
#include "tests/support/Phone.hpp"
#include "tests/support/Picture.hpp"

/// What backdrops make of what lies behind them.

namespace {

struct Rgb {
    double red, green, blue;
};

Rgb over(Rgb below, double white, double alpha)
{
    const auto mix = [&](double value) { return value * (1 - alpha) + white * alpha; };
    return {mix(below.red), mix(below.green), mix(below.blue)};
}

/// Each component as far from the grey of the same luminance as it was, times the factor.
Rgb saturated(Rgb colour, double factor)
{
    const double grey = 0.2126 * colour.red + 0.7152 * colour.green + 0.0722 * colour.blue;
    const auto part = [&](double value) { return std::clamp(grey + factor * (value - grey), 0.0, 1.0); };
    return {part(colour.red), part(colour.green), part(colour.blue)};
}

struct Style {
    NSInteger number;
    double saturation;
    double white;
    double alpha;
};

constexpr Style light{0, 1.8, 1, 0.3};
constexpr Style dark{1, 1.8, 0.11, 0.73};
constexpr Style blurAlone{2, 1, 0, 0};

constexpr Rgb grounds[] = {{1, 1, 1}, {0, 0, 0}, {0.5, 0.5, 0.5}, {0.6, 0.4, 0.3}, {0.9, 0.2, 0.1}, {0.1, 0.5, 0.9}};

class Backdrops : public testing::Test {
protected:
    static Owned<_UIBackdropView> backdrop(NSInteger style, CGRect frame = CGRect::make(0, 0, 320, 568))
    {
        const Owned<UIView> pane = adopt(UIView::alloc()->initWithFrame(frame));
        Owned<_UIBackdropView> made = adopt(_UIBackdropView::alloc()->initWithStyle(style));
        made->setBlurRadius(4);
        pane->addSubview(made);
        window()->addSubview(pane);
        return made;
    }

    static UIWindow* window() { return simulator::springBoardWindow(); }

    static void paint(Rgb ground)
    {
        window()->setBackgroundColor(UIColor::colorWithRed_green_blue_alpha(
            static_cast<CGFloat>(ground.red), static_cast<CGFloat>(ground.green), static_cast<CGFloat>(ground.blue), 1));
    }

    /// At a point of the screen.
    static void expectColour(CGPoint point, Rgb expected)
    {
        const std::uint32_t pixel = screenshot().at(static_cast<int>(2 * point.x), static_cast<int>(2 * point.y));
        constexpr double rounding = 3;
        EXPECT_NEAR(pixel >> 16 & 0xFF, 255 * expected.red, rounding) << point.x;
        EXPECT_NEAR(pixel >> 8 & 0xFF, 255 * expected.green, rounding) << point.x;
        EXPECT_NEAR(pixel & 0xFF, 255 * expected.blue, rounding) << point.x;
    }

    static constexpr CGPoint middle{160, 284};

    Phone phone_;
};

} // namespace

TEST_F(Backdrops, ShowTheirStyle)
{
    for (const Style& style : {light, dark, blurAlone}) {
        const auto shown = backdrop(style.number);
        for (const Rgb ground : grounds) {
            SCOPED_TRACE(style.number);
            paint(ground);
            expectColour(middle, over(saturated(ground, style.saturation), style.white, style.alpha));
        }
        shown->superview()->removeFromSuperview();
    }
}

TEST_F(Backdrops, ShowTheDarkStyleUnderItsOtherNumbers)
{
    paint({0.6, 0.4, 0.3});
    for (const NSInteger number : {1001, 1100, 2030}) {
        const auto shown = backdrop(number);
        expectColour(middle, over(saturated({0.6, 0.4, 0.3}, dark.saturation), dark.white, dark.alpha));
        shown->superview()->removeFromSuperview();
    }
}

TEST_F(Backdrops, LayTheirTintOverTheirStyle)
{
    for (const double alpha : {0.4, 1.0, 0.0}) {
        const auto shown = backdrop(dark.number);
        shown->inputSettings()->setColorTint(UIColor::blackColor());
        shown->inputSettings()->setColorTintAlpha(static_cast<CGFloat>(alpha));
        for (const Rgb ground : grounds) {
            paint(ground);
            expectColour(middle, over(over(saturated(ground, dark.saturation), dark.white, dark.alpha), 0, alpha));
        }
        shown->superview()->removeFromSuperview();
    }
}

TEST_F(Backdrops, OfSeveralStylesKeepEachToItsOwn)
{
    constexpr Rgb ground{0.9, 0.2, 0.1};
    paint(ground);
    backdrop(dark.number, CGRect::make(0, 0, 100, 568));
    backdrop(blurAlone.number, CGRect::make(100, 0, 100, 568));
    backdrop(light.number, CGRect::make(200, 0, 120, 568));
    expectColour({20, 300}, over(saturated(ground, dark.saturation), dark.white, dark.alpha));
    expectColour({180, 300}, ground);
    expectColour({300, 300}, over(saturated(ground, light.saturation), light.white, light.alpha));
}

TEST_F(Backdrops, OfSeveralRadiiBlurEachByItsOwn)
{
    paint({0, 0, 0});
    const Owned<UIView> bright = adopt(UIView::alloc()->initWithFrame(CGRect::make(0, 284, 320, 284)));
    bright->setBackgroundColor(UIColor::whiteColor());
    window()->addSubview(bright);
    backdrop(blurAlone.number, CGRect::make(0, 0, 160, 568))->setBlurRadius(2);
    backdrop(blurAlone.number, CGRect::make(160, 0, 160, 568))->setBlurRadius(20);
    // Twelve points above the edge, where a blur of two points does not reach.
    const Picture picture = screenshot();
    EXPECT_EQ(picture.at(2 * 60, 2 * 272) & 0xFF, 0U);
    EXPECT_GT(picture.at(2 * 260, 2 * 272) & 0xFF, 40U);
}

TEST_F(Backdrops, ShowInEachPlaceWhatOneOverTheWholeScreenWould)
{
    const Owned<UIImageView> ground = adopt(UIImageView::alloc()->initWithFrame(window()->bounds()));
    ground->setImage(patternedImage(window()->bounds().size, 2));
    window()->addSubview(ground);
    const auto whole = backdrop(light.number);
    const Picture expected = screenshot();
    whole->superview()->removeFromSuperview();
    for (const CGRect frame : {CGRect::make(100, 200, 50, 60), CGRect::make(-10, -20, 40, 50), CGRect::make(300, 500, 90, 90)}) {
        const auto shown = backdrop(light.number, frame);
        const Picture picture = screenshot();
        const auto [origin, size] = frame;
        for (int y = 0; y < picture.height; ++y) {
            for (int x = 0; x < picture.width; ++x) {
                const CGFloat left = static_cast<CGFloat>(x) / 2 - origin.x;
                const CGFloat top = static_cast<CGFloat>(y) / 2 - origin.y;
                const bool isInside = left >= 0 && left < size.width && top >= 0 && top < size.height;
                if (isInside) {
                    ASSERT_EQ(picture.at(x, y), expected.at(x, y)) << x << ", " << y;
                }
            }
        }
        shown->superview()->removeFromSuperview();
    }
}

TEST_F(Backdrops, AreNothingWithoutASize)
{
    paint({0.6, 0.4, 0.3});
    backdrop(dark.number, CGRectZero);
    expectColour(middle, {0.6, 0.4, 0.3});
}
