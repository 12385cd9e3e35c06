#pragma once

#include "platform/runtime/types.hpp"

/// The sizes, in points, that a month calendar derives from its width.
template <class Integer>
struct CellSizes {
    /// The side of a day's square cell.
    Integer cell;
    /// The width of a cell's border.
    Integer border;
    /// The font size of weekdays and days.
    Integer font;
    /// The font size of the month's title.
    Integer title;
};

/// Each size is cut to an integer towards zero. The width is divided in its own precision, the rest is reckoned in double
/// precision, on every processor.
template <class Float, class Integer>
constexpr CellSizes<Integer> cellSizesForWidth(Float width)
{
    constexpr int columns = 7;
    const auto cell = static_cast<Integer>(width / Float{columns});
    return {
        .cell = cell,
        .border = static_cast<Integer>(cell * 0.023),
        .font = static_cast<Integer>(cell / 3.5),
        .title = static_cast<Integer>(cell / 2.5),
    };
}
