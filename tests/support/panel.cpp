#include "tests/support/panel.hpp"

#include <cstdlib>
#include <stdexcept>

#include "platform/UIKit/UIWindow.hpp"
#include "simulator/runtime/SimulatedClass.hpp"
#include "simulator/services/weather.hpp"
#include "simulator/uikit/touch_input.hpp"

namespace {

const simulator::ScreenSize& inUniversalTime(const simulator::ScreenSize& screen)
{
    ::setenv("TZ", "UTC", 1);
    return screen;
}

void (*drawInRect)(NSString*, SEL, CGRect, NSDictionary*);

} // namespace

MorningPhone::MorningPhone(const simulator::ScreenSize& screen) : Phone(inUniversalTime(screen))
{
    freezeClockAtUniversalTime("2014-03-05T08:30:00");
    simulator::setLocalWeather(simulator::LocalWeather{"21", 26});
}

void panel::layOut()
{
    simulator::listView()->setNeedsLayout();
    simulator::listView()->layoutIfNeeded();
}

Owned<UIView> panel::newListView(CGRect frame)
{
    return adopt(send<"alloc", UIView*>(objc_getClass("SBLockScreenNotificationListView"))->initWithFrame(frame));
}

void panel::tap(UIView* view, int times)
{
    const CGRect bounds = view->bounds();
    const CGPoint middle{CGRectGetMidX(bounds), CGRectGetMidY(bounds)};
    UIWindow* const window = simulator::springBoardWindow();
    simulator::tap(window, view->convertPoint_toView(middle, window), times);
}

Owned<UIScrollView> strip::make(CGRect frame)
{
    return adopt(send<"alloc", UIScrollView*>(objc_getClass("SVAppsView"))->initWithFrame(frame));
}

UIImageView* strip::iconOf(UIView* self, const std::string& identifier)
{
    return static_cast<UIImageView*>(icons(self)->objectForKey(text(identifier)));
}

UIImageView* strip::badgeOf(UIView* self, const std::string& identifier)
{
    NSArray* const badges = iconOf(self, identifier)->subviews();
    if (badges->count() != 1)
        throw std::logic_error("an icon has one badge");
    return static_cast<UIImageView*>(badges->objectAtIndex(0));
}

Owned<NSMutableArray> arrayOf(const std::vector<NSObject*>& objects)
{
    Owned<NSMutableArray> array = adopt(NSMutableArray::alloc()->init());
    for (NSObject* object : objects)
        array->addObject(object);
    return array;
}

Owned<NSObject> notification(const std::string& bundleIdentifier)
{
    return simulator::bulletinItem(text(bundleIdentifier), nullptr, nullptr);
}

void notify(const std::string& bundleIdentifier)
{
    simulator::addListItem(notification(bundleIdentifier));
}

NSObject* newObject(const char* className)
{
    return send<"new", NSObject*>(objc_getClass(className));
}

void noteDrawnTexts()
{
    drawInRect = simulator::replaceMethod<"drawInRect:withAttributes:">(
        objc_getClass("NSString"), +[](NSString* self, SEL message, CGRect rect, NSDictionary* attributes) {
            drawnTexts().push_back(textOf(self));
            drawInRect(self, message, rect, attributes);
        });
}

std::vector<std::string>& drawnTexts()
{
    static auto& noted = *new std::vector<std::string>;
    return noted;
}

Picture shown(UIImageView* view)
{
    return view->image() == nullptr ? Picture{} : pictureOf(view->image());
}

Picture screenshot()
{
    return pictureOf(simulator::imageWithBitmap(simulator::screenPicture()));
}

void writePicture(UIImage* image, const std::filesystem::path& file)
{
    ivarsOf<simulator::ImageState>(image).bitmap->writePNG(file);
}
