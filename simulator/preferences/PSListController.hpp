#pragma once

#include "platform/Preferences/PSListController.hpp"
#include "platform/UIKit/UIScrollView.hpp"
#include "platform/runtime/Strong.hpp"
#include "simulator/preferences/PSTableCell.hpp"

namespace simulator {

/// The page's cell for the specifier of that identifier; nil when it has none. The page's view must be there.
PSTableCell* cellOf(PSListController* page, NSString* identifier);

/// Makes the groups and cells of a page in that view, and keeps the cells by their identifiers.
void layOutPage(PSListController* page, UIScrollView* view, NSMutableDictionary* cells);

} // namespace simulator
