#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <cstdint>
#include <optional>
#include <string>

#include <unicode/unistr.h>

#include "simulator/foundation/TextScanner.hpp"
#include "simulator/foundation/icu_texts.hpp"
#include "simulator/foundation/property_list_forms.hpp"
#include "simulator/foundation/property_list_objects.hpp"

/// The elements of a property list in XML. Attributes say nothing, and no document type is looked up.

namespace simulator {

namespace {

struct Entity {
    std::u16string_view name;
    char16_t character;
};

constexpr Entity entities[] = {{u"amp", '&'}, {u"lt", '<'}, {u"gt", '>'}, {u"quot", '"'}, {u"apos", '\''}};

/// The text without the blanks around it, of ASCII: what is not becomes what no number and no date has.
std::string narrowed(std::u16string_view text)
{
    constexpr std::u16string_view blanks = u" \t\r\n";
    text.remove_prefix(std::min(text.find_first_not_of(blanks), text.size()));
    text = text.substr(0, text.find_last_not_of(blanks) + 1);
    std::string narrow;
    for (const char16_t character : text)
        narrow += character <= 0x7f ? static_cast<char>(character) : '?';
    return narrow;
}

template <class Number>
std::optional<Number> numberIn(std::string_view text, auto... form)
{
    Number number{};
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number, form...);
    return error == std::errc() && stop == end ? std::optional(number) : std::nullopt;
}

id dataIn(std::u16string_view text)
{
    constexpr std::u16string_view digits = u"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string bytes;
    std::uint32_t bits = 0;
    unsigned held = 0;
    for (const char16_t character : text) {
        const std::size_t digit = digits.find(character);
        if (digit == std::u16string_view::npos) {
            if (std::u16string_view(u"= \t\r\n").find(character) == std::u16string_view::npos)
                throw NoPropertyList();
            continue;
        }
        bits = bits << 6 | static_cast<std::uint32_t>(digit);
        held += 6;
        if (held >= 8) {
            held -= 8;
            bytes += static_cast<char>(bits >> held);
        }
    }
    return dataWith(bytes);
}

/// ISO 8601 in universal time, "2014-03-05T08:30:00Z".
id dateIn(std::u16string_view text)
{
    using namespace std::chrono;
    const std::string written = narrowed(text);
    constexpr std::string_view form = "0000-00-00T00:00:00Z";
    std::array<unsigned, 6> fields{};
    std::size_t field = 0;
    if (written.size() != form.size())
        throw NoPropertyList();
    for (std::size_t i = 0; i < form.size(); ++i) {
        const int digit = digitOf(static_cast<unsigned char>(written[i]), 10);
        if (form[i] == '0' ? digit < 0 : written[i] != form[i])
            throw NoPropertyList();
        if (form[i] == '0')
            fields[field] = fields[field] * 10 + static_cast<unsigned>(digit);
        else
            field = std::min(field + 1, fields.size() - 1);
    }
    const year_month_day day{year(static_cast<int>(fields[0])), month(fields[1]), std::chrono::day(fields[2])};
    if (!day.ok())
        throw NoPropertyList();
    const auto sinceReference = sys_days(day) - sys_days(2001y / January / 1);
    return dateWith(static_cast<double>(sinceReference.count()) * 86400 + fields[3] * 3600 + fields[4] * 60 + fields[5]);
}

id integerIn(std::u16string_view text)
{
    const std::string written = narrowed(text);
    std::string_view digits = written;
    const bool isNegative = digits.starts_with('-');
    if (isNegative || digits.starts_with('+'))
        digits.remove_prefix(1);
    const bool isHexadecimal = digits.starts_with("0x") || digits.starts_with("0X");
    const auto value = isHexadecimal ? numberIn<std::uint64_t>(digits.substr(2), 16) : numberIn<std::uint64_t>(digits);
    constexpr std::uint64_t largestSigned = std::uint64_t{1} << 63;
    if (!value || (isNegative && *value > largestSigned))
        throw NoPropertyList();
    if (!isNegative && *value >= largestSigned)
        return numberWith<"numberWithUnsignedLongLong:">(static_cast<unsigned long long>(*value));
    return numberWith<"numberWithLongLong:">(static_cast<long long>(isNegative ? -*value : *value));
}

id realIn(std::u16string_view text)
{
    const std::string written = narrowed(text);
    const auto value = numberIn<double>(std::string_view(written).substr(written.starts_with('+') ? 1 : 0));
    return value ? numberWith<"numberWithDouble:">(*value) : throw NoPropertyList();
}

struct Scalar {
    std::u16string_view element;
    id (*read)(std::u16string_view content);
};

constexpr Scalar scalars[] = {
    {u"string", stringWith},
    {u"integer", integerIn},
    {u"real", realIn},
    {u"data", dataIn},
    {u"date", dateIn},
    {u"true", [](std::u16string_view) { return numberWith<"numberWithBool:">(BOOL{true}); }},
    {u"false", [](std::u16string_view) { return numberWith<"numberWithBool:">(BOOL{false}); }},
};

bool endsName(char16_t character)
{
    return std::u16string_view(u" \t\r\n/>").find(character) != std::u16string_view::npos;
}

class XMLReader {
public:
    explicit XMLReader(std::u16string_view text) : text_(text) {}

