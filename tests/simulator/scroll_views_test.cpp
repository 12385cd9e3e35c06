#include <gmock/gmock.h>

#include "platform/UIKit/UIScrollView.hpp"
#include "platform/UIKit/UIWindow.hpp"
#include "simulator/uikit/motion.hpp"
#include "simulator/uikit/touch_input.hpp"
#include "tests/support/Phone.hpp"
#include "tests/support/Picture.hpp"

/// A view onto contents that are larger than it is.

namespace {

constexpr CGPoint middle{150, 250};

/// 100 points wide and high, onto 300 by 400; its middle is in the middle.
class ScrollView : public testing::Test {
protected:
    ScrollView()
    {
        view_->setContentSize({300, 400});
        simulator::springBoardWindow()->addSubview(view_);
    }

    CGPoint offset() const { return view_->contentOffset(); }

    /// Puts a finger down in the middle and draws the contents by that much.
    static void draw(CGFloat x, CGFloat y, double seconds = simulator::strokeTime)
    {
        simulator::touchDown(simulator::springBoardWindow(), middle);
        simulator::touchMoveSteadily({middle.x - x, middle.y - y}, seconds);
    }
    /// The same in a fifth of a second, and lets them go.
    static void flick(CGFloat x, CGFloat y)
    {
        draw(x, y);
        simulator::touchUp();
    }
    static void drawAndRest(CGFloat x, CGFloat y)
    {
        draw(x, y);
        simulator::passFingerTime(1);
    }

    /// Where the contents come to rest.
    CGPoint rest() const
    {
        simulator::finishMotion();
        return offset();
    }

    Phone phone_;
    Owned<UIScrollView> view_ = adopt(UIScrollView::alloc()->initWithFrame(CGRect::make(100, 200, 100, 100)));
};

} // namespace

// The offset comes back into range

TEST_F(ScrollView, ComesBackWhenItsContentsShrink)
{
    view_->setContentOffset({200, 300});
    view_->setContentSize({250, 340});
    EXPECT_EQ(offset(), (CGPoint{150, 240}));
    view_->setContentSize({0, 0});
    EXPECT_EQ(offset(), (CGPoint{0, 0}));
}

TEST_F(ScrollView, ComesBackWhenItGrows)
{
    view_->setContentOffset({200, 300});
    view_->setFrame(CGRect::make(0, 200, 150, 100));
    EXPECT_EQ(offset(), (CGPoint{150, 300}));
    view_->setBounds({offset(), {150, 390}});
    EXPECT_EQ(offset(), (CGPoint{150, 10}));
}

TEST_F(ScrollView, ComesBackWhenItGrowsWithItsSuperview)
{
    const auto around = adopt(UIView::alloc()->initWithFrame(CGRect::make(0, 0, 100, 100)));
    view_->setFrame(around->bounds());
    around->addSubview(view_);
    constexpr NSUInteger flexibleWidth = 1 << 1;
    send<"setAutoresizingMask:">(view_.get(), flexibleWidth);
    view_->setContentOffset({200, 300});
    around->setFrame(CGRect::make(0, 0, 260, 100));
    EXPECT_EQ(offset(), (CGPoint{40, 300}));
}

TEST_F(ScrollView, ComesBackWhenItsInsetShrinks)
{
    view_->setContentInset({.top = 10, .left = 20, .bottom = 30, .right = 40});
    view_->setContentOffset({240, 330});
    view_->setContentInset({});
    EXPECT_EQ(offset(), (CGPoint{200, 300}));
    view_->setContentInset({.top = 10, .left = 20, .bottom = 30, .right = 40});
    view_->setContentOffset({-20, 5});
    view_->setContentInset({.top = 10, .left = 5, .bottom = 30, .right = 40});
    EXPECT_EQ(offset(), (CGPoint{-5, 5}));
}

TEST_F(ScrollView, CountsTheInsetIntoItsRange)
{
    view_->setContentInset({.top = 10, .left = 20, .bottom = 30, .right = 40});
    view_->setContentOffset({240, 330});
    view_->setContentSize({290, 390});
    EXPECT_EQ(offset(), (CGPoint{230, 320}));
    view_->setContentSize({0, 0});
    EXPECT_EQ(offset(), (CGPoint{-20, -10}));
}

TEST_F(ScrollView, KeepsAnOffsetThatIsInRange)
{
    view_->setContentOffset({70, 80});
    view_->setContentSize({170, 180});
    view_->setFrame(CGRect::make(0, 0, 90, 90));
    view_->setContentInset({.top = 0, .left = 10, .bottom = 0, .right = 0});
    EXPECT_EQ(offset(), (CGPoint{70, 80}));
}

TEST_F(ScrollView, StandsWhereItIsPutEvenOutOfRange)
{
    view_->setContentOffset({500, -50});
    EXPECT_EQ(offset(), (CGPoint{500, -50}));
    view_->setFrame(CGRect::make(10, 20, 100, 100));
    EXPECT_EQ(offset(), (CGPoint{500, -50}));
}

