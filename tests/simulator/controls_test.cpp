#include <gmock/gmock.h>

#include "platform/UIKit/UIControl.hpp"
#include "platform/UIKit/UIWindow.hpp"
#include "simulator/runtime/SimulatedClass.hpp"
#include "simulator/uikit/touch_input.hpp"
#include "tests/support/MessageLog.hpp"
#include "tests/support/Phone.hpp"

/// What a control makes of a finger that came down on it, inside and outside of its bounds.

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

struct Nothing {};

template <FixedString Event>
void note(NSObject*, SEL, UIControl*)
{
    MessageLog::messages().emplace_back(Event.text);
}

Owned<NSObject> newListener()
{
    return adopt(send<"new", NSObject*>(simulator::SimulatedClass<Nothing>("ControlListener", "NSObject")
                                            .method<"down:">(note<"down">)
                                            .method<"inside:">(note<"inside">)
                                            .method<"outside:">(note<"outside">)
                                            .method<"enter:">(note<"enter">)
                                            .method<"exit:">(note<"exit">)
                                            .method<"upInside:">(note<"up inside">)
                                            .method<"upOutside:">(note<"up outside">)
                                            .method<"cancel:">(note<"cancel">)
                                            .registerClass()));
}

/// Stands at 100, 200, is 40 points wide and 30 high, and is listened to.
class Control : public testing::Test {
protected:
    Control()
    {
        const struct {
            SEL action;
            UIControlEvents event;
        } all[] = {
            {selector<"down:">(), UIControlEventTouchDown},           {selector<"inside:">(), UIControlEventTouchDragInside},
            {selector<"outside:">(), UIControlEventTouchDragOutside}, {selector<"enter:">(), UIControlEventTouchDragEnter},
            {selector<"exit:">(), UIControlEventTouchDragExit},       {selector<"upInside:">(), UIControlEventTouchUpInside},
            {selector<"upOutside:">(), UIControlEventTouchUpOutside}, {selector<"cancel:">(), UIControlEventTouchCancel}};
        for (const auto& [action, event] : all)
            control_->addTarget_action_forControlEvents(listener_.get(), action, event);
        control_->setFrame(CGRect::make(100, 200, 40, 30));
        simulator::springBoardWindow()->addSubview(control_);
    }

    static void press() { simulator::touchDown(simulator::springBoardWindow(), {120, 215}); }

    static std::vector<std::string> heard() { return std::exchange(MessageLog::messages(), {}); }

    Phone phone_;
    Owned<NSObject> listener_ = newListener();
    Owned<UIControl> control_ = adopt(send<"new", UIControl*>(objc_getClass("UIControl")));
};

} // namespace

TEST_F(Control, TellsOfATouchInside)
{
    press();
    EXPECT_TRUE(control_->isHighlighted());
    simulator::touchMove({121, 216});
    simulator::touchUp();
    EXPECT_FALSE(control_->isHighlighted());
    EXPECT_THAT(heard(), ElementsAre("down", "inside", "up inside"));
}

TEST_F(Control, GoesOnTrackingUpToSeventyPointsBeyondItsBounds)
{
    for (const CGPoint point : {CGPoint{31, 215}, {209, 215}, {120, 131}, {120, 299}, {31, 131}, {209, 299}}) {
        press();
        simulator::touchMove(point);
        EXPECT_TRUE(control_->isHighlighted());
        simulator::touchUp();
        EXPECT_THAT(heard(), ElementsAre("down", "inside", "up inside")) << point.x << ',' << point.y;
    }
}

TEST_F(Control, LosesAFingerThatIsFartherAway)
{
    for (const CGPoint point : {CGPoint{29, 215}, {211, 215}, {120, 129}, {120, 301}}) {
        press();
        simulator::touchMove(point);
        EXPECT_FALSE(control_->isHighlighted());
        simulator::touchUp();
        EXPECT_THAT(heard(), ElementsAre("down", "outside", "exit", "up outside")) << point.x << ',' << point.y;
    }
}

TEST_F(Control, TellsOfEachStepOfADragThatLeavesAndComesBack)
{
    press();
    simulator::touchMove({130, 215});
    simulator::touchMove({250, 215});
    simulator::touchMove({260, 215});
    EXPECT_FALSE(control_->isHighlighted());
    simulator::touchMove({205, 215});
    EXPECT_TRUE(control_->isHighlighted());
    simulator::touchUp();
    EXPECT_THAT(heard(), ElementsAre("down", "inside", "outside", "exit", "outside", "inside", "enter", "up inside"));
}

TEST_F(Control, IsJudgedByWhereTheFingerIsLifted)
{
    press();
    simulator::touchUp({205, 215});
    EXPECT_THAT(heard(), ElementsAre("down", "up inside"));
    press();
    simulator::touchUp({215, 215});
    EXPECT_THAT(heard(), ElementsAre("down", "up outside"));
}

TEST_F(Control, IsNotPressedByAFingerThatComesDownBesideIt)
{
    simulator::touchDown(simulator::springBoardWindow(), {150, 215});
    simulator::touchMove({120, 215});
    simulator::touchUp();
    EXPECT_THAT(heard(), IsEmpty());
}

TEST_F(Control, SaysWhetherItTracksAndWhetherTheFingerIsInside)
{
    const auto says = [&] {
        return std::pair(send<"isTracking", BOOL>(control_.get()) != NO, send<"isTouchInside", BOOL>(control_.get()) != NO);
    };
    EXPECT_EQ(says(), std::pair(false, false));
    press();
    EXPECT_EQ(says(), std::pair(true, true));
    simulator::touchMove({250, 215});
    EXPECT_EQ(says(), std::pair(true, false));
    simulator::touchUp();
    EXPECT_EQ(says(), std::pair(false, false));
}
