#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string>
#include <unordered_map>

#include "simulator/foundation/property_list_forms.hpp"
#include "simulator/foundation/property_list_objects.hpp"

// A binary property list; numbers are big-endian:
//
//     +-----------+---------------------+----------------------+--------------------------------+
//     | bplist00  | objects             | places               | trailer                        |
//     |           |                     | one for each object, | 6 bytes: nothing of use        |
//     |           |                     | from the file's      | 1: the width of a place        |
//     |           |                     | beginning            | 1: the width of a reference    |
//     |           |                     |                      | 8: how many objects            |
//     |           |                     |                      | 8: the number of the root      |
//     |           |                     |                      | 8: where the places begin      |
//     +-----------+---------------------+----------------------+--------------------------------+
//
// An object begins with a byte whose upper half is its kind. The lower half is its count: of bytes, of characters, of elements;
// 15 when the count is too large for it and follows as an integer object. A container holds the numbers of its elements.

namespace simulator {

namespace {

enum Kind : std::uint8_t {
    singular = 0x0,
    integer = 0x1,
    real = 0x2,
    date = 0x3,
    data = 0x4,
    asciiString = 0x5,
    utf16String = 0x6,
    array = 0xa,
    dictionary = 0xd,
};

enum Singular : std::uint8_t { falseValue = 0x8, trueValue = 0x9 };

constexpr std::size_t trailerSize = 32;
constexpr std::size_t mostObjects = ListAllowance::mostBytes / ListAllowance::bytesOfObject;

/// An object that has been read, to be shown again wherever it is shared.
struct Known {
    id object = nullptr;
    /// What it takes of the allowance, and how many containers deep it is.
    std::size_t bytes = 0;
    std::size_t height = 0;
};

class BinaryReader {
public:
    explicit BinaryReader(std::string_view file) : file_(file)
    {
        const std::size_t trailer = file.size() < trailerSize ? throw NoPropertyList() : file.size() - trailerSize;
        widthOfPlace_ = numberAt(trailer + 6, 1);
        widthOfReference_ = numberAt(trailer + 7, 1);
        count_ = numberAt(trailer + 8, 8);
        root_ = numberAt(trailer + 16, 8);
        places_ = numberAt(trailer + 24, 8);
        if (count_ > mostObjects || places_ > trailer || widthOfPlace_ > 8 || widthOfReference_ > 8)
            throw NoPropertyList();
        part(places_, count_ * widthOfPlace_);
    }

    id read() { return object(root_).object; }

private:
    std::string_view part(std::size_t offset, std::size_t size) const
    {
        if (offset > file_.size() || size > file_.size() - offset)
            throw NoPropertyList();
        return file_.substr(offset, size);
    }

    std::uint64_t numberAt(std::size_t offset, std::size_t width) const
    {
        std::uint64_t number = 0;
        for (const char byte : part(offset, width))
            number = number << 8 | static_cast<unsigned char>(byte);
        return number;
    }

    const Known& object(std::uint64_t number)
    {
        const auto [found, isNew] = known_.try_emplace(number);
        Known& entry = found->second;
        if (!isNew) {
            // Not made yet: it holds itself.
            if (entry.object == nullptr || depth_ + entry.height > ListAllowance::deepest)
                throw NoPropertyList();
            allowance_.take(entry.bytes);
            return entry;
        }
        if (number >= count_)
            throw NoPropertyList();
        const std::size_t before = allowance_.taken();
        entry.object = objectAt(numberAt(places_ + number * widthOfPlace_, widthOfPlace_), entry);
        if (entry.object == nullptr)
            throw NoPropertyList();
        entry.bytes = allowance_.taken() - before;
        return entry;
    }

