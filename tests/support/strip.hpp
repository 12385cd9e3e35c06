#pragma once

#include <string>

#include "platform/Foundation/NSDictionary.hpp"
#include "platform/UIKit/UIImageView.hpp"
#include "platform/UIKit/UIScrollView.hpp"
#include "platform/runtime/Owned.hpp"

/// The strip of icons, its methods by their selectors.
namespace strip {

Owned<UIScrollView> make(CGRect frame = CGRect::make(0, 0, 168, 100));

inline NSMutableArray* items(UIView* self)
{
    return send<"items", NSMutableArray*>(self);
}
inline void setItems(UIView* self, NSMutableArray* items)
{
    send<"setItems:">(self, items);
}
inline NSMutableDictionary* icons(UIView* self)
{
    return send<"iconImgViews", NSMutableDictionary*>(self);
}
inline NSString* identifier(UIView* self, NSObject* item)
{
    return send<"identifierForListItem:", NSString*>(self, item);
}
inline UIImage* icon(UIView* self, NSObject* item)
{
    return send<"iconForListItem:", UIImage*>(self, item);
}
inline void add(UIView* self, NSObject* item, long count = 0)
{
    send<"addIconFor:andBadgeCount:">(self, item, count);
}
inline void show(UIView* self)
{
    send<"showIcons">(self);
}
inline void clear(UIView* self)
{
    send<"clearAll">(self);
}

/// The icon of that identifier, nil when there is none, and the badge on it.
UIImageView* iconOf(UIView* self, const std::string& identifier);
UIImageView* badgeOf(UIView* self, const std::string& identifier);

} // namespace strip
