#include <cairo.h>
#include <gtest/gtest.h>

#include "platform/UIKit/UIWindow.hpp"
#include "simulator/graphics/Bitmap.hpp"
#include "simulator/uikit/touch_input.hpp"
#include "tests/calendar/MonthCalendar.hpp"

/// A month as it is on the screen.

namespace {

using simulator::Colour;

constexpr double scale = 2;
constexpr Colour wallpaper{0.5, 0.25, 0.75, 1};

constexpr Colour white(double white, double alpha)
{
    return {white, white, white, alpha};
}

/// A colour laid over an opaque one.
Colour over(Colour below, Colour colour)
{
    const auto mix = [&](double lower, double upper) { return lower * (1 - colour.alpha) + upper * colour.alpha; };
    return {mix(below.red, colour.red), mix(below.green, colour.green), mix(below.blue, colour.blue), 1};
}

/// The screen's pixels.
class Screen {
public:
    /// The colour of the pixel at a point of the screen.
    Colour at(double x, double y) const
    {
        cairo_surface_t* const surface = picture_->surface();
        const unsigned char* const row = cairo_image_surface_get_data(surface) +
                                         static_cast<std::ptrdiff_t>(y * scale) * cairo_image_surface_get_stride(surface);
        const unsigned char* const pixel = row + static_cast<std::ptrdiff_t>(x * scale) * 4;
        constexpr double whole = 255;
        return {pixel[2] / whole, pixel[1] / whole, pixel[0] / whole, 1};
    }

    static Screen take() { return Screen(simulator::screenPicture()); }

private:
    explicit Screen(std::shared_ptr<simulator::Bitmap> picture) : picture_(std::move(picture)) {}
    std::shared_ptr<simulator::Bitmap> picture_;
};

class MonthPicture : public testing::Test {
protected:
    MonthPicture()
    {
        phone_.window()->setBackgroundColor(
            UIColor::colorWithRed_green_blue_alpha(wallpaper.red, wallpaper.green, wallpaper.blue, 1));
        calendar_ = newCalendarOn("2014-03-15");
        phone_.window()->addSubview(calendar_);
    }

    static void expectColour(const Screen& screen, double x, double y, Colour expected)
    {
        constexpr double rounding = 2.5 / 255;
        const Colour found = screen.at(x, y);
        EXPECT_NEAR(found.red, expected.red, rounding) << x << ',' << y;
        EXPECT_NEAR(found.green, expected.green, rounding) << x << ',' << y;
        EXPECT_NEAR(found.blue, expected.blue, rounding) << x << ',' << y;
    }

    RegionalPhone phone_{german};
    Owned<UIView> calendar_;
};

// In German, 15 March 2014 stands in the third row, under "Sat": from (220, 155) to (265, 200). 24 February, in grey, stands
// in the first cell, from (0, 67) to (45, 112).

constexpr Colour ordinary = white(0.8, 0.8);
constexpr Colour ordinaryBorder = white(0.1, 0.2);
constexpr Colour grey = white(0.2, 0.1);
constexpr Colour greyBorder = white(0.6, 0.1);
constexpr Colour todayTop{0, 0, 0.6, 0.5};
constexpr Colour todayBottom{0.1, 0.1, 0.8, 0.5};

Colour todayAt(double share)
{
    const auto mix = [&](double top, double bottom) { return top + (bottom - top) * share; };
    return {mix(todayTop.red, todayBottom.red), mix(todayTop.green, todayBottom.green), mix(todayTop.blue, todayBottom.blue),
            0.5};
}

} // namespace

TEST_F(MonthPicture, ShowsTodayInBlueThatGrowsLighterDownwards)
{
    const Screen screen = Screen::take();
    for (const double y : {1.25, 5.25, 9.75, 35.25, 40.25, 43.75})
        expectColour(screen, 220 + 8, 155 + y, over(wallpaper, todayAt((y + 0.25) / 45)));
}

TEST_F(MonthPicture, ShowsAnOrdinaryDayInLightGrey)
{
    const Screen screen = Screen::take();
    for (const double y : {3.0, 20.0, 40.0})
        expectColour(screen, 176 + 6, 155 + y, over(wallpaper, ordinary));
}

TEST_F(MonthPicture, ShowsADayOfAnotherMonthInAFaintGrey)
{
    const Screen screen = Screen::take();
    for (const double y : {3.0, 20.0, 40.0})
        expectColour(screen, 6, 67 + y, over(wallpaper, grey));
}

