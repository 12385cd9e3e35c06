#include "tests/support/strip.hpp"

#include <stdexcept>

#include "tests/support/Phone.hpp"

Owned<UIScrollView> strip::make(CGRect frame)
{
    return adopt(send<"alloc", UIScrollView*>(objc_getClass("SVAppsView"))->initWithFrame(frame));
}

UIImageView* strip::iconOf(UIView* self, const std::string& identifier)
{
    return icons(self)->objectForKey<UIImageView>(text(identifier));
}

UIImageView* strip::badgeOf(UIView* self, const std::string& identifier)
{
    NSArray* const badges = iconOf(self, identifier)->subviews();
    if (badges->count() != 1)
        throw std::logic_error("an icon has one badge");
    return badges->objectAtIndex<UIImageView>(0);
}
