#include "platform/UIKit/UITableView.hpp"

#include <cmath>
#include <vector>

#include "platform/Foundation/NSSet.hpp"
#include "platform/UIKit/UITouch.hpp"
#include "simulator/uikit/UIView.hpp"
#include "simulator/uikit/uikit.hpp"

/// Rows of one height below each other, of which one may be selected.

namespace simulator {

namespace {

struct TableViewState {
    // Not retained.
    NSObject* dataSource = nullptr;
    NSObject* delegate = nullptr;
    CGFloat rowHeight = 44;
    std::vector<Owned<UITableViewCell>> cells;
    NSInteger selectedRow = NSNotFound;
    bool needsReload = true;
};

/// A table bounces however few rows it has.
UITableView* initWithFrame(UITableView* self, SEL, CGRect frame)
{
    superOf<TableViewState, "initWithFrame:", UITableView*>(self, frame);
    self->setAlwaysBounceVertical(true);
    return self;
}

UITableViewCell* cellAt(UITableView* self, NSInteger row)
{
    const auto& cells = ivarsOf<TableViewState>(self).cells;
    return row >= 0 && row < std::ssize(cells) ? cells[static_cast<std::size_t>(row)].get() : nullptr;
}

/// The row at a place of the contents, whether there is one or not.
NSInteger rowAt(UITableView* self, CGPoint point)
{
    return static_cast<NSInteger>(std::floor(point.y / self->rowHeight()));
}

/// The rows are asked for again at the next layout.
void reloadData(UITableView* self, SEL)
{
    ivarsOf<TableViewState>(self).needsReload = true;
    self->setNeedsLayout();
}

/// The delegate hears of each row.
void takeRowsAway(UITableView* self)
{
    auto& table = ivarsOf<TableViewState>(self);
    const bool isHeard = table.delegate->respondsToSelector(selector<"tableView:didEndDisplayingCell:forRowAtIndexPath:">());
    NSInteger row = 0;
    for (UITableViewCell* cell : table.cells) {
        cell->removeFromSuperview();
        if (isHeard)
            send<"tableView:didEndDisplayingCell:forRowAtIndexPath:">(table.delegate, self, cell,
                                                                      NSIndexPath::indexPathForRow_inSection(row, 0));
        ++row;
    }
    table.cells.clear();
}

/// Its rows go with a table.
void dealloc(UITableView* self, SEL)
{
    takeRowsAway(self);
    superOf<TableViewState, "dealloc">(self);
}

void reload(UITableView* self)
{
    auto& table = ivarsOf<TableViewState>(self);
    table.needsReload = false;
    table.selectedRow = NSNotFound;
    takeRowsAway(self);
    const auto rows = send<"tableView:numberOfRowsInSection:", NSInteger>(table.dataSource, self, NSInteger{0});
    for (NSInteger row = 0; row < rows; ++row) {
        auto* const cell = send<"tableView:cellForRowAtIndexPath:", UITableViewCell*>(
            table.dataSource, self, NSIndexPath::indexPathForRow_inSection(row, 0));
        table.cells.emplace_back(cell);
        self->addSubview(cell);
    }
    self->setContentSize({self->bounds().size.width, static_cast<CGFloat>(rows) * table.rowHeight});
}

NSIndexPath* indexPathForRow_inSection(Class cls, SEL, NSInteger row, NSInteger section)
{
    const NSUInteger indexes[] = {static_cast<NSUInteger>(section), static_cast<NSUInteger>(row)};
    return send<"indexPathWithIndexes:length:", NSIndexPath*>(cls, indexes, NSUInteger{2});
}

/// One of the two parts of a row's place.
template <NSUInteger Position>
NSInteger indexAt(NSIndexPath* self, SEL)
{
    return static_cast<NSInteger>(send<"indexAtPosition:", NSUInteger>(self, Position));
}

void layoutSubviews(UITableView* self, SEL)
{
    auto& table = ivarsOf<TableViewState>(self);
    if (table.needsReload)
        reload(self);
    CGFloat y = 0;
    for (UITableViewCell* cell : table.cells) {
        cell->setFrame(CGRect::make(0, y, self->bounds().size.width, table.rowHeight));
        y += table.rowHeight;
    }
}

NSArray* visibleCells(UITableView* self, SEL)
{
    return toNSArray(ivarsOf<TableViewState>(self).cells);
}

NSInteger touchedRow(UITableView* self, NSSet* touches)
{
    return rowAt(self, touches->anyObject<UITouch>()->locationInView(self));
}

void endHighlight(UITableView* self)
{
    for (UITableViewCell* cell : ivarsOf<TableViewState>(self).cells)
        cell->setHighlighted(false);
}

void touchesBegan_withEvent(UITableView* self, SEL, NSSet* touches, UIEvent*)
{
    cellAt(self, touchedRow(self, touches))->setHighlighted(true);
}

void touchesCancelled_withEvent(UITableView* self, SEL, NSSet*, UIEvent*)
{
    endHighlight(self);
}

/// The row under the lifted finger is selected; the one that was is no more.
void touchesEnded_withEvent(UITableView* self, SEL, NSSet* touches, UIEvent*)
{
    endHighlight(self);
    auto& table = ivarsOf<TableViewState>(self);
    const NSInteger row = touchedRow(self, touches);
    if (cellAt(self, row) == nullptr)
        return;
    cellAt(self, table.selectedRow)->setSelected(false);
    cellAt(self, row)->setSelected(true);
    table.selectedRow = row;
}

} // namespace

void registerUITableView()
{
    SimulatedClass<TableViewState>("UITableView", "UIScrollView")
        .method<"initWithFrame:">(initWithFrame)
        .method<"dealloc">(dealloc)
        .property<&TableViewState::dataSource>("dataSource")
        .property<&TableViewState::delegate>("delegate")
        .property<&TableViewState::rowHeight>("rowHeight")
        .readOnly<&TableViewState::selectedRow>("simulator_selectedRow")
        .method<"reloadData">(reloadData)
        .method<"layoutSubviews">(layoutSubviews)
        .method<"visibleCells">(visibleCells)
        .method<"touchesBegan:withEvent:">(touchesBegan_withEvent)
        .method<"touchesEnded:withEvent:">(touchesEnded_withEvent)
        .method<"touchesCancelled:withEvent:">(touchesCancelled_withEvent)
        .registerClass();
    const Class indexPath = classNamed<"NSIndexPath">();
    addMethod<"indexPathForRow:inSection:">(metaclassOf(indexPath), &indexPathForRow_inSection);
    addMethod<"section">(indexPath, &indexAt<0>);
    addMethod<"row">(indexPath, &indexAt<1>);
}

} // namespace simulator
