#pragma once

#include "appstrip/SVAppsView.hpp"
#include "platform/SpringBoard/SBLockScreen.hpp"
#include "platform/UIKit/UIImageView.hpp"
#include "platform/UIKit/UILabel.hpp"
#include "platform/UIKit/_UIBackdropView.hpp"
#include "platform/runtime/Strong.hpp"
#include "platform/runtime/instance_variable.hpp"
#include "text/SVWidget.hpp"

/// The panel's views. There is one record per process: a newer list view's panel takes its place, and nothing is cleared.

#pragma GCC visibility push(default)
extern "C" {

/// The greeting.
extern Strong<UILabel> headlineLabel;
/// The weather sentence, or why there is something new.
extern Strong<UILabel> subtitleLabel;
/// Left and right under the lines; a tap opens the pane.
extern Strong<UIImageView> calendarIconView;
extern Strong<UIImageView> notificationIconView;
/// Joins the tapped icon to its pane.
extern Strong<UIView> tabView;
/// Holds the widget.
extern Strong<UIView> calendarPaneView;
extern Strong<_UIBackdropView> calendarPaneBackdrop;
extern Strong<SVWidget> widgetView;
/// Holds SpringBoard's own table.
extern Strong<UIView> notificationPaneView;
extern Strong<_UIBackdropView> notificationPaneBackdrop;
extern Strong<SVAppsView> appsView;
/// The newest one that SpringBoard has made.
extern Strong<_NowPlayingArtView> nowPlayingArtView;
}
#pragma GCC visibility pop

/// Write the greeting for the time of day, and the weather sentence, into the lines that are in the record once the text is made.
void showGreeting();
void showWeather();

/// SpringBoard's private variables of the list view, read by name at each use.
inline UIView* containerView(SBLockScreenNotificationListView* list)
{
    return instanceVariable<UIView>(list, "_containerView");
}

inline UIView* topPocketView(SBLockScreenNotificationListView* list)
{
    return instanceVariable<UIView>(list, "_topPocketView");
}

inline UIView* bottomPocketView(SBLockScreenNotificationListView* list)
{
    return instanceVariable<UIView>(list, "_bottomPocketView");
}

inline UIView* tableView(SBLockScreenNotificationListView* list)
{
    return instanceVariable<UIView>(list, "_tableView");
}

/// The frames, in the container's coordinates, that the two icons and the strip have at construction and at every layout.
inline constexpr CGFloat iconSide = 32;
inline constexpr CGFloat iconMargin = 22;
inline constexpr CGRect calendarIconFrame = CGRect::make(iconMargin, 87, iconSide, iconSide);

constexpr CGRect notificationIconFrame(CGFloat width)
{
    return CGRect::make(width + -iconSide + -iconMargin, 87, iconSide, iconSide);
}

constexpr CGRect appsViewFrame(CGFloat width)
{
    return CGRect::make(76, 100, width - 152, 100);
}
