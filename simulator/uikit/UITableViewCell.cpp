#include "platform/UIKit/UITableView.hpp"

#include "simulator/runtime/SimulatedClass.hpp"
#include "simulator/uikit/uikit.hpp"

/// One row of a table, lighter while it is touched or selected.

namespace simulator {

namespace {

struct TableViewCellState {
    bool highlighted = false;
    bool selected = false;
};

void applyHighlight(NSObject* self)
{
    auto* const cell = static_cast<UITableViewCell*>(self);
    const auto& state = ivarsOf<TableViewCellState>(self);
    constexpr CGFloat veil = 0.18;
    cell->setBackgroundColor(state.highlighted || state.selected ? UIColor::colorWithWhite_alpha(1, veil)
                                                                 : UIColor::clearColor());
}

} // namespace

void registerUITableViewCell()
{
    SimulatedClass<TableViewCellState>("UITableViewCell", "UIView")
        .flag<&TableViewCellState::highlighted, applyHighlight>("highlighted")
        .flag<&TableViewCellState::selected, applyHighlight>("selected")
        .registerClass();
}

} // namespace simulator
