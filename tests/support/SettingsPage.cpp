#include "tests/support/SettingsPage.hpp"

#include <cstdlib>
#include <stdexcept>

#include "platform/UIKit/UIWindow.hpp"
#include "simulator/foundation/phone_root.hpp"
#include "simulator/foundation/phone_system.hpp"
#include "simulator/foundation/system_log.hpp"
#include "simulator/preferences/Settings.hpp"
#include "simulator/uikit/UIAlertView.hpp"
#include "simulator/uikit/UIKeyboard.hpp"
#include "simulator/uikit/touch_input.hpp"

namespace {

void tapView(UIView* view)
{
    if (view == nullptr)
        throw std::logic_error("nothing is there to tap");
    UIWindow* const window = simulator::settingsWindow();
    window->layoutIfNeeded();
    const CGSize size = view->bounds().size;
    simulator::tap(window, view->convertPoint_toView({size.width / 2, size.height / 2}, window), 1);
    window->layoutIfNeeded();
}

} // namespace

SettingsPage::SettingsPage(const simulator::ScreenSize& screen)
{
    simulator::setPhoneRoot(tree_.root());
    simulator::openSystemLog();
    if (const char* const version = std::getenv("SOLVANE_SYSTEM"))
        simulator::choosePhoneSystem(simulator::systemOfVersion(version).value());
    simulator::launchSettings(screen);
}

void SettingsPage::open(const std::string& entry)
{
    entry_ = entry;
    page_ = simulator::openPage(entry);
}

std::string SettingsPage::shown(const std::string& identifier) const
{
    return simulator::shownValue(simulator::cellOf(page_, text(identifier)));
}

void SettingsPage::tapCell(const std::string& identifier) const
{
    PSTableCell* const cell = simulator::cellOf(page_, text(identifier));
    UITextField* const field = simulator::fieldOf(cell);
    tapView(field == nullptr ? static_cast<UIView*>(cell) : field);
}

void SettingsPage::type(const std::string& letters) const
{
    for (const char letter : letters)
        tapKey(letter == ' ' ? "space" : std::string(1, letter));
}

void SettingsPage::tapKey(const std::string& key) const
{
    tapView(simulator::keyBearing(key));
}

void SettingsPage::tapButton(const std::string& title) const
{
    for (UIButton* button : simulator::buttonsOf(simulator::shownAlerts().back())) {
        if (textOf(button->currentTitle()) == title)
            return tapView(button);
    }
    throw std::logic_error("the alert has no button " + title);
}

void SettingsPage::enterName(const std::string& letters) const
{
    tapCell("Name");
    while (!shown("Name").empty())
        tapKey("delete");
    type(letters);
    tapKey("return");
}

std::vector<std::string> SettingsPage::alerts()
{
    std::vector<std::string> texts;
    for (UIAlertView* alert : simulator::shownAlerts())
        texts.push_back(textOf(alert->title()) + ": " + textOf(alert->message()));
    return texts;
}
