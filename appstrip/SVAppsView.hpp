#pragma once

#include "platform/Foundation/NSArray.hpp"
#include "platform/Foundation/NSDictionary.hpp"
#include "platform/UIKit/UIImageView.hpp"
#include "platform/UIKit/UIScrollView.hpp"
#include "platform/runtime/ClassBuilder.hpp"

class NSString;

/// The strip of the applications that have notifications in the lock screen's list: one icon each, with a badge that counts
/// them.
class SVAppsView : public UIScrollView {
public:
    static SVAppsView* alloc() { return send<"alloc", SVAppsView*>(classNamed<"SVAppsView">()); }
    SVAppsView* initWithFrame(CGRect frame) { return send<"initWithFrame:", SVAppsView*>(this, frame); }

    /// The lock screen's own list, not a copy; nil at first.
    NSMutableArray* items() const { return send<"items", NSMutableArray*>(this); }
    void setItems(NSMutableArray* items) { send<"setItems:">(this, items); }
    /// From an application's identifier to its icon's view.
    NSMutableDictionary* iconImgViews() const { return send<"iconImgViews", NSMutableDictionary*>(this); }

    /// What an item is grouped by: its application, card or title; "noIdentifier" for an item of an unknown kind. Nil for a
    /// notification that names no application.
    NSString* identifierForListItem(id item) const { return send<"identifierForListItem:", NSString*>(this, item); }
    /// May be nil.
    UIImage* iconForListItem(id item) const { return send<"iconForListItem:", UIImage*>(this, item); }

    /// Makes the icon of the item's application anew. Its badge shows `count` and one for each item in the list that has the
    /// same identifier. showIcons puts it into the strip.
    void addIconFor_andBadgeCount(id item, long count) { send<"addIconFor:andBadgeCount:">(this, item, count); }
    /// Lays the icons out in a row.
    void showIcons() { send<"showIcons">(this); }
    void clearAll() { send<"clearAll">(this); }
};

struct SVAppsViewIvars {
    Strong<NSMutableArray> _items;
    Strong<NSMutableDictionary> _iconImgViews;
};

inline SVAppsViewIvars& ivarsOf(SVAppsView* view)
{
    return ivarsOf<SVAppsViewIvars>(view);
}

/// Makes the class known to the runtime. To be called once.
void registerSVAppsView();
