#include "simulator/springboard/SpringBoard.hpp"

#include <cmath>
#include <utility>

#include "platform/Foundation/NSDate.hpp"
#include "platform/UIKit/UIApplication.hpp"
#include "platform/UIKit/UIScreen.hpp"
#include "platform/UIKit/UIWindow.hpp"
#include "platform/runtime/AutoreleasePool.hpp"
#include "simulator/foundation/foundation.hpp"
#include "simulator/graphics/Bitmap.hpp"
#include "simulator/quartzcore/compositor.hpp"
#include "simulator/quartzcore/damage.hpp"
#include "simulator/quartzcore/quartzcore.hpp"
#include "simulator/runtime/SimulatedClass.hpp"
#include "simulator/services/services.hpp"
#include "simulator/springboard/springboard_classes.hpp"
#include "simulator/uikit/UIScreen.hpp"
#include "simulator/uikit/uikit.hpp"

namespace simulator {

namespace {

struct SpringBoardState {};

/// What SpringBoard has built. It lives as long as the process.
struct Desk {
    UIWindow* window = nullptr;
    Owned<SBLockScreenView> lockScreenView;
    Owned<SBLockScreenNotificationListController> listController;
    Owned<SBLockScreenNotificationListView> listView;
    std::function<void()> relaunch;
    std::shared_ptr<Bitmap> picture;
    /// The minute, since 1970, that the clock was last laid out for.
    double minute = 0;
};

Desk& desk()
{
    static auto& built = *new Desk;
    return built;
}

void relaunchSpringBoardNow(UIApplication*, SEL)
{
    if (desk().relaunch)
        desk().relaunch();
}

/// Nothing is left when the next lock screen is made but what others keep.
void unlock()
{
    const AutoreleasePool pool;
    Desk& built = desk();
    built.listController->prepareForTeardown();
    built.lockScreenView->removeFromSuperview();
    built.lockScreenView = nullptr;
    built.listController = nullptr;
    built.listView = nullptr;
}

/// The stock clock shows minutes.
void followClock()
{
    constexpr double secondsPerMinute = 60;
    const double minute = std::floor(NSDate::date()->timeIntervalSince1970() / secondsPerMinute);
    if (std::exchange(desk().minute, minute) != minute)
        desk().lockScreenView->setNeedsLayout();
}

} // namespace

void registerSpringBoard()
{
    SimulatedClass<SpringBoardState>("SpringBoard", "UIApplication")
        .method<"_relaunchSpringBoardNow">(relaunchSpringBoardNow)
        .registerClass();
}

void launchSpringBoard(const ScreenSize& screen)
{
    prepareFoundation();
    registerQuartzCore();
    registerUIKit();
    registerEventKit();
    registerSpringBoardClasses();

    setMainScreen({screen.width, screen.height}, screen.scale);
    desk().window = UIWindow::alloc()->initWithFrame(UIScreen::mainScreen()->bounds());
    desk().window->setBackgroundColor(UIColor::blackColor());
}

UIWindow* springBoardWindow()
{
    return desk().window;
}

void lockScreen()
{
    unlock();
    Desk& built = desk();
    const CGRect bounds = built.window->bounds();
    built.lockScreenView =
        adopt(static_cast<SBLockScreenView*>(send<"alloc", UIView*>(classNamed<"SBLockScreenView">())->initWithFrame(bounds)));
    built.listController = adopt(static_cast<SBLockScreenNotificationListController*>(
        send<"alloc", UIViewController*>(classNamed<"SBLockScreenNotificationListController">())
            ->initWithNibName_bundle(nullptr, nullptr)));
    built.listView = static_cast<SBLockScreenNotificationListView*>(built.listController->view());
    built.lockScreenView->addSubview(built.listView);
    built.window->insertSubview_atIndex(built.lockScreenView, 0);
    built.window->layoutIfNeeded();
}

SBLockScreenView* lockScreenView()
{
    return desk().lockScreenView;
}

SBLockScreenNotificationListController* listController()
{
    return desk().listController;
}

SBLockScreenNotificationListView* listView()
{
    return desk().listView;
}

void addListItem(NSObject* item)
{
    desk().listController->_updateModelAndViewForAdditionOfItem(item);
}

void setRelaunchHandler(std::function<void()> handler)
{
    desk().relaunch = std::move(handler);
}

std::shared_ptr<Bitmap> screenPicture()
{
    UIWindow* const window = desk().window;
    followClock();
    window->layoutIfNeeded();
    if (takeScreenDamage() || desk().picture == nullptr) {
        desk().picture = Bitmap::make(UIScreen::mainScreen()->bounds().size, UIScreen::mainScreen()->scale(), true);
        drawLayerTree(desk().picture->context().get(), window->layer());
    }
    return desk().picture;
}

} // namespace simulator
