#include <bit>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "platform/Foundation/NSDictionary.hpp"
#include "platform/Foundation/NSString.hpp"
#include "platform/runtime/each.hpp"
#include "simulator/foundation/property_list_forms.hpp"

/// The binary form, which binary_property_list.cpp draws. GNUstep's own writer makes a file that nobody can read of a list with a
/// number that is none (NaN), so that a new name in such settings lost them all.

namespace simulator {

namespace {

void appendNumber(std::string& bytes, std::uint64_t number, std::size_t width)
{
    while (width-- > 0)
        bytes += static_cast<char>(number >> (8 * width) & 0xff);
}

/// The exponent of the narrowest width that a number without a sign has room in.
std::uint8_t exponentFor(std::uint64_t number)
{
    std::uint8_t exponent = 0;
    while (exponent < 3 && number >> (8U << exponent) != 0)
        ++exponent;
    return exponent;
}

/// An object as it stands in the file, but for the numbers of its elements.
struct Entry {
    std::string bytes;
    std::vector<std::size_t> elements;
};

class BinaryWriter {
public:
    std::string write(id root)
    {
        add(root);
        const std::size_t widthOfReference = std::size_t{1} << exponentFor(entries_.size());
        std::string file(binaryMark);
        std::vector<std::size_t> places;
        for (const Entry& entry : entries_) {
            places.push_back(file.size());
            file += entry.bytes;
            for (const std::size_t element : entry.elements)
                appendNumber(file, element, widthOfReference);
        }
        const std::size_t placesBegin = file.size();
        const std::size_t widthOfPlace = std::size_t{1} << exponentFor(placesBegin);
        for (const std::size_t place : places)
            appendNumber(file, place, widthOfPlace);
        constexpr std::size_t unused = 6;
        appendNumber(file, 0, unused);
        appendNumber(file, widthOfPlace, 1);
        appendNumber(file, widthOfReference, 1);
        appendNumber(file, entries_.size(), 8);
        appendNumber(file, 0, 8);
        appendNumber(file, placesBegin, 8);
        return file;
    }

private:
    struct Kind {
        const char* className;
        Entry (*entryOf)(BinaryWriter& writer, id object);
    };

    /// Gives the object's number.
    std::size_t add(id object)
    {
        static constexpr Kind kinds[] = {
            {"NSString", &text}, {"NSNumber", &number}, {"NSDate", &date},
            {"NSData", &data},   {"NSArray", &array},   {"NSDictionary", &dictionary},
        };
        for (const Kind& kind : kinds) {
            if (!object->isKindOfClass(objc_getClass(kind.className)))
                continue;
            allowance_.takeObject();
            const std::size_t place = entries_.size();
            entries_.emplace_back();
            Entry entry = kind.entryOf(*this, object);
            entries_[place] = std::move(entry);
            return place;
        }
        throw NoPropertyList();
    }

    /// The byte of a kind with a count, and the count where the byte has no room for it.
    static std::string marker(std::uint8_t kind, std::size_t count)
    {
        constexpr std::uint8_t follows = 0xf;
        const std::string bytes(1, static_cast<char>(kind << 4 | std::min<std::size_t>(count, follows)));
        return count < follows ? bytes : bytes + integer(count);
    }

    static std::string integer(std::uint64_t value)
    {
        const std::uint8_t exponent = exponentFor(value);
        std::string bytes(1, static_cast<char>(0x10 | exponent));
        appendNumber(bytes, value, std::size_t{1} << exponent);
        return bytes;
    }

    static std::string real(std::uint8_t kind, double value)
    {
        std::string bytes(1, static_cast<char>(kind));
        appendNumber(bytes, std::bit_cast<std::uint64_t>(value), sizeof value);
        return bytes;
    }

    static Entry text(BinaryWriter& writer, id object)
    {
        const auto* const string = static_cast<const NSString*>(object);
        std::u16string characters(string->length(), u'\0');
        writer.allowance_.take(characters.size());
        bool isASCII = true;
        for (std::size_t i = 0; i < characters.size(); ++i) {
            characters[i] = string->characterAtIndex(i);
            isASCII = isASCII && characters[i] < 0x80;
        }
        std::string bytes = marker(isASCII ? 0x5 : 0x6, characters.size());
        for (const char16_t character : characters)
            appendNumber(bytes, character, isASCII ? 1 : 2);
        return {std::move(bytes), {}};
    }

    static Entry number(BinaryWriter&, id object)
    {
        switch (*send<"objCType", const char*>(object)) {
        case 'c':
        case 'B':
            return {std::string(1, send<"boolValue", BOOL>(object) != NO ? 0x09 : 0x08), {}};
        case 'f':
        case 'd':
            return {real(0x23, send<"doubleValue", double>(object)), {}};
        default: {
            const auto value = static_cast<std::uint64_t>(send<"longLongValue", long long>(object));
            // What is too large for a sign has sixteen bytes.
            constexpr std::uint64_t largestSigned = ~std::uint64_t{0} >> 1;
            std::string wide("\x14\0\0\0\0\0\0\0\0", 9);
            const bool isWide = value > largestSigned && *send<"objCType", const char*>(object) == 'Q';
            if (isWide)
                appendNumber(wide, value, sizeof value);
            return {isWide ? std::move(wide) : integer(value), {}};
        }
        }
    }

    static Entry date(BinaryWriter&, id object)
    {
        return {real(0x33, send<"timeIntervalSinceReferenceDate", NSTimeInterval>(object)), {}};
    }

    static Entry data(BinaryWriter& writer, id object)
    {
        const std::string_view bytes(send<"bytes", const char*>(object), send<"length", NSUInteger>(object));
        writer.allowance_.take(bytes.size());
        return {marker(0x4, bytes.size()).append(bytes), {}};
    }

    static Entry array(BinaryWriter& writer, id object)
    {
        const Nesting deeper(writer.depth_);
        Entry entry{marker(0xa, static_cast<NSArray*>(object)->count()), {}};
        for (const id element : each<NSObject>(object))
            entry.elements.push_back(writer.add(element));
        return entry;
    }

    static Entry dictionary(BinaryWriter& writer, id object)
    {
        const Nesting deeper(writer.depth_);
        auto* const entries = static_cast<NSDictionary*>(object);
        Entry entry{marker(0xd, entries->count()), {}};
        std::vector<id> values;
        for (const id key : each<NSObject>(object)) {
            if (!key->isKindOfClass(classNamed<"NSString">()))
                throw NoPropertyList();
            entry.elements.push_back(writer.add(key));
            values.push_back(entries->objectForKey(key));
        }
        for (const id value : values)
            entry.elements.push_back(writer.add(value));
        return entry;
    }

    std::vector<Entry> entries_;
    ListAllowance allowance_;
    std::size_t depth_ = 0;
};

} // namespace

std::string writeBinaryForm(id root)
{
    return BinaryWriter().write(root);
}

} // namespace simulator
