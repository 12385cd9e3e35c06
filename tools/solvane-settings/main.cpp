#include <cstdio>
#include <exception>
#include <iostream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "platform/runtime/AutoreleasePool.hpp"
#include "simulator/foundation/phone_root.hpp"
#include "simulator/foundation/strings.hpp"
#include "simulator/foundation/system_log.hpp"
#include "simulator/preferences/PSListController.hpp"
#include "simulator/preferences/Settings.hpp"
#include "simulator/runtime/faults.hpp"
#include "simulator/services/darwin_notifications.hpp"
#include "simulator/uikit/UIAlertView.hpp"
#include "tools/solvane-settings/options.hpp"

/// `solvane-settings --root DIR ...` is the phone's Settings on that root folder: it opens the page that is installed there and
/// does on it what a person would.

namespace simulator {

namespace {

/// What a person would see went wrong, as it happens.
class Observations {
public:
    Observations()
    {
        setPostingObserver([this](const std::string& name, const Posting& posting) {
            if (posting.reached == 0 && posting.failures.empty())
                std::cerr
                    << "solvane-settings: no SpringBoard runs on this root: the next one reads the settings when it starts\n";
            for (const std::string& failure : posting.failures)
                std::cerr << "solvane-settings: not everybody was told " << name << ": " << failure << '\n';
            allWasTold_ = allWasTold_ && posting.failures.empty();
        });
    }
    Observations(const Observations&) = delete;
    Observations& operator=(const Observations&) = delete;
    ~Observations() { setPostingObserver({}); }

    bool allWasTold() const { return allWasTold_; }

private:
    bool allWasTold_ = true;
};

/// Prints the alerts on the screen.
void printAlerts()
{
    for (UIAlertView* alert : shownAlerts())
        std::cerr << "solvane-settings: " << toUTF8(alert->title()) << ": " << toUTF8(alert->message()) << '\n';
}

/// Throws std::runtime_error when the page that is installed has no such cell.
PSTableCell* cellNamed(PSListController* page, const std::string& identifier)
{
    PSTableCell* const cell = cellOf(page, toNSString(identifier));
    if (cell == nullptr)
        throw std::runtime_error("the page has no cell " + identifier);
    return cell;
}

/// Edits the name; whether the page shows it afterwards.
bool editName(PSListController* page, const std::string& name)
{
    PSTableCell* const cell = cellNamed(page, "Name");
    UITextField* const field = fieldOf(cell);
    field->becomeFirstResponder();
    field->setText(toNSString(name));
    field->resignFirstResponder();
    refreshValue(cell);
    return shownValue(cell) == name;
}

/// Presses the button and agrees.
void relaunch(PSListController* page)
{
    pressCell(cellNamed(page, "Relaunch"));
    send<"sendActionsForControlEvents:">(buttonsOf(shownAlerts().back()).back().get(), UIControlEventTouchUpInside);
}

void showName(PSListController* page)
{
    const std::string name = shownValue(cellNamed(page, "Name"));
    std::cout << (name.empty() ? "Pal (no name is set)" : name) << '\n';
}

/// Gives the exit status.
int run(const SettingsOptions& options)
{
    setPhoneRoot(options.root);
    openSystemLog();
    launchSettings(options.screen);
    PSListController* const page = openPage("Solvane");
    const Observations observations;
    bool isDone = true;
    const std::string command = options.command.empty() ? "" : options.command[0];
    if (command == "show")
        showName(page);
    else if (command == "name")
        isDone = editName(page, options.command[1]);
    else if (command == "forget")
        isDone = editName(page, "");
    if (command == "relaunch" || (options.respring && isDone && observations.allWasTold()))
        relaunch(page);
    printAlerts();
    if (options.picture)
        settingsPicture()->writePNG(*options.picture);
    return isDone && observations.allWasTold() ? 0 : 1;
}

} // namespace

} // namespace simulator

int main(int count, char** words)
{
    simulator::reportFaults();
    if (count == 2 && std::string_view(words[1]) == "--help") {
        std::cout << simulator::settingsUsage;
        return 0;
    }
    const AutoreleasePool pool;
    try {
        const int status = simulator::run(simulator::readSettingsOptions({words + 1, words + count}));
        if (!std::cout.flush())
            throw std::runtime_error("standard output cannot be written");
        return status;
    } catch (const std::invalid_argument& error) {
        std::cerr << "solvane-settings: " << error.what() << "\n\n" << simulator::settingsUsage;
        return 2;
    } catch (const std::exception& error) {
        std::cerr << "solvane-settings: " << error.what() << '\n';
    } catch (...) {
        std::cerr << "solvane-settings: an exception was raised\n";
    }
    return 1;
}
