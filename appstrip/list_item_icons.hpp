#pragma once

#include "appstrip/SVAppsView.hpp"

/// Adds to the strip's class what tells the application behind an item of the lock screen's list. Nothing is kept: each call
/// asks anew.
void addListItemIcons(ClassBuilder<SVAppsViewIvars>& strip);
