#include "platform/SpringBoard/SBLockScreen.hpp"
#include "platform/UIKit/UITableView.hpp"
#include "platform/runtime/ClassBuilder.hpp"
#include "simulator/springboard/springboard_classes.hpp"

/// The stock list view: a container over all of it, the table in the container, and a pocket at either end under which
/// rows that scroll out of sight slip.

namespace simulator {

namespace {

using ListView = SBLockScreenNotificationListView;

struct ListViewIvars {
    Strong<UIView> _containerView;
    Strong<UITableView> _tableView;
    Strong<UIView> _topPocketView;
    Strong<UIView> _bottomPocketView;
};

constexpr CGFloat rowHeight = 72;
constexpr CGFloat hairline = 0.5;
/// Rows begin below the status bar and end above the clock.
constexpr UIEdgeInsets rowInset{.top = 20, .left = 0, .bottom = 190, .right = 0};

Owned<UIView> pocket(CGRect frame)
{
    Owned<UIView> view = adopt(UIView::alloc()->initWithFrame(frame));
    view->setBackgroundColor(UIColor::colorWithWhite_alpha(1, 0.3));
    view->layer()->setCompositingFilter(constantString<"plusL">());
    view->setUserInteractionEnabled(false);
    view->setAlpha(0);
    return view;
}

ListView* initWithFrame(ListView* self, SEL, CGRect frame)
{
    superOf<ListViewIvars, "initWithFrame:", ListView*>(self, frame);
    auto& ivars = ivarsOf<ListViewIvars>(self);
    const CGRect bounds = self->bounds();
    const auto [width, height] = bounds.size;

    ivars._containerView = adopt(UIView::alloc()->initWithFrame(bounds));
    self->addSubview(ivars._containerView);

    ivars._tableView = adopt(UITableView::alloc()->initWithFrame(bounds));
    ivars._tableView->setRowHeight(rowHeight);
    ivars._tableView->setContentInset(rowInset);
    ivars._containerView->addSubview(ivars._tableView);

    ivars._topPocketView = pocket(CGRect::make(0, rowInset.top, width, hairline));
    ivars._containerView->addSubview(ivars._topPocketView);
    ivars._bottomPocketView = pocket(CGRect::make(0, height - rowInset.bottom, width, hairline));
    ivars._containerView->addSubview(ivars._bottomPocketView);
    return self;
}

/// Every pass gives the table its full frame.
void layoutSubviews(ListView* self, SEL)
{
    auto& ivars = ivarsOf<ListViewIvars>(self);
    ivars._containerView->setFrame(self->bounds());
    ivars._tableView->setFrame(self->bounds());
}

void setDataSource(ListView* self, SEL, NSObject* source)
{
    ivarsOf<ListViewIvars>(self)._tableView->setDataSource(source);
}

void reloadData(ListView* self, SEL)
{
    ivarsOf<ListViewIvars>(self)._tableView->reloadData();
}

} // namespace

void registerSBLockScreenNotificationListView()
{
    ClassBuilder<ListViewIvars>("SBLockScreenNotificationListView", "UIView")
        .ivar<&ListViewIvars::_containerView>("_containerView")
        .ivar<&ListViewIvars::_tableView>("_tableView")
        .ivar<&ListViewIvars::_topPocketView>("_topPocketView")
        .ivar<&ListViewIvars::_bottomPocketView>("_bottomPocketView")
        .method<"initWithFrame:">(initWithFrame)
        .method<"layoutSubviews">(layoutSubviews)
        .method<"setDataSource:">(setDataSource)
        .method<"reloadData">(reloadData)
        .registerClass();
}

} // namespace simulator
