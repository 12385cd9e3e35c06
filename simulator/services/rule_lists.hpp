#pragma once

#include <algorithm>
#include <iterator>
#include <vector>

#include <libical/ical.h>

#include "simulator/services/day_numbers.hpp"

/// The lists of a recurrence rule (BYMONTH, BYHOUR, ...): the numbers that its days and times must have.
namespace simulator {

/// What a rule lists, without the mark of the end.
template <std::size_t Size>
std::vector<int> listed(const short (&numbers)[Size])
{
    return {std::begin(numbers), std::find(std::begin(numbers), std::end(numbers), ICAL_RECURRENCE_ARRAY_MAX)};
}

/// The numbers of a list that clocks have.
template <std::size_t Size>
std::vector<int> shownByClocks(const short (&numbers)[Size], int last)
{
    std::vector<int> list = listed(numbers);
    std::erase_if(list, [&](int number) { return number < 0 || number > last; });
    return list;
}

/// An empty list allows every number.
inline bool allows(const std::vector<int>& list, int number)
{
    return list.empty() || std::ranges::find(list, number) != list.end();
}
inline bool allows(const std::vector<int>& list, const Place& place)
{
    return list.empty() || std::ranges::any_of(list, [&](int number) { return place.is(number); });
}

/// The list in order, each number once; the number alone when there is no list.
inline std::vector<int> orElse(std::vector<int> list, std::int64_t number)
{
    if (list.empty())
        list.push_back(static_cast<int>(number));
    std::ranges::sort(list);
    const auto repeated = std::ranges::unique(list);
    list.erase(repeated.begin(), repeated.end());
    return list;
}

} // namespace simulator