TEST_F(MonthPicture, DrawsABorderOfOnePointOverTheDaysColour)
{
    const Screen screen = Screen::take();
    // The left edge of the first column is nobody else's.
    for (const double x : {0.0, 0.5}) {
        expectColour(screen, x, 67 + 20, over(over(wallpaper, grey), greyBorder));
        expectColour(screen, x, 155 + 20, over(over(wallpaper, ordinary), ordinaryBorder));
    }
    expectColour(screen, 1.0, 155 + 20, over(wallpaper, ordinary));
}

TEST_F(MonthPicture, DrawsNeighboursOverOneAnotherByOnePoint)
{
    const Screen screen = Screen::take();
    // The 14th comes first; the 15th lies over its right edge.
    const Colour fourteenth = over(over(wallpaper, ordinary), ordinaryBorder);
    for (const double x : {220.0, 220.5}) {
        constexpr double y = 20.25;
        expectColour(screen, x, 155 + y, over(over(fourteenth, todayAt((y + 0.25) / 45)), ordinaryBorder));
    }
    expectColour(screen, 221, 155 + 20, over(wallpaper, todayAt(20.25 / 45)));
    expectColour(screen, 219.5, 155 + 20, over(wallpaper, ordinary));
}

TEST_F(MonthPicture, ReachesTwelvePointsBelowTheView)
{
    const Screen screen = Screen::take();
    expectColour(screen, 270 + 3, 325, over(wallpaper, grey));
    expectColour(screen, 270 + 3, 333, wallpaper);
}

TEST_F(MonthPicture, LeavesThePlaceOfTheTitleEmpty)
{
    const Screen screen = Screen::take();
    for (double y = 0; y < 45; ++y) {
        for (double x = 0; x < 320; ++x)
            expectColour(screen, x, y, wallpaper);
    }
}

TEST_F(MonthPicture, WritesTheHeadingsInGreyInTheMiddleOfTheirPlaces)
{
    const Screen screen = Screen::take();
    double left = 45;
    double right = 0;
    for (double y = 46; y < 66; y += 0.5) {
        for (double x = 0; x < 44; x += 0.5) {
            if (std::abs(screen.at(x, y).green - wallpaper.green) > 0.1) {
                left = std::min(left, x);
                right = std::max(right, x);
            }
        }
    }
    EXPECT_GT(right - left, 15);
    EXPECT_NEAR((left + right) / 2, 22.25, 1.5);
}

TEST_F(MonthPicture, WritesTheNumberInTheMiddleOfItsDay)
{
    const Screen screen = Screen::take();
    double left = 45;
    double right = 0;
    double top = 45;
    double bottom = 0;
    for (double y = 2; y < 43; y += 0.5) {
        for (double x = 2; x < 43; x += 0.5) {
            if (screen.at(220 + x, 155 + y).green > 0.4) {
                left = std::min(left, x);
                right = std::max(right, x);
                top = std::min(top, y);
                bottom = std::max(bottom, y);
            }
        }
    }
    EXPECT_NEAR((left + right) / 2, 22.25, 2);
    EXPECT_NEAR((top + bottom) / 2, 22.25, 2);
    EXPECT_NEAR(bottom - top, 9, 2) << "digits twelve points large";
}

TEST_F(MonthPicture, ShowsGreenBehindADayThatIsPressed)
{
    const Colour green{0, 1, 0, 1};
    simulator::touchDown(phone_.window(), {176 + 22, 155 + 22});
    expectColour(Screen::take(), 176 + 6, 155 + 5, over(green, ordinary));
    simulator::touchUp();
    expectColour(Screen::take(), 176 + 6, 155 + 5, over(wallpaper, ordinary));
}

TEST_F(MonthPicture, ShowsTheNextMonthOnceItIsTurned)
{
    send<"nextMonth">(calendar_.get());
    const Screen screen = Screen::take();
    // 31 March in grey, then April from its 1st; the 15th is a Tuesday.
    expectColour(screen, 6, 67 + 5, over(wallpaper, grey));
    expectColour(screen, 44 + 6, 67 + 5, over(wallpaper, ordinary));
    expectColour(screen, 44 + 8, 155 + 5.25, over(wallpaper, todayAt(5.5 / 45)));
    expectColour(screen, 220 + 8, 155 + 5.25, over(wallpaper, ordinary));
}

TEST_F(MonthPicture, IsNotThereWhenTheCalendarIsHidden)
{
    calendar_->setHidden(true);
    const Screen screen = Screen::take();
    expectColour(screen, 160, 200, wallpaper);
}
