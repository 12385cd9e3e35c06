#include <gmock/gmock.h>

#include "platform/UIKit/UITableView.hpp"
#include "platform/UIKit/UIWindow.hpp"
#include "platform/runtime/instance_variable.hpp"
#include "simulator/uikit/motion.hpp"
#include "simulator/uikit/touch_input.hpp"
#include "tests/support/Phone.hpp"

/// A finger on the stock list while it is still down, which no script can look at.

namespace {

class FingerOnTheList : public testing::Test {
protected:
    FingerOnTheList()
    {
        simulator::lockScreen();
        for (int i = 0; i < 8; ++i)
            simulator::addListItem(simulator::unknownItem());
        simulator::springBoardWindow()->layoutIfNeeded();
    }

    static UITableView* table() { return instanceVariable<UITableView>(simulator::listView(), "_tableView"); }

    static UIView* row(NSUInteger index) { return table()->visibleCells()->objectAtIndex<UIView>(index); }

    static bool isHighlighted(NSUInteger index) { return send<"isHighlighted", BOOL>(row(index)) != NO; }

    static CGPoint centreOf(UIView* view)
    {
        const CGSize size = view->bounds().size;
        return view->convertPoint_toView({size.width / 2, size.height / 2}, simulator::springBoardWindow());
    }

    Phone phone_;
};

} // namespace

TEST_F(FingerOnTheList, HighlightsTheRowBelowIt)
{
    simulator::touchDown(simulator::springBoardWindow(), centreOf(row(1)));
    EXPECT_TRUE(isHighlighted(1));
    EXPECT_FALSE(isHighlighted(0));
}

TEST_F(FingerOnTheList, KeepsTheHighlightWhileItHardlyMoves)
{
    const CGPoint start = centreOf(row(1));
    simulator::touchDown(simulator::springBoardWindow(), start);
    simulator::touchMove({start.x, start.y - 5});
    EXPECT_TRUE(isHighlighted(1));
    EXPECT_EQ(table()->contentOffset().y, -table()->contentInset().top);
}

TEST_F(FingerOnTheList, EndsTheHighlightWhenTheListBeginsToMove)
{
    const CGPoint start = centreOf(row(1));
    simulator::touchDown(simulator::springBoardWindow(), start);
    simulator::touchMove({start.x, start.y - 30});
    EXPECT_FALSE(isHighlighted(1));
}

TEST_F(FingerOnTheList, DrawsTheListAlong)
{
    const CGPoint start = centreOf(row(1));
    const CGFloat before = table()->contentOffset().y;
    simulator::touchDown(simulator::springBoardWindow(), start);
    simulator::touchMove({start.x, start.y - 30});
    EXPECT_EQ(table()->contentOffset().y, before + 30);
    simulator::touchMove({start.x, start.y - 70});
    EXPECT_EQ(table()->contentOffset().y, before + 70);
}

TEST_F(FingerOnTheList, CannotDrawTheListBeyondItsEndsWhenItDoesNotBounce)
{
    table()->setBounces(false);
    const CGPoint start = centreOf(row(1));
    const CGFloat before = table()->contentOffset().y;
    simulator::touchDown(simulator::springBoardWindow(), start);
    simulator::touchMove({start.x, start.y + 100});
    EXPECT_EQ(table()->contentOffset().y, before);
}

TEST_F(FingerOnTheList, DrawsTheListALittleBeyondItsEndsAndLetsItComeBack)
{
    const CGPoint start = centreOf(row(1));
    const CGFloat before = table()->contentOffset().y;
    simulator::touchDown(simulator::springBoardWindow(), start);
    simulator::touchMove({start.x, start.y + 100});
    const CGFloat drawn = table()->contentOffset().y;
    EXPECT_LT(drawn, before - 20);
    EXPECT_GT(drawn, before - 80);
    simulator::touchUp();
    simulator::finishMotion();
    EXPECT_EQ(table()->contentOffset().y, before);
}

TEST_F(FingerOnTheList, StopsTheListInMotionAndSelectsNothing)
{
    const CGPoint start = centreOf(row(4));
    simulator::touchDown(simulator::springBoardWindow(), start);
    simulator::touchMoveSteadily({start.x, start.y - 40}, 0.1);
    simulator::touchUp();
    simulator::advanceMotion(0.1);
    const CGFloat caught = table()->contentOffset().y;
    simulator::touchDown(simulator::springBoardWindow(), {start.x, 200});
    simulator::advanceMotion(1);
    EXPECT_EQ(table()->contentOffset().y, caught);
    simulator::touchUp();
    simulator::finishMotion();
    EXPECT_EQ(table()->contentOffset().y, caught);
    EXPECT_EQ((send<"simulator_selectedRow", NSInteger>(table())), NSNotFound);
    for (const NSUInteger each : {0U, 1U, 2U, 3U})
        EXPECT_FALSE(isHighlighted(each));
}

TEST_F(FingerOnTheList, SelectsNothingAfterADrag)
{
    const CGPoint start = centreOf(row(1));
    simulator::touchDown(simulator::springBoardWindow(), start);
    simulator::touchMove({start.x, start.y - 30});
    simulator::touchUp();
    const auto selected = send<"simulator_selectedRow", NSInteger>(table());
    EXPECT_EQ(selected, NSNotFound);
    EXPECT_FALSE(simulator::fingerIsDown());
}
