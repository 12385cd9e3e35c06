#include "simulator/loader/macho/64_bit/compact_unwind.hpp"

namespace simulator::macho {

namespace {

// The section, whose offsets are from its own start if not said otherwise:
//
//     +-----------------------------------+
//     | unwind_info_section_header        |
//     +-----------------------------------+
//     | common encodings                  |  32 bits each
//     +-----------------------------------+
//     | personalities                     |  32 bits each: where the pointer to one lies in the library
//     +-----------------------------------+
//     | index                             |  for each page of functions: its first function, the page, its first LSDA;
//     |                                   |  one more without a page tells where the last function ends
//     +-----------------------------------+
//     | LSDAs                             |  a function of the library and its clean-ups, in the functions' order
//     +-----------------------------------+
//     | regular page: header,             |
//     |     functions and encodings       |  32 bits each
//     +-----------------------------------+
//     | compressed page: header,          |
//     |     functions,                    |  8 bits: the number of the encoding, the common ones first;
//     |                                   |  24 bits: the function, from the first one of the page
//     |     encodings of the page's own   |  32 bits each
//     +-----------------------------------+
//     | ...                               |
//     +-----------------------------------+
//
// An encoding:
//
//      31      30         29 28         27   24   23                                            0
//     +-------+----------+-------------+--------+-------------------------------------------------+
//     | start | has LSDA | personality | mode   | what the mode says about frame and registers    |
//     +-------+----------+-------------+--------+-------------------------------------------------+

struct unwind_info_section_header {
    std::uint32_t version;
    std::uint32_t commonEncodingsArraySectionOffset;
    std::uint32_t commonEncodingsArrayCount;
    std::uint32_t personalityArraySectionOffset;
    std::uint32_t personalityArrayCount;
    std::uint32_t indexSectionOffset;
    std::uint32_t indexCount;
};

struct unwind_info_section_header_index_entry {
    std::uint32_t functionOffset;
    std::uint32_t secondLevelPagesSectionOffset;
    std::uint32_t lsdaIndexArraySectionOffset;
};

struct unwind_info_section_header_lsda_index_entry {
    std::uint32_t functionOffset;
    std::uint32_t lsdaOffset;
};

struct unwind_info_regular_second_level_page_header {
    std::uint32_t kind;
    std::uint16_t entryPageOffset;
    std::uint16_t entryCount;
};
inline constexpr std::uint32_t UNWIND_SECOND_LEVEL_REGULAR = 2;

struct unwind_info_regular_second_level_entry {
    std::uint32_t functionOffset;
    std::uint32_t encoding;
};

struct unwind_info_compressed_second_level_page_header {
    std::uint32_t kind;
    std::uint16_t entryPageOffset;
    std::uint16_t entryCount;
    std::uint16_t encodingsPageOffset;
    std::uint16_t encodingsCount;
};
inline constexpr std::uint32_t UNWIND_SECOND_LEVEL_COMPRESSED = 3;

inline constexpr std::uint32_t UNWIND_HAS_LSDA = 0x40000000;
inline constexpr std::uint32_t UNWIND_PERSONALITY_MASK = 0x30000000;

using Index = unwind_info_section_header_index_entry;

[[noreturn]] void failOnTables()
{
    throw std::runtime_error("its unwind tables are damaged");
}

class Section {
public:
    explicit Section(Bytes bytes) : bytes_(bytes), header_(bytes.at<unwind_info_section_header>(0)) {}

    std::vector<Function> functions() const
    {
        std::vector<Function> functions;
        for (std::size_t i = 0; i + 1 < header_.indexCount; ++i) {
            readPage(indexEntry(i), indexEntry(i + 1), functions);
            // Each has a number of its own there.
            if (functions.size() > bytes_.size() / sizeof(std::uint32_t))
                failOnTables();
        }
        return functions;
    }

private:
    Index indexEntry(std::size_t i) const { return bytes_.at<Index>(header_.indexSectionOffset + i * sizeof(Index)); }
    std::uint32_t numberIn(std::size_t array, std::size_t i) const
    {
        return bytes_.at<std::uint32_t>(array + i * sizeof(std::uint32_t));
    }

    void readPage(const Index& entry, const Index& next, std::vector<Function>& functions) const
    {
        if (entry.secondLevelPagesSectionOffset == 0)
            return;
        const std::size_t first = functions.size();
        switch (numberIn(entry.secondLevelPagesSectionOffset, 0)) {
        case UNWIND_SECOND_LEVEL_REGULAR:
            readRegularPage(entry.secondLevelPagesSectionOffset, functions);
            break;
        case UNWIND_SECOND_LEVEL_COMPRESSED:
            readCompressedPage(entry.secondLevelPagesSectionOffset, entry.functionOffset, functions);
            break;
        default:
            failOnTables();
        }
        for (std::size_t i = first; i < functions.size(); ++i) {
            Function& function = functions[i];
            function.end = i + 1 < functions.size() ? functions[i + 1].start : next.functionOffset;
            function.personality = personalityOf(function.encoding);
            if ((function.encoding & UNWIND_HAS_LSDA) != 0)
                function.lsda = lsdaOf(function.start, entry, next);
        }
    }

    void readRegularPage(std::size_t offset, std::vector<Function>& functions) const
    {
        using Entry = unwind_info_regular_second_level_entry;
        const auto page = bytes_.at<unwind_info_regular_second_level_page_header>(offset);
        for (std::size_t i = 0; i < page.entryCount; ++i) {
            const auto entry = bytes_.at<Entry>(offset + page.entryPageOffset + i * sizeof(Entry));
            functions.push_back({entry.functionOffset, 0, entry.encoding, 0, 0});
        }
    }

    void readCompressedPage(std::size_t offset, std::uint32_t firstFunction, std::vector<Function>& functions) const
    {
        const auto page = bytes_.at<unwind_info_compressed_second_level_page_header>(offset);
        for (std::size_t i = 0; i < page.entryCount; ++i) {
            const std::uint32_t entry = numberIn(offset + page.entryPageOffset, i);
            const std::uint32_t number = entry >> 24;
            const std::uint32_t encoding =
                number < header_.commonEncodingsArrayCount
                    ? numberIn(header_.commonEncodingsArraySectionOffset, number)
                    : numberIn(offset + page.encodingsPageOffset, number - header_.commonEncodingsArrayCount);
            functions.push_back({firstFunction + (entry & 0xffffff), 0, encoding, 0, 0});
        }
    }

    std::uint32_t personalityOf(std::uint32_t encoding) const
    {
        const std::uint32_t number = (encoding & UNWIND_PERSONALITY_MASK) >> 28;
        return number == 0 || number > header_.personalityArrayCount
                   ? 0
                   : numberIn(header_.personalityArraySectionOffset, number - 1);
    }

    std::uint32_t lsdaOf(std::uint32_t function, const Index& entry, const Index& next) const
    {
        using Entry = unwind_info_section_header_lsda_index_entry;
        for (std::size_t offset = entry.lsdaIndexArraySectionOffset; offset < next.lsdaIndexArraySectionOffset;
             offset += sizeof(Entry)) {
            const auto lsda = bytes_.at<Entry>(offset);
            if (lsda.functionOffset == function)
                return lsda.lsdaOffset;
        }
        failOnTables();
    }

    Bytes bytes_;
    unwind_info_section_header header_;
};

} // namespace

std::vector<Function> readCompactUnwind(Bytes section)
{
    return Section(section).functions();
}

} // namespace simulator::macho
