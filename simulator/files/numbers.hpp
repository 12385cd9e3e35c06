#pragma once

#include <array>
#include <charconv>
#include <cstddef>
#include <optional>
#include <string_view>
#include <system_error>

/// Numbers as people write them on a command line.
namespace simulator {

/// The number that the whole text writes in decimal; none when it is another text or out of the type's range.
template <class Number>
std::optional<Number> parseNumber(std::string_view text)
{
    Number number{};
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    if (error != std::errc() || stop != end)
        return std::nullopt;
    return number;
}

/// Exactly `Count` numbers with commas between them.
template <class Number, std::size_t Count>
std::optional<std::array<Number, Count>> parseNumbers(std::string_view text)
{
    std::array<Number, Count> numbers{};
    for (std::size_t i = 0; i < Count; ++i) {
        const bool isLast = i + 1 == Count;
        const std::size_t end = isLast ? text.size() : text.find(',');
        if (end == std::string_view::npos)
            return std::nullopt;
        const auto number = parseNumber<Number>(text.substr(0, end));
        if (!number)
            return std::nullopt;
        numbers[i] = *number;
        text.remove_prefix(isLast ? end : end + 1);
    }
    return numbers;
}

} // namespace simulator
