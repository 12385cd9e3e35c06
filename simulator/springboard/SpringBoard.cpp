#include "simulator/springboard/SpringBoard.hpp"

#include <utility>

#include "platform/UIKit/UIApplication.hpp"
#include "platform/UIKit/UIScreen.hpp"
#include "platform/UIKit/UIWindow.hpp"
#include "simulator/foundation/foundation.hpp"
#include "simulator/graphics/Bitmap.hpp"
#include "simulator/quartzcore/compositor.hpp"
#include "simulator/quartzcore/damage.hpp"
#include "simulator/quartzcore/quartzcore.hpp"
#include "simulator/runtime/SimulatedClass.hpp"
#include "simulator/services/services.hpp"
#include "simulator/springboard/springboard_classes.hpp"
#include "simulator/uikit/main_screen.hpp"
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

void drawScreen()
{
    UIWindow* const window = desk().window;
    window->layoutIfNeeded();
    if (!takeScreenDamage() && desk().picture != nullptr)
        return;
    desk().picture = Bitmap::make(window->bounds().size, UIScreen::mainScreen()->scale(), true);
    drawLayerTree(desk().picture->context().get(), window->layer());
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
    registerWeather();
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
    Desk& built = desk();
    send<"prepareForTeardown">(built.listController.get());
    built.lockScreenView->removeFromSuperview();

    const CGRect bounds = built.window->bounds();
    built.lockScreenView =
        adopt(static_cast<SBLockScreenView*>(send<"alloc", UIView*>(classNamed<"SBLockScreenView">())->initWithFrame(bounds)));
    built.listView = adopt(static_cast<SBLockScreenNotificationListView*>(
        send<"alloc", UIView*>(classNamed<"SBLockScreenNotificationListView">())->initWithFrame(bounds)));
    built.listController = adopt(send<"initWithListView:", SBLockScreenNotificationListController*>(
        send<"alloc", id>(classNamed<"SBLockScreenNotificationListController">()), built.listView.get()));
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
    send<"addItem:">(desk().listController.get(), item);
}

void setRelaunchHandler(std::function<void()> handler)
{
    desk().relaunch = std::move(handler);
}

void writeScreenshot(const std::string& file)
{
    drawScreen();
    desk().picture->writePNG(file);
}

} // namespace simulator