    id read()
    {
        skipMiscellany();
        id root = nullptr;
        const Tag tag = openingTag();
        if (tag.name == u"plist" && !tag.isEmpty) {
            skipMiscellany();
            root = element(openingTag());
            skipMiscellany();
            closingTag(tag.name);
        } else {
            root = element(tag);
        }
        skipMiscellany();
        if (!text_.atEnd())
            throw NoPropertyList();
        return root;
    }

private:
    struct Tag {
        std::u16string_view name;
        bool isEmpty;
    };

    /// What stands between elements and is none: blanks, comments, instructions, the document type.
    void skipMiscellany()
    {
        for (;;) {
            text_.skipBlanks();
            if (text_.takeIf(u"<!--"))
                text_.takeUntil(u"-->");
            else if (text_.takeIf(u"<?"))
                text_.takeUntil(u"?>");
            else if (text_.takeIf(u"<!DOCTYPE"))
                text_.takeUntil(u">");
            else
                return;
        }
    }

    Tag openingTag()
    {
        text_.expect(u"<");
        const std::u16string_view name = text_.takeWhile([](char16_t character) { return !endsName(character); });
        return {name, text_.takeUntil(u">").ends_with('/')};
    }

    void closingTag(std::u16string_view name)
    {
        text_.expect(u"</");
        text_.expect(name);
        text_.skipBlanks();
        text_.expect(u">");
    }

    id element(const Tag& tag)
    {
        if (tag.name == u"array")
            return array(tag);
        if (tag.name == u"dict")
            return dictionary(tag);
        const auto* const scalar = std::ranges::find(scalars, tag.name, &Scalar::element);
        if (scalar == std::end(scalars))
            throw NoPropertyList();
        return scalar->read(contentOf(tag));
    }

    id array(const Tag& tag)
    {
        const Nesting deeper(depth_);
        allowance_.takeObject();
        std::vector<id> elements;
        for (skipMiscellany(); !tag.isEmpty && !text_.isAt(u"</"); skipMiscellany())
            elements.push_back(element(openingTag()));
        end(tag);
        return arrayWith(elements);
    }

    id dictionary(const Tag& tag)
    {
        const Nesting deeper(depth_);
        allowance_.takeObject();
        std::vector<id> keys;
        std::vector<id> values;
        for (skipMiscellany(); !tag.isEmpty && !text_.isAt(u"</"); skipMiscellany()) {
            const Tag key = openingTag();
            if (key.name != u"key")
                throw NoPropertyList();
            keys.push_back(stringWith(contentOf(key)));
            skipMiscellany();
            values.push_back(element(openingTag()));
        }
        end(tag);
        return dictionaryWith(values, keys);
    }

    void end(const Tag& tag)
    {
        if (!tag.isEmpty)
            closingTag(tag.name);
    }

    /// The characters of an element that holds no other.
    std::u16string contentOf(const Tag& tag)
    {
        std::u16string content;
        while (!tag.isEmpty && !text_.isAt(u"</")) {
            if (text_.takeIf(u"<![CDATA["))
                content += text_.takeUntil(u"]]>");
            else if (text_.takeIf(u"&"))
                addEntity(content, text_.takeUntil(u";"));
            else if (text_.atEnd() || text_.next() == '<')
                throw NoPropertyList();
            else
                content += text_.takeWhile([](char16_t character) { return character != '<' && character != '&'; });
        }
        end(tag);
        allowance_.takeObject(content.size());
        return content;
    }

    static void addEntity(std::u16string& content, std::u16string_view name)
    {
        if (name.starts_with('#')) {
            const bool isHexadecimal = name.substr(1).starts_with('x');
            const auto character = numberIn<std::uint32_t>(narrowed(name.substr(isHexadecimal ? 2 : 1)), isHexadecimal ? 16 : 10);
            constexpr std::uint32_t last = 0x10ffff;
            if (!character || *character > last)
                throw NoPropertyList();
            const icu::UnicodeString text(static_cast<UChar32>(*character));
            content.append(text.getBuffer(), static_cast<std::size_t>(text.length()));
            return;
        }
        const auto* const entity = std::ranges::find(entities, name, &Entity::name);
        content += entity != std::end(entities) ? entity->character : throw NoPropertyList();
    }

    TextScanner text_;
    ListAllowance allowance_;
    std::size_t depth_ = 0;
};

} // namespace

id readXMLForm(std::u16string_view text)
{
    return XMLReader(text).read();
}

} // namespace simulator
