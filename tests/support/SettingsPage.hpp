#pragma once

#include <string>
#include <vector>

#include "platform/runtime/AutoreleasePool.hpp"
#include "simulator/preferences/PSListController.hpp"
#include "simulator/uikit/ScreenSize.hpp"
#include "tests/support/PhoneTree.hpp"
#include "tests/support/objects.hpp"

/// The Settings in this process, with a page open, used by touches. There is one at the most in a process, and no Phone beside
/// it. It runs the system that SOLVANE_SYSTEM names, if it names one.
class SettingsPage {
public:
    explicit SettingsPage(const simulator::ScreenSize& screen = {});

    const PhoneTree& tree() const { return tree_; }

    /// Opens the page of that entry of the preference loader.
    void open(const std::string& entry = "Solvane");
    /// Leaves it and comes back.
    void reopen() { open(entry_); }

    PSListController* controller() const { return page_; }

    /// What a cell shows, by its identifier.
    std::string shown(const std::string& identifier) const;

    void tapCell(const std::string& identifier) const;
    /// Taps one key of the keyboard for each letter; a space is the long key.
    void type(const std::string& letters) const;
    /// Taps the key of that name: "return", "delete".
    void tapKey(const std::string& key) const;
    /// Taps the button of that title in the alert on top.
    void tapButton(const std::string& title) const;
    /// Taps the name, empties it, types another and leaves the field.
    void enterName(const std::string& letters) const;

    /// Title and message of each alert on the screen.
    static std::vector<std::string> alerts();

private:
    PhoneTree tree_;
    AutoreleasePool pool_;
    std::string entry_;
    PSListController* page_ = nullptr;
};
