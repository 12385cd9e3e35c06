#include <gmock/gmock.h>

#include "platform/UIKit/UIScrollView.hpp"
#include "platform/UIKit/UIWindow.hpp"
#include "tests/support/Phone.hpp"

/// A view onto contents that are larger than it is.

namespace {

/// 100 points wide and high, onto 300 by 400.
class ScrollView : public testing::Test {
protected:
    ScrollView()
    {
        view_->setContentSize({300, 400});
        simulator::springBoardWindow()->addSubview(view_);
    }

    CGPoint offset() const { return view_->contentOffset(); }

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