// The rubber band

TEST_F(ScrollView, IsDrawnBeyondItsContentsTheHarderTheFarther)
{
    draw(-40, 0);
    // 100 points long, with a stretch of 0.55: 100 * (1 - 1 / (40 * 0.55 / 100 + 1)).
    EXPECT_NEAR(offset().x, -18.0, 0.3);
    EXPECT_EQ(offset().y, 0);
    simulator::touchMove({middle.x + 80, middle.y});
    EXPECT_NEAR(offset().x, -30.6, 0.3);
    simulator::touchMove({middle.x + 10000, middle.y});
    EXPECT_GT(offset().x, -100);
}

TEST_F(ScrollView, ComesBackFromBeyondItsContents)
{
    drawAndRest(-40, -60);
    simulator::touchUp();
    EXPECT_TRUE(view_->isDecelerating());
    simulator::advanceMotion(0.1);
    EXPECT_LT(offset().x, -8);
    EXPECT_GT(offset().x, -18);
    EXPECT_EQ(rest(), (CGPoint{0, 0}));
    EXPECT_FALSE(view_->isDecelerating());
}

TEST_F(ScrollView, ComesBackToAnEndThatIsOnNoPixel)
{
    view_->setContentSize({300.3, 100});
    flick(500, 0);
    EXPECT_EQ(rest(), (CGPoint{CGFloat(300.3) - 100, 0}));
}

TEST_F(ScrollView, IsHeldWhereAFingerCatchesItOnItsWayBack)
{
    drawAndRest(-60, 0);
    simulator::touchUp();
    simulator::advanceMotion(0.05);
    const CGPoint caught = offset();
    simulator::touchDown(simulator::springBoardWindow(), middle);
    EXPECT_TRUE(view_->isDragging());
    simulator::advanceMotion(1);
    EXPECT_EQ(offset(), caught);
    simulator::touchMove({middle.x - 5, middle.y});
    EXPECT_GT(offset().x, caught.x);
    EXPECT_LT(offset().x, caught.x + 5);
    simulator::touchUp();
    EXPECT_EQ(rest(), (CGPoint{0, 0}));
}

TEST_F(ScrollView, EndsAtItsContentsWhenItDoesNotBounce)
{
    view_->setBounces(false);
    draw(-40, 0);
    EXPECT_EQ(offset(), (CGPoint{0, 0}));
    simulator::touchUp();
    flick(90, 0);
    for (int frame = 0; simulator::isInMotion(); ++frame) {
        simulator::advanceMotion(1.0 / 60);
        ASSERT_LE(offset().x, 200) << frame;
    }
    EXPECT_EQ(offset(), (CGPoint{200, 0}));
}

TEST_F(ScrollView, StandsStillWhenAllOfItsContentsAreSeen)
{
    view_->setContentSize({300, 100});
    draw(0, -40);
    EXPECT_EQ(offset(), (CGPoint{0, 0}));
    view_->setAlwaysBounceVertical(true);
    simulator::touchMove({middle.x, middle.y + 50});
    EXPECT_LT(offset().y, -10);
    simulator::touchUp();
    EXPECT_EQ(rest(), (CGPoint{0, 0}));
    view_->setContentSize({100, 100});
    draw(-40, 0);
    EXPECT_EQ(offset(), (CGPoint{0, 0}));
    view_->setAlwaysBounceHorizontal(true);
    simulator::touchMove({middle.x + 50, middle.y});
    EXPECT_LT(offset().x, -10);
}

TEST_F(ScrollView, BouncesOnlyWhereItBouncesAtAll)
{
    view_->setContentSize({100, 100});
    view_->setAlwaysBounceVertical(true);
    view_->setBounces(false);
    draw(0, -40);
    EXPECT_EQ(offset(), (CGPoint{0, 0}));
}

TEST_F(ScrollView, IsNotDrawnWhenItDoesNotScroll)
{
    view_->setScrollEnabled(false);
    flick(50, 50);
    EXPECT_EQ(rest(), (CGPoint{0, 0}));
    EXPECT_FALSE(simulator::isInMotion());
}

// The way on

TEST_F(ScrollView, GoesOnAsFastAsTheFingerAndSlowsDown)
{
    view_->setContentSize({10000, 100});
    flick(80, 0);
    EXPECT_EQ(offset(), (CGPoint{80, 0}));
    simulator::advanceMotion(0.1);
    const CGFloat first = offset().x - 80;
    simulator::advanceMotion(0.1);
    const CGFloat second = offset().x - 80 - first;
    // 300 points a second, of which 0.998 are left after each thousandth of a second.
    EXPECT_NEAR(first, 27.2, 0.5);
    EXPECT_NEAR(second, 22.2, 0.5);
    EXPECT_NEAR(rest().x, 80 + 300 * 0.4995, 0.5);
}

