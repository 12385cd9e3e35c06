#pragma once

#include "platform/Foundation/NSArray.hpp"
#include "platform/Foundation/NSString.hpp"
#include "platform/UIKit/UIImageView.hpp"
#include "platform/UIKit/UILabel.hpp"
#include "platform/UIKit/UIScrollView.hpp"

/// One row of a table.
class UITableViewCell : public UIView {
public:
    void setHighlighted(bool highlighted) { send<"setHighlighted:">(this, BOOL{highlighted}); }
    void setSelected(bool selected) { send<"setSelected:">(this, BOOL{selected}); }
};

/// The place of a row in a table: UIKit's addition to Foundation's class.
class NSIndexPath : public NSObject {
public:
    static NSIndexPath* indexPathForRow_inSection(NSInteger row, NSInteger section)
    {
        return send<"indexPathForRow:inSection:", NSIndexPath*>(classNamed<"NSIndexPath">(), row, section);
    }
    NSInteger row() const { return send<"row", NSInteger>(this); }
    NSInteger section() const { return send<"section", NSInteger>(this); }
};

/// A list of rows that scrolls. Its data source answers tableView:numberOfRowsInSection: and tableView:cellForRowAtIndexPath:.
class UITableView : public UIScrollView {
public:
    static UITableView* alloc() { return send<"alloc", UITableView*>(classNamed<"UITableView">()); }
    UITableView* initWithFrame(CGRect frame) { return send<"initWithFrame:", UITableView*>(this, frame); }

    void setDataSource(id source) { send<"setDataSource:">(this, source); }
    void setRowHeight(CGFloat height) { send<"setRowHeight:">(this, height); }
    CGFloat rowHeight() const { return send<"rowHeight", CGFloat>(this); }
    void reloadData() { send<"reloadData">(this); }
    NSArray* visibleCells() const { return send<"visibleCells", NSArray*>(this); }
};
