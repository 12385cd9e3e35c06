#include "tests/random_days/region.hpp"

std::string Region::title(long year, long month) const
{
    std::string text = std::string(months.at(static_cast<std::size_t>(month - 1))) + ' ';
    for (const char digit : std::to_string(year))
        text += digits.at(static_cast<std::size_t>(digit - '0'));
    return text;
}