TEST_F(ScrollView, GoesTheSameWayInWhateverSteps)
{
    view_->setContentSize({500, 100});
    std::vector<CGFloat> ends;
    for (const double step : {0.5, 0.1, 1.0 / 60, 0.001}) {
        view_->setContentOffset({0, 0});
        flick(140, 0);
        for (double time = 0; time < 0.4999; time += step)
            simulator::advanceMotion(step);
        ends.push_back(offset().x);
        EXPECT_EQ(rest().x, 400);
    }
    for (const CGFloat each : ends)
        EXPECT_NEAR(each, ends.front(), 1.0);
}

TEST_F(ScrollView, StopsSoonerAtAFasterRate)
{
    view_->setContentSize({10000, 100});
    view_->setDecelerationRate(UIScrollViewDecelerationRateFast);
    flick(80, 0);
    EXPECT_NEAR(rest().x, 80 + 300 * 0.0995, 0.6);
}

TEST_F(ScrollView, ComesToRestAtAnyRate)
{
    view_->setContentSize({1e6, 100});
    for (const CGFloat rate : {CGFloat{0}, CGFloat{1}, CGFloat{2}, CGFloat{-1}}) {
        view_->setDecelerationRate(rate);
        view_->setContentOffset({0, 0});
        flick(80, 0);
        EXPECT_GE(rest().x, 80) << rate;
    }
}

TEST_F(ScrollView, StaysWhereAFingerLeavesItThatHasRested)
{
    drawAndRest(60, 70);
    simulator::touchUp();
    EXPECT_EQ(rest(), (CGPoint{60, 70}));
}

TEST_F(ScrollView, ShootsOverItsEndAndComesBack)
{
    flick(130, 0);
    CGFloat farthest = 0;
    while (simulator::isInMotion()) {
        simulator::advanceMotion(1.0 / 60);
        farthest = std::max(farthest, offset().x);
    }
    EXPECT_GT(farthest, 205);
    EXPECT_EQ(offset(), (CGPoint{200, 0}));
}

TEST_F(ScrollView, StopsWhereItIsPut)
{
    flick(80, 0);
    simulator::advanceMotion(0.1);
    view_->setContentOffset({10, 20});
    EXPECT_EQ(rest(), (CGPoint{10, 20}));
}

TEST_F(ScrollView, FindsItsWayIntoContentsThatShrinkMeanwhile)
{
    flick(80, 0);
    simulator::advanceMotion(0.1);
    view_->setContentSize({150, 400});
    EXPECT_EQ(rest(), (CGPoint{50, 0}));
    drawAndRest(0, 100);
    view_->setContentSize({150, 120});
    simulator::touchUp();
    EXPECT_EQ(rest(), (CGPoint{50, 20}));
}

TEST_F(ScrollView, ShowsContentsThatHaveComeToFitMeanwhile)
{
    flick(80, 90);
    simulator::advanceMotion(0.1);
    view_->setContentSize({0, 100});
    EXPECT_EQ(rest(), (CGPoint{0, 0}));
    view_->setContentSize({300, 400});
    drawAndRest(80, 90);
    view_->setContentSize({0, 100});
    simulator::touchUp();
    EXPECT_EQ(rest(), (CGPoint{0, 0}));
}

TEST_F(ScrollView, LivesUntilItRests)
{
    flick(80, 0);
    view_->removeFromSuperview();
    view_ = nullptr;
    EXPECT_TRUE(simulator::isInMotion());
    simulator::finishMotion();
    EXPECT_FALSE(simulator::isInMotion());
}

// The indicators

TEST_F(ScrollView, ShowsHowFarItIsWhileItMoves)
{
    view_->setBackgroundColor(UIColor::whiteColor());
    const Picture before = screenshot();
    drawAndRest(100, 150);
    const Picture drawn = screenshot();
    // A bar along the foot and one down the right, 3 points from the edges and 2.5 thick, at two pixels a point: half way along.
    const auto isSeen = [&](int x, int y) { return drawn.at(x, y) != before.at(x, y); };
    EXPECT_TRUE(isSeen(300, 591));
    EXPECT_FALSE(isSeen(230, 591));
    EXPECT_FALSE(isSeen(370, 591));
    EXPECT_TRUE(isSeen(391, 500));
    EXPECT_FALSE(isSeen(391, 430));
    EXPECT_FALSE(isSeen(391, 560));
    simulator::touchUp();
    simulator::advanceMotion(0.01);
    EXPECT_EQ(screenshot(), drawn);
    simulator::advanceMotion(0.1);
    EXPECT_NE(screenshot(), drawn);
    EXPECT_NE(screenshot(), before);
    simulator::finishMotion();
    EXPECT_EQ(screenshot(), before);
}

TEST_F(ScrollView, ShowsNothingWhereItIsNotToOrHasNothingToTell)
{
    view_->setBackgroundColor(UIColor::whiteColor());
    view_->setShowsVerticalScrollIndicator(false);
    view_->setContentSize({100, 400});
    const Picture before = screenshot();
    draw(0, 150);
    EXPECT_EQ(screenshot(), before);
}
