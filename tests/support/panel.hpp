#pragma once

#include "platform/Foundation/NSDictionary.hpp"
#include "platform/UIKit/UIImageView.hpp"
#include "platform/UIKit/UILabel.hpp"
#include "platform/UIKit/UIScrollView.hpp"
#include "platform/UIKit/_UIBackdropView.hpp"
#include "platform/runtime/instance_variable.hpp"
#include "tests/support/Phone.hpp"
#include "tests/support/Picture.hpp"

/// The panel as another extension finds it: its views by the names under which the library exports them, SpringBoard's own
/// by the names of its instance variables, the strip's methods by their selectors.

/// A phone on a spring morning: half past eight on 5 March 2014 in universal time, 21 degrees Celsius and cloudy. Nothing is
/// injected yet.
class MorningPhone : public Phone {
public:
    explicit MorningPhone(const simulator::ScreenSize& screen = {});
};

/// The same with the library in it, not locked yet.
class InjectedMorningPhone : public MorningPhone {
public:
    explicit InjectedMorningPhone(const simulator::ScreenSize& screen = {}) : MorningPhone(screen) { inject(); }
};

/// The same with its lock screen.
class LockedPhone : public InjectedMorningPhone {
public:
    explicit LockedPhone(const simulator::ScreenSize& screen = {}) : InjectedMorningPhone(screen) { simulator::lockScreen(); }
};

/// What the weather sentence reads on that morning.
inline constexpr const char* morningWeather = "It's 21° C and Cloudy.";

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

/// A strip and what is in it.
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

Owned<NSMutableArray> arrayOf(const std::vector<NSObject*>& objects);

/// A notification of that application.
Owned<NSObject> notification(const std::string& bundleIdentifier);
/// Adds one to the list of the lock screen.
void notify(const std::string& bundleIdentifier);

NSObject* newObject(const char* className);

/// From now on every text that is drawn into an image is noted.
void noteDrawnTexts();
std::vector<std::string>& drawnTexts();

/// What a view shows when its image is that.
Picture shown(UIImageView* view);

/// The screen, as a PNG file shows it.
Picture screenshot();

/// The picture in a PNG file.
Picture pictureIn(const std::filesystem::path& file);

/// Puts an image's pixels into a PNG file.
void writePicture(UIImage* image, const std::filesystem::path& file);
