#include <gmock/gmock.h>

#include "platform/UIKit/UIGestureRecognizer.hpp"
#include "platform/UIKit/UIWindow.hpp"
#include "simulator/runtime/SimulatedClass.hpp"
#include "simulator/uikit/touch_input.hpp"
#include "tests/support/Phone.hpp"

/// Which touches are taps, and which are swipes. The finger's clock is the test's own.

namespace {

int recognised;

struct Nothing {};

void count(NSObject*, SEL, UIGestureRecognizer*)
{
    ++recognised;
}

/// A view over the whole window that counts what its recogniser recognises.
class OneGesture : public testing::Test {
protected:
    template <class Recognizer>
    Owned<Recognizer> watch()
    {
        const auto recognizer = adopt(Recognizer::alloc()->initWithTarget_action(counter_.get(), selector<"count:">()));
        view_->addGestureRecognizer(recognizer);
        simulator::springBoardWindow()->addSubview(view_);
        return recognizer;
    }

    static void press(CGPoint point, double pause = simulator::pauseBetweenGestures)
    {
        simulator::touchDown(simulator::springBoardWindow(), point, pause);
    }

    static int counted() { return std::exchange(recognised, 0); }

    Phone phone_;
    Owned<NSObject> counter_ = adopt(send<"new", NSObject*>(
        simulator::SimulatedClass<Nothing>("GestureCounter", "NSObject").method<"count:">(count).registerClass()));
    Owned<UIView> view_ = adopt(UIView::alloc()->initWithFrame(CGRect::make(0, 0, 320, 568)));
};

class Tap : public OneGesture {
protected:
    Owned<UITapGestureRecognizer> tap_ = watch<UITapGestureRecognizer>();
};

class Swipe : public OneGesture {
protected:
    Swipe() { swipe_->setDirection(UISwipeGestureRecognizerDirectionRight); }

    /// Whether a stroke to the right that reaches that far in so many seconds is a swipe, after half of its way or all of it.
    static bool isRecognised(CGFloat x, CGFloat y, double seconds)
    {
        press({50, 200});
        simulator::touchMove({50 + x / 2, 200 + y / 2}, seconds / 2);
        simulator::touchMove({50 + x, 200 + y}, seconds / 2);
        simulator::touchUp();
        return counted() == 1;
    }

    Owned<UISwipeGestureRecognizer> swipe_ = watch<UISwipeGestureRecognizer>();
};

} // namespace

TEST_F(Tap, IsAShortTouch)
{
    press({100, 100});
    simulator::touchUp({100, 100}, 0.7);
    EXPECT_EQ(counted(), 1);
}

TEST_F(Tap, IsNoneWhenTheFingerStaysTooLong)
{
    press({100, 100});
    simulator::touchUp({100, 100}, 0.8);
    EXPECT_EQ(counted(), 0);
}

TEST_F(Tap, IsNoneWhenTheFingerMovesOff)
{
    press({100, 100});
    simulator::touchMove({150, 100});
    simulator::touchUp();
    EXPECT_EQ(counted(), 0);
}

TEST_F(Tap, IsNoneWhenTheFingerMovesOffAndComesBack)
{
    press({100, 100});
    simulator::touchMove({150, 100});
    EXPECT_EQ(tap_->state(), UIGestureRecognizerStateFailed);
    simulator::touchMove({100, 100});
    simulator::touchUp();
    EXPECT_EQ(counted(), 0);
}

TEST_F(Tap, MayMoveALittle)
{
    press({100, 100});
    simulator::touchMove({130, 120});
    simulator::touchUp();
    EXPECT_EQ(counted(), 1);
}

TEST_F(Tap, IsRecognisedAfterATouchThatWasNone)
{
    press({100, 100});
    simulator::touchUp({100, 100}, 2);
    press({100, 100}, 0.1);
    simulator::touchUp();
    EXPECT_EQ(counted(), 1);
}

TEST_F(Tap, CountsForADoubleTapOnlyWhenItIsShort)
{
    tap_->setNumberOfTapsRequired(2);
    press({100, 100});
    simulator::touchUp();
    press({100, 100}, 0.1);
    simulator::touchUp({100, 100}, 0.8);
    EXPECT_EQ(counted(), 0);
    press({100, 100}, 0.1);
    simulator::touchUp();
    EXPECT_EQ(counted(), 0);
    press({100, 100}, 0.1);
    simulator::touchUp();
    EXPECT_EQ(counted(), 1);
}

TEST_F(Swipe, MayBeShortWhenItIsSlow)
{
    EXPECT_TRUE(isRecognised(40, 0, 0.45));
    EXPECT_FALSE(isRecognised(40, 0, 0.1));
}

TEST_F(Swipe, MustBeLongWhenItIsFast)
{
    EXPECT_TRUE(isRecognised(80, 0, 0.1));
    EXPECT_FALSE(isRecognised(55, 0, 0.1));
}

TEST_F(Swipe, MaySlantWhenItIsFast)
{
    EXPECT_TRUE(isRecognised(100, 65, 0.1));
    EXPECT_TRUE(isRecognised(100, -65, 0.1));
}

TEST_F(Swipe, MustBeStraightWhenItIsSlow)
{
    EXPECT_FALSE(isRecognised(60, 39, 0.45));
    EXPECT_TRUE(isRecognised(60, 10, 0.45));
}

TEST_F(Swipe, IsNoneWhenItTakesTooLong)
{
    EXPECT_FALSE(isRecognised(40, 0, 0.6));
    press({50, 200});
    simulator::touchMove({250, 200}, 0.6);
    simulator::touchUp();
    EXPECT_EQ(counted(), 0);
}

TEST_F(Swipe, IsNoneInAnotherDirection)
{
    EXPECT_FALSE(isRecognised(-45, 0, 0.3));
    EXPECT_FALSE(isRecognised(0, 100, 0.1));
    EXPECT_FALSE(isRecognised(0, -100, 0.1));
}
