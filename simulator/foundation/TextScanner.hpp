#pragma once

#include <algorithm>
#include <string_view>

#include "simulator/foundation/property_list_forms.hpp"

namespace simulator {

/// Goes through the text of a property list from its beginning to its end.
class TextScanner {
public:
    explicit TextScanner(std::u16string_view text) : rest_(text) {}

    bool atEnd() const { return rest_.empty(); }
    bool isAt(std::u16string_view text) const { return rest_.starts_with(text); }
    /// 0 at the end.
    char16_t next() const { return rest_.empty() ? char16_t{0} : rest_.front(); }

    char16_t take()
    {
        const char16_t character = next();
        skip(1);
        return character;
    }
    bool takeIf(std::u16string_view text)
    {
        if (!isAt(text))
            return false;
        skip(text.size());
        return true;
    }
    void expect(std::u16string_view text)
    {
        if (!takeIf(text))
            throw NoPropertyList();
    }
    std::u16string_view takeWhile(auto&& holds)
    {
        std::size_t count = 0;
        while (count < rest_.size() && holds(rest_[count]))
            ++count;
        return skip(count);
    }
    /// What stands before that text, which is skipped as well.
    std::u16string_view takeUntil(std::u16string_view end)
    {
        const std::u16string_view before = skip(rest_.find(end));
        skip(end.size());
        return before;
    }
    void skipBlanks()
    {
        takeWhile(
            [](char16_t character) { return character == ' ' || character == '\t' || character == '\n' || character == '\r'; });
    }

private:
    std::u16string_view skip(std::size_t count)
    {
        if (count > rest_.size())
            throw NoPropertyList();
        const std::u16string_view skipped = rest_.substr(0, count);
        rest_.remove_prefix(count);
        return skipped;
    }

    std::u16string_view rest_;
};

/// The value of a digit of that base, which is 16 at the most; -1 for another character.
constexpr int digitOf(char16_t character, int base)
{
    constexpr std::u16string_view lower = u"0123456789abcdef";
    constexpr std::u16string_view upper = u"0123456789ABCDEF";
    const std::size_t value = std::min(lower.find(character), upper.find(character));
    return value < static_cast<std::size_t>(base) ? static_cast<int>(value) : -1;
}

} // namespace simulator
