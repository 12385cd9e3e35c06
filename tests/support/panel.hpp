#pragma once

#include "platform/UIKit/UIImageView.hpp"
#include "platform/UIKit/UILabel.hpp"
#include "platform/UIKit/UIScrollView.hpp"
#include "platform/runtime/Owned.hpp"
#include "platform/runtime/instance_variable.hpp"
#include "tests/support/Phone.hpp"

/// The panel as another extension finds it: its views by the names under which the library exports them, SpringBoard's own by
/// the names of their instance variables.
namespace panel {

inline UILabel* headline()
{
    return exportedVariable<UILabel>("headlineLabel");
}
inline UILabel* subtitle()
{
    return exportedVariable<UILabel>("subtitleLabel");
}
inline UIImageView* calendarIcon()
{
    return exportedVariable<UIImageView>("calendarIconView");
}
inline UIImageView* notificationIcon()
{
    return exportedVariable<UIImageView>("notificationIconView");
}
inline UIView* calendarPane()
{
    return exportedVariable<UIView>("calendarPaneView");
}
inline UIView* notificationPane()
{
    return exportedVariable<UIView>("notificationPaneView");
}
inline UIView* tab()
{
    return exportedVariable<UIView>("tabView");
}
inline UIView* widget()
{
    return exportedVariable<UIView>("widgetView");
}
inline UIScrollView* strip()
{
    return exportedVariable<UIScrollView>("appsView");
}

/// SpringBoard's own, of the list view of the lock screen or of another one.
inline UIView* container(UIView* list = simulator::listView())
{
    return instanceVariable<UIView>(list, "_containerView");
}
inline UIView* table(UIView* list = simulator::listView())
{
    return instanceVariable<UIView>(list, "_tableView");
}
inline UIView* topPocket(UIView* list = simulator::listView())
{
    return instanceVariable<UIView>(list, "_topPocketView");
}
inline UIView* bottomPocket(UIView* list = simulator::listView())
{
    return instanceVariable<UIView>(list, "_bottomPocketView");
}

/// One pass, whether the list view asked for it or not.
void layOut();

/// A list view that SpringBoard has made and not laid out.
Owned<UIView> newListView(CGRect frame = CGRect::make(0, 0, 320, 568));

void tap(UIView* view, int times = 1);

} // namespace panel
