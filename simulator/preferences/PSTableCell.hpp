#pragma once

#include <string>

#include "platform/UIKit/UITableView.hpp"
#include "platform/UIKit/UITextField.hpp"
#include "simulator/preferences/PSSpecifier.hpp"

/// A row of a page.
class PSTableCell : public UITableViewCell {};

namespace simulator {

inline constexpr CGFloat pageMargin = 15;
inline constexpr CGFloat cellHeight = 44;

/// A cell for that specifier, of the page whose specifier it is.
Owned<PSTableCell> cellFor(PSSpecifier* specifier, PSListController* page, CGRect frame);

/// Shows the specifier's value anew.
void refreshValue(PSTableCell* cell);

/// The value as it stands on the screen, a field's as far as it is edited; empty where there is none.
std::string shownValue(PSTableCell* cell);

/// What a tap on it does.
void pressCell(PSTableCell* cell);

/// The field in which its text is edited; nil in a cell of another kind.
UITextField* fieldOf(PSTableCell* cell);

} // namespace simulator
