#include "platform/SpringBoard/SBLockScreen.hpp"
#include "platform/runtime/ClassBuilder.hpp"
#include "simulator/foundation/phone_system.hpp"
#include "simulator/foundation/surroundings.hpp"
#include "simulator/runtime/SimulatedClass.hpp"
#include "simulator/springboard/geometry.hpp"
#include "simulator/springboard/list_items.hpp"
#include "simulator/springboard/springboard_classes.hpp"

/// The stock list view: the container, the table in it, and from 7.0.4 on a pocket at either end under which rows that scroll
/// out of sight slip. It shows what its model lists, as its table's data source and delegate.

namespace simulator {

namespace {

using ListView = SBLockScreenNotificationListView;

/// On 7.0 the class has no pockets, and its objects end before them.
struct ListViewIvars {
    Strong<UITableView> _tableView;
    Strong<UIView> _containerView;
    /// Not retained.
    NSObject* _model;
    Strong<UIView> _topPocketView;
    Strong<UIView> _bottomPocketView;
};

struct NotificationTableState {};

constexpr CGFloat rowHeight = 72;
constexpr CGFloat hairline = 0.5;

bool hasPockets()
{
    return phoneSystem() >= System::v7_0_4;
}

/// The table has a class of its own as long as there have been pockets.
Class tableClass()
{
    return hasPockets() ? classNamed<"SBLockScreenNotificationTableView">() : classNamed<"UITableView">();
}

Owned<UIView> pocket(CGRect frame)
{
    Owned<UIView> view = adopt(UIView::alloc()->initWithFrame(frame));
    view->setBackgroundColor(UIColor::colorWithWhite_alpha(1, 0.3));
    view->layer()->setCompositingFilter(constantString<"plusL">());
    view->setUserInteractionEnabled(false);
    view->setAlpha(0);
    return view;
}

void addPockets(ListView* self)
{
    auto& ivars = ivarsOf<ListViewIvars>(self);
    const CGSize size = ivars._containerView->bounds().size;
    const UIEdgeInsets rows = geometry().rows;
    ivars._topPocketView = pocket(CGRect::make(0, rows.top, size.width, hairline));
    ivars._containerView->addSubview(ivars._topPocketView);
    ivars._bottomPocketView = pocket(CGRect::make(0, size.height - rows.bottom, size.width, hairline));
    ivars._containerView->addSubview(ivars._bottomPocketView);
}

UIEdgeInsets contentViewInsets(ListView*, SEL)
{
    return geometry().container;
}

CGRect containerFrame(ListView* self)
{
    return frameWithin(self->bounds().size, contentViewInsets(self, nullptr));
}

CGRect tableFrame(ListView* self)
{
    return frameWithin(containerFrame(self).size, geometry().table);
}

ListView* initWithFrame(ListView* self, SEL, CGRect frame)
{
    superOf<ListViewIvars, "initWithFrame:", ListView*>(self, frame);
    auto& ivars = ivarsOf<ListViewIvars>(self);

    ivars._containerView = adopt(UIView::alloc()->initWithFrame(containerFrame(self)));
    self->addSubview(ivars._containerView);

    ivars._tableView = adopt(send<"alloc", UITableView*>(tableClass())->initWithFrame(tableFrame(self)));
    ivars._tableView->setRowHeight(rowHeight);
    ivars._tableView->setContentInset(geometry().rows);
    ivars._tableView->setDataSource(self);
    send<"setDelegate:">(ivars._tableView.get(), self);
    ivars._containerView->addSubview(ivars._tableView);

    if (hasPockets())
        addPockets(self);
    return self;
}

/// Every pass gives the table its full frame.
void layoutSubviews(ListView* self, SEL)
{
    auto& ivars = ivarsOf<ListViewIvars>(self);
    ivars._containerView->setFrame(containerFrame(self));
    ivars._tableView->setFrame(tableFrame(self));
}

NSObject* model(ListView* self, SEL)
{
    return ivarsOf<ListViewIvars>(self)._model;
}

/// Without a model there are no rows.
void setModel(ListView* self, SEL, NSObject* model)
{
    ivarsOf<ListViewIvars>(self)._model = model;
}

NSInteger tableView_numberOfRowsInSection(ListView* self, SEL, UITableView*, NSInteger)
{
    return static_cast<NSInteger>(send<"count", NSUInteger>(ivarsOf<ListViewIvars>(self)._model));
}

UITableViewCell* tableView_cellForRowAtIndexPath(ListView* self, SEL, UITableView* table, NSIndexPath* path)
{
    auto* const cell = send<"alloc", UITableViewCell*>(classNamed<"SBLockScreenBulletinCell">());
    cell->initWithFrame(CGRect::make(0, 0, table->bounds().size.width, table->rowHeight()));
    showInCell(cell, rowOf(send<"listItemAtIndexPath:", NSObject*>(ivarsOf<ListViewIvars>(self)._model, path)));
    return adopt(cell).autorelease();
}

void tableView_didEndDisplayingCell_forRowAtIndexPath(ListView*, SEL, UITableView*, UITableViewCell* cell, NSIndexPath*)
{
    cell->setHighlighted(false);
}

/// Whatever has changed, all rows are asked for again.
template <class... Changes>
void showChange(ListView* self, SEL, Changes...)
{
    ivarsOf<ListViewIvars>(self)._tableView->reloadData();
}

/// With the screen off, the lock screen that the list is on shows nothing and takes no touches.
void setInScreenOffMode(ListView* self, SEL, BOOL isOff)
{
    self->superview()->setHidden(isOff != NO);
}

void (*releaseVariables)(ListView* self, SEL selector);

/// The table may outlive the view.
void dealloc(ListView* self, SEL selector)
{
    auto& ivars = ivarsOf<ListViewIvars>(self);
    if (surroundings().listViewClearsItsTable) {
        ivars._tableView->setDataSource(nullptr);
        send<"setDelegate:">(ivars._tableView.get(), id{});
    }
    releaseVariables(self, selector);
}

} // namespace

void registerSBLockScreenNotificationListView()
{
    if (hasPockets())
        SimulatedClass<NotificationTableState>("SBLockScreenNotificationTableView", "UITableView").registerClass();
    ClassBuilder<ListViewIvars> listView("SBLockScreenNotificationListView", "UIView");
    listView.ivar<&ListViewIvars::_tableView>("_tableView")
        .ivar<&ListViewIvars::_containerView>("_containerView")
        .ivar<&ListViewIvars::_model>("_model")
        .method<"initWithFrame:">(initWithFrame)
        .method<"layoutSubviews">(layoutSubviews)
        .method<"model">(model)
        .method<"setModel:">(setModel)
        .method<"tableView:numberOfRowsInSection:">(tableView_numberOfRowsInSection)
        .method<"tableView:cellForRowAtIndexPath:">(tableView_cellForRowAtIndexPath)
        .method<"tableView:didEndDisplayingCell:forRowAtIndexPath:">(tableView_didEndDisplayingCell_forRowAtIndexPath)
        .method<"updateForAdditionOfItemAtIndex:allowHighlightOnInsert:">(showChange<NSUInteger, BOOL>)
        .method<"updateForModificationOfItemWithOldIndex:andNewIndex:">(showChange<NSUInteger, NSUInteger>)
        .method<"updateForRemovalOfItemAtIndex:removedItem:">(showChange<NSUInteger, NSObject*>)
        .method<"updateForRemovalOfItems">(showChange<>)
        .method<"setInScreenOffMode:">(setInScreenOffMode);
    if (hasPockets())
        listView.ivar<&ListViewIvars::_topPocketView>("_topPocketView")
            .ivar<&ListViewIvars::_bottomPocketView>("_bottomPocketView");
    // Later systems have the lock screen's metrics tell, which the tables do not have.
    if (phoneSystem() < System::v8_1)
        listView.method<"_contentViewInsets">(contentViewInsets);
    releaseVariables = replaceMethod<"dealloc">(listView.registerClass(), &dealloc);
}

} // namespace simulator