    id objectAt(std::size_t offset, Known& entry)
    {
        const std::uint64_t marker = numberAt(offset, 1);
        const auto low = static_cast<std::uint8_t>(marker & 0xf);
        ++offset;
        switch (marker >> 4) {
        case singular:
            allowance_.takeObject();
            return low == falseValue || low == trueValue ? numberWith<"numberWithBool:">(BOOL{low == trueValue}) : nullptr;
        case integer:
            allowance_.takeObject();
            return integerAt(offset, low);
        case real:
            allowance_.takeObject();
            return numberWith<"numberWithDouble:">(realAt(offset, low));
        case date:
            allowance_.takeObject();
            return dateAt(offset, low);
        case data: {
            const std::size_t count = countAt(offset, low);
            allowance_.takeObject(count);
            return dataWith(part(offset, count));
        }
        case asciiString: {
            const std::size_t count = countAt(offset, low);
            allowance_.takeObject(count);
            return asciiStringWith(part(offset, count));
        }
        case utf16String: {
            const std::size_t count = countAt(offset, low);
            allowance_.takeObject(count);
            std::u16string text;
            for (std::size_t i = 0; i < count; ++i)
                text += static_cast<char16_t>(numberAt(offset + 2 * i, 2));
            return stringWith(text);
        }
        case array: {
            const std::size_t count = countAt(offset, low);
            allowance_.takeObject();
            return arrayWith(elements(offset, count, entry));
        }
        case dictionary: {
            const std::size_t count = countAt(offset, low);
            allowance_.takeObject();
            const std::vector<id> keys = elements(offset, count, entry);
            for (const id key : keys) {
                if (!key->isKindOfClass(classNamed<"NSString">()))
                    throw NoPropertyList();
            }
            return dictionaryWith(elements(offset + count * widthOfReference_, count, entry), keys);
        }
        default:
            return nullptr;
        }
    }

    /// Moves the offset behind the count where that is an object of its own. No count is larger than the file.
    std::size_t countAt(std::size_t& offset, std::uint8_t low) const
    {
        constexpr std::uint8_t follows = 0xf;
        std::uint64_t count = low;
        if (low == follows) {
            const std::uint64_t marker = numberAt(offset, 1);
            const std::size_t width = std::size_t{1} << (marker & 0xf);
            if (marker >> 4 != integer || width > 8)
                throw NoPropertyList();
            count = numberAt(offset + 1, width);
            offset += 1 + width;
        }
        if (count > file_.size())
            throw NoPropertyList();
        return count;
    }

    std::vector<id> elements(std::size_t offset, std::size_t count, Known& entry)
    {
        const Nesting deeper(depth_);
        std::vector<id> objects;
        for (std::size_t i = 0; i < count; ++i) {
            const Known& element = object(numberAt(offset + i * widthOfReference_, widthOfReference_));
            objects.push_back(element.object);
            entry.height = std::max(entry.height, element.height + 1);
        }
        return objects;
    }

    /// One, two and four bytes are without a sign, eight with one; of sixteen, the lower eight are without.
    id integerAt(std::size_t offset, std::uint8_t exponent) const
    {
        constexpr std::uint8_t widest = 4;
        if (exponent == widest && numberAt(offset, 8) == 0)
            return numberWith<"numberWithUnsignedLongLong:">(static_cast<unsigned long long>(numberAt(offset + 8, 8)));
        if (exponent >= widest)
            return nullptr;
        return numberWith<"numberWithLongLong:">(static_cast<long long>(numberAt(offset, std::size_t{1} << exponent)));
    }

    double realAt(std::size_t offset, std::uint8_t exponent) const
    {
        switch (exponent) {
        case 2:
            return std::bit_cast<float>(static_cast<std::uint32_t>(numberAt(offset, 4)));
        case 3:
            return std::bit_cast<double>(numberAt(offset, 8));
        default:
            throw NoPropertyList();
        }
    }

    id dateAt(std::size_t offset, std::uint8_t exponent) const
    {
        const double seconds = realAt(offset, exponent);
        return std::isfinite(seconds) ? dateWith(seconds) : nullptr;
    }

    static id asciiStringWith(std::string_view text)
    {
        if (std::ranges::any_of(text, [](unsigned char byte) { return byte > 0x7f; }))
            return nullptr;
        return stringWith(std::u16string(text.begin(), text.end()));
    }

    std::string_view file_;
    std::size_t widthOfPlace_ = 0;
    std::size_t widthOfReference_ = 0;
    std::uint64_t count_ = 0;
    std::uint64_t root_ = 0;
    std::uint64_t places_ = 0;
    ListAllowance allowance_;
    std::size_t depth_ = 0;
    std::unordered_map<std::uint64_t, Known> known_;
};

} // namespace

id readBinaryForm(std::string_view bytes)
{
    return BinaryReader(bytes).read();
}

} // namespace simulator
