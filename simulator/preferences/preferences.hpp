#pragma once

#include <filesystem>

#include "platform/Preferences/PSListController.hpp"

/// The classes that pages of the Settings are made of.
namespace simulator {

/// Registers them, superclasses first. To be called once, after UIKit's.
void registerPreferences();

void registerPSSpecifier();
void registerPSTableCell();
void registerPSViewController();
void registerPSListController();

/// The specifiers that the items of a page's property list describe, whose values and actions are the target's. Pictures that
/// they name are the bundle's, if there is one. Autoreleased.
NSArray* specifiersOfItems(NSArray* items, PSListController* target, NSBundle* bundle);

} // namespace simulator
