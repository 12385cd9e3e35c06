#include "calendar/cell_sizes.hpp"

#include <cmath>
#include <gtest/gtest.h>
#include <ostream>

/// The sizes of a month calendar, in the arithmetic of both word widths.

namespace {

struct Row {
    double width;
    long cell;
    long border;
    long font;
    long title;
};

constexpr Row rows[] = {
    {320, 45, 1, 12, 18}, {280, 40, 0, 11, 16},   {375, 53, 1, 15, 21},    {414, 59, 1, 16, 23}, {7, 1, 0, 0, 0},
    {0, 0, 0, 0, 0},      {1000, 142, 3, 40, 56}, {768, 109, 2, 31, 43},   {6.5, 0, 0, 0, 0},    {308, 44, 1, 12, 17},
    {301, 43, 0, 12, 17}, {314.5, 44, 1, 12, 17}, {2048, 292, 6, 83, 116},
};

template <class Float, class Integer>
void expect(Float width, const Row& row)
{
    const auto sizes = cellSizesForWidth<Float, Integer>(width);
    EXPECT_EQ(sizes.cell, row.cell) << width;
    EXPECT_EQ(sizes.border, row.border) << width;
    EXPECT_EQ(sizes.font, row.font) << width;
    EXPECT_EQ(sizes.title, row.title) << width;
}

/// The sizes in whole numbers alone, cut towards zero.
Row reckoned(long width)
{
    const long cell = width / 7;
    return {static_cast<double>(width), cell, cell * 23 / 1000, cell * 2 / 7, cell * 2 / 5};
}

} // namespace

TEST(CellSizes, AreThoseOfTheTableOnA64BitProcessor)
{
    for (const Row& row : rows)
        expect<double, long>(row.width, row);
}

TEST(CellSizes, AreThoseOfTheTableOnA32BitProcessor)
{
    for (const Row& row : rows)
        expect<float, int>(static_cast<float>(row.width), row);
}

TEST(CellSizes, AreCutTowardsZeroForEveryWholeWidth)
{
    for (long width = 0; width <= 4096; ++width) {
        expect<double, long>(static_cast<double>(width), reckoned(width));
        expect<float, int>(static_cast<float>(width), reckoned(width));
    }
}

TEST(CellSizes, AreTheSameInBothPrecisionsForEveryWidthThatBothCanHold)
{
    // Rounding to single precision never lifts a seventh to the next whole number; the widths right below a multiple of
    // seven would be the first to show it.
    for (int cell = 1; cell <= 300; ++cell) {
        auto width = static_cast<float>(7 * cell);
        for (int i = 0; i < 100; ++i) {
            width = std::nextafter(width, 0.0F);
            expect<float, int>(width, reckoned(7L * cell - 1));
            expect<double, long>(static_cast<double>(width), reckoned(7L * cell - 1));
        }
    }
}

TEST(CellSizes, DifferForAWidthThatSinglePrecisionCannotHold)
{
    constexpr double width = 314.9999999;
    const auto wide = cellSizesForWidth<double, long>(width);
    const auto narrow = cellSizesForWidth<float, int>(static_cast<float>(width));
    EXPECT_EQ(wide.cell, 44);
    EXPECT_EQ(narrow.cell, 45);
}
