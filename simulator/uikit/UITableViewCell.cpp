#include "platform/UIKit/UITableView.hpp"

#include "simulator/uikit/ViewState.hpp"
#include "simulator/uikit/uikit.hpp"

namespace simulator {

namespace {

struct CellState {
    bool highlighted = false;
    bool selected = false;
};

void applyHighlight(NSObject* self)
{
    auto* const cell = static_cast<UITableViewCell*>(self);
    const auto& state = ivarsOf<CellState>(self);
    constexpr CGFloat veil = 0.18;
    cell->setBackgroundColor(state.highlighted || state.selected ? UIColor::colorWithWhite_alpha(1, veil)
                                                                 : UIColor::clearColor());
}

} // namespace

void registerUITableViewCell()
{
    SimulatedClass<CellState>("UITableViewCell", "UIView")
        .flag<&CellState::highlighted, applyHighlight>("highlighted")
        .flag<&CellState::selected, applyHighlight>("selected")
        .registerClass();
}

} // namespace simulator
