#include <string>

#include "simulator/foundation/TextScanner.hpp"
#include "simulator/foundation/property_list_forms.hpp"
#include "simulator/foundation/property_list_objects.hpp"

namespace simulator {

namespace {

bool needsNoQuotes(char16_t character)
{
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
           (character >= '0' && character <= '9') || std::u16string_view(u"_$/:.-").find(character) != std::u16string_view::npos;
}

/// What stands for a character that a text in quotes cannot show as it is. Any other stands for itself behind a backslash.
struct Escape {
    char16_t letter;
    char16_t character;
};

constexpr Escape escapes[] = {{'a', '\a'}, {'b', '\b'}, {'f', '\f'}, {'n', '\n'}, {'r', '\r'}, {'t', '\t'}, {'v', '\v'}};

class OldFormReader {
public:
    explicit OldFormReader(std::u16string_view text) : text_(text) {}

    id read()
    {
        skipBlanks();
        const id root = value();
        skipBlanks();
        if (!text_.atEnd())
            throw NoPropertyList();
        return root;
    }

private:
    /// Comments too.
    void skipBlanks()
    {
        for (;;) {
            text_.skipBlanks();
            if (text_.takeIf(u"/*"))
                text_.takeUntil(u"*/");
            else if (text_.takeIf(u"//"))
                text_.takeWhile([](char16_t character) { return character != '\n' && character != '\r'; });
            else
                return;
        }
    }

    bool takeSign(std::u16string_view sign)
    {
        skipBlanks();
        return text_.takeIf(sign);
    }

    id value()
    {
        if (text_.takeIf(u"{"))
            return dictionary();
        if (text_.takeIf(u"("))
            return array();
        if (text_.takeIf(u"<"))
            return data();
        return string();
    }

    id dictionary()
    {
        const Nesting deeper(depth_);
        allowance_.takeObject();
        std::vector<id> keys;
        std::vector<id> values;
        while (!takeSign(u"}")) {
            keys.push_back(string());
            // A key alone has itself for a value.
            id held = keys.back();
            if (takeSign(u"=")) {
                skipBlanks();
                held = value();
            }
            values.push_back(held);
            if (!takeSign(u";")) {
                skipBlanks();
                text_.expect(u"}");
                break;
            }
        }
        return dictionaryWith(values, keys);
    }

    id array()
    {
        const Nesting deeper(depth_);
        allowance_.takeObject();
        std::vector<id> elements;
        while (!takeSign(u")")) {
            elements.push_back(value());
            if (!takeSign(u",")) {
                skipBlanks();
                text_.expect(u")");
                break;
            }
        }
        return arrayWith(elements);
    }

    id data()
    {
        std::string bytes;
        while (!takeSign(u">")) {
            const int high = digitOf(text_.take(), 16);
            text_.skipBlanks();
            const int low = digitOf(text_.take(), 16);
            if (high < 0 || low < 0)
                throw NoPropertyList();
            bytes += static_cast<char>(high << 4 | low);
        }
        allowance_.takeObject(bytes.size());
        return dataWith(bytes);
    }

    id string()
    {
        std::u16string text;
        if (text_.isAt(u"\"") || text_.isAt(u"'"))
            text = quoted(text_.take());
        else if (text = text_.takeWhile(needsNoQuotes); text.empty())
            throw NoPropertyList();
        allowance_.takeObject(text.size());
        return stringWith(text);
    }

    std::u16string quoted(char16_t quote)
    {
        std::u16string text;
        for (;;) {
            text += text_.takeWhile([=](char16_t character) { return character != quote && character != '\\'; });
            if (text_.atEnd())
                throw NoPropertyList();
            if (text_.take() == quote)
                return text;
            text += escaped();
        }
    }

    char16_t escaped()
    {
        if (digitOf(text_.next(), 8) >= 0)
            return number(8, 3);
        const char16_t letter = text_.take();
        if (letter == 'U' || letter == 'u')
            return number(16, 4);
        const auto* const escape = std::ranges::find(escapes, letter, &Escape::letter);
        return escape == std::end(escapes) ? letter : escape->character;
    }

    char16_t number(int base, int mostDigits)
    {
        int value = 0;
        for (; mostDigits > 0 && digitOf(text_.next(), base) >= 0; --mostDigits)
            value = value * base + digitOf(text_.take(), base);
        return static_cast<char16_t>(value);
    }

    TextScanner text_;
    ListAllowance allowance_;
    std::size_t depth_ = 0;
};

} // namespace

id readOldForm(std::u16string_view text)
{
    return OldFormReader(text).read();
}

} // namespace simulator
