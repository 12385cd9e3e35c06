#pragma once

#include <memory>
#include <string>

#include "platform/Preferences/PSListController.hpp"
#include "simulator/graphics/Bitmap.hpp"
#include "simulator/uikit/ScreenSize.hpp"

class UIWindow;

/// The Settings application: the pages that the phone's file tree adds to it.
namespace simulator {

/// Registers the classes of the Settings and of what they stand on, and makes the application's screen and window. To be called
/// once, in a process of its own.
void launchSettings(const ScreenSize& screen);

UIWindow* settingsWindow();

/// Opens the page of the preference loader's entry of that name, in place of any other: the controller of its bundle, or the
/// Settings' own for an entry that lists its items. Throws std::runtime_error with the reason when there is none.
PSListController* openPage(const std::string& entry);

/// The screen as it stands, laid out and drawn.
std::shared_ptr<Bitmap> settingsPicture();

} // namespace simulator
