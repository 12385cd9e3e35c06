#include "simulator/preferences/Settings.hpp"

#include <stdexcept>

#include "platform/UIKit/UILabel.hpp"
#include "platform/UIKit/UIScreen.hpp"
#include "simulator/foundation/foundation.hpp"
#include "simulator/foundation/phone_root.hpp"
#include "simulator/foundation/property_lists.hpp"
#include "simulator/foundation/strings.hpp"
#include "simulator/loader/Image.hpp"
#include "simulator/preferences/preferences.hpp"
#include "simulator/quartzcore/compositor.hpp"
#include "simulator/quartzcore/quartzcore.hpp"
#include "simulator/uikit/UIScreen.hpp"
#include "simulator/uikit/UIWindow.hpp"
#include "simulator/uikit/uikit.hpp"

namespace simulator {

namespace {

namespace fs = std::filesystem;

/// Of the status and of the page's title.
constexpr CGFloat statusBarHeight = 20;
constexpr CGFloat barHeight = 64;

/// What the application shows. It lives as long as the process.
struct Application {
    UIWindow* window = nullptr;
    UILabel* title = nullptr;
    Owned<PSListController> page;
};

Application& application()
{
    static auto& built = *new Application;
    return built;
}

UILabel* addBarText(UIView* bar, NSString* text, UIFont* font, UIColor* color, NSTextAlignment alignment)
{
    constexpr CGFloat margin = 8;
    const CGFloat width = bar->bounds().size.width - 2 * margin;
    UILabel* const label =
        UILabel::alloc()->initWithFrame(CGRect::make(margin, statusBarHeight, width, barHeight - statusBarHeight));
    label->setText(text);
    label->setFont(font);
    label->setTextColor(color);
    label->setTextAlignment(alignment);
    bar->addSubview(label);
    return label;
}

void addBar()
{
    Application& built = application();
    const CGFloat width = built.window->bounds().size.width;
    const auto bar = adopt(UIView::alloc()->initWithFrame(CGRect::make(0, 0, width, barHeight)));
    bar->setBackgroundColor(UIColor::colorWithWhite_alpha(0.973, 1));
    addBarText(bar, constantString<"‹ Settings">(), UIFont::systemFontOfSize(17),
               UIColor::colorWithRed_green_blue_alpha(0, 0.478, 1, 1), NSTextAlignmentLeft);
    built.title = addBarText(bar, nullptr, UIFont::boldSystemFontOfSize(17), UIColor::blackColor(), NSTextAlignmentCenter);
    const auto edge = adopt(UIView::alloc()->initWithFrame(CGRect::make(0, barHeight - 0.5, width, 0.5)));
    edge->setBackgroundColor(UIColor::colorWithWhite_alpha(0.7, 1));
    bar->addSubview(edge);
    built.window->addSubview(bar);
}

/// Loads the bundle's code and gives the class that it names for its page.
Class controllerOf(const std::string& bundle)
{
    const fs::path folder = onThisMachine("/Library/PreferenceBundles/" + bundle + ".bundle");
    NSDictionary* const description = readPropertyList(folder / "Info.plist");
    const std::string executable = toUTF8(valueOfClass<NSString>(description, constantString<"CFBundleExecutable">()));
    const std::string name = toUTF8(valueOfClass<NSString>(description, constantString<"NSPrincipalClass">()));
    if (executable.empty() || name.empty())
        throw std::runtime_error(folder.native() + " is no bundle of a page");
    openImage(folder / executable);
    const Class cls = objc_getClass(name.c_str());
    if (cls == nullptr)
        throw std::runtime_error(folder.native() + " has no class " + name);
    return cls;
}

Owned<PSListController> controllerFor(NSDictionary* description, NSDictionary* entry)
{
    if (auto* const bundle = valueOfClass<NSString>(entry, constantString<"bundle">()))
        return adopt(send<"new", PSListController*>(controllerOf(toUTF8(bundle))));
    Owned<PSListController> page = adopt(send<"new", PSListController*>(classNamed<"PSListController">()));
    auto* const items = valueOfClass<NSArray>(description, constantString<"items">());
    send<"setSpecifiers:">(page.get(), specifiersOfItems(items, page, nullptr));
    return page;
}

} // namespace

void launchSettings(const ScreenSize& screen)
{
    prepareFoundation();
    registerQuartzCore();
    registerUIKit();
    registerPreferences();

    setMainScreen({screen.width, screen.height}, static_cast<CGFloat>(screen.scale));
    application().window = UIWindow::alloc()->initWithFrame(UIScreen::mainScreen()->bounds());
    setKeyWindow(application().window);
    addBar();
}

UIWindow* settingsWindow()
{
    return application().window;
}

PSListController* openPage(const std::string& name)
{
    const fs::path file = onThisMachine("/Library/PreferenceLoader/Preferences/" + name + ".plist");
    NSDictionary* const description = readPropertyList(file);
    auto* const entry = valueOfClass<NSDictionary>(description, constantString<"entry">());
    if (entry == nullptr)
        throw std::runtime_error(file.native() + " is no entry of the Settings");

    Application& built = application();
    if (built.page != nullptr)
        built.page->view()->removeFromSuperview();
    built.page = controllerFor(description, entry);
    built.title->setText(valueOfClass<NSString>(entry, constantString<"label">()));
    const CGSize size = built.window->bounds().size;
    built.page->view()->setFrame(CGRect::make(0, barHeight, size.width, size.height - barHeight));
    built.window->insertSubview_atIndex(built.page->view(), 0);
    built.window->layoutIfNeeded();
    return built.page;
}

std::shared_ptr<Bitmap> settingsPicture()
{
    application().window->layoutIfNeeded();
    auto picture = Bitmap::make(UIScreen::mainScreen()->bounds().size, UIScreen::mainScreen()->scale(), true);
    drawLayerTree(picture->context().get(), application().window->layer());
    return picture;
}

} // namespace simulator
