#if !defined(__arm__)

#include "simulator/loader/macho/unwind_tables.hpp"

#include <algorithm>
#include <cstring>
#include <functional>
#include <map>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

/// Of libgcc: the tables must stay where they are.
extern "C" void __register_frame(const void* tables);

namespace simulator::macho {

namespace {

/// The table of tables at the start of the unwind section.
struct UnwindHeader {
    std::uint32_t version;
    std::uint32_t commonEncodingsOffset;
    std::uint32_t commonEncodingsCount;
    std::uint32_t personalitiesOffset;
    std::uint32_t personalitiesCount;
    std::uint32_t indexOffset;
    std::uint32_t indexCount;
};

/// A page of functions. The last entry of the index has no page; it tells where the last function ends.
struct IndexEntry {
    std::uint32_t functionOffset;
    std::uint32_t pageOffset;
    std::uint32_t lsdaIndexOffset;
};

struct LsdaEntry {
    std::uint32_t functionOffset;
    std::uint32_t lsdaOffset;
};

struct RegularPage {
    std::uint32_t kind;
    std::uint16_t entriesOffset;
    std::uint16_t entriesCount;
};
inline constexpr std::uint32_t regularPage = 2;

struct RegularEntry {
    std::uint32_t functionOffset;
    std::uint32_t encoding;
};

struct CompressedPage {
    std::uint32_t kind;
    std::uint16_t entriesOffset;
    std::uint16_t entriesCount;
    std::uint16_t encodingsOffset;
    std::uint16_t encodingsCount;
};
inline constexpr std::uint32_t compressedPage = 3;

inline constexpr std::uint32_t hasLsda = 0x40000000;
inline constexpr std::uint32_t modeMask = 0x0f000000;

constexpr std::uint32_t personalityNumber(std::uint32_t encoding)
{
    return (encoding >> 28) & 3;
}

/// Offsets are from the start of the library.
struct Function {
    std::uint32_t start;
    std::uint32_t end;
    std::uint32_t encoding;
    std::uint32_t lsda;
};

std::uint32_t lsdaOf(std::uint32_t function, Bytes tables, const IndexEntry& entry, const IndexEntry& next)
{
    for (std::size_t offset = entry.lsdaIndexOffset; offset < next.lsdaIndexOffset; offset += sizeof(LsdaEntry)) {
        const auto lsda = tables.at<LsdaEntry>(offset);
        if (lsda.functionOffset == function)
            return lsda.lsdaOffset;
    }
    throw std::runtime_error("its unwind tables are damaged");
}

void readRegularPage(Bytes tables, const IndexEntry& entry, std::vector<Function>& functions)
{
    const auto page = tables.at<RegularPage>(entry.pageOffset);
    for (std::size_t i = 0; i < page.entriesCount; ++i) {
        const auto function = tables.at<RegularEntry>(entry.pageOffset + page.entriesOffset + i * sizeof(RegularEntry));
        functions.push_back({function.functionOffset, 0, function.encoding, 0});
    }
}

void readCompressedPage(Bytes tables, const UnwindHeader& header, const IndexEntry& entry, std::vector<Function>& functions)
{
    const auto page = tables.at<CompressedPage>(entry.pageOffset);
    for (std::size_t i = 0; i < page.entriesCount; ++i) {
        const auto function = tables.at<std::uint32_t>(entry.pageOffset + page.entriesOffset + i * sizeof(std::uint32_t));
        const std::uint32_t number = function >> 24;
        const std::size_t encoding =
            number < header.commonEncodingsCount
                ? header.commonEncodingsOffset + number * sizeof(std::uint32_t)
                : entry.pageOffset + page.encodingsOffset + (number - header.commonEncodingsCount) * sizeof(std::uint32_t);
        functions.push_back({entry.functionOffset + (function & 0xffffff), 0, tables.at<std::uint32_t>(encoding), 0});
    }
}

std::vector<Function> readFunctions(Bytes tables)
{
    const auto header = tables.at<UnwindHeader>(0);
    const auto indexEntry = [&](std::size_t i) { return tables.at<IndexEntry>(header.indexOffset + i * sizeof(IndexEntry)); };
    std::vector<Function> functions;
    for (std::size_t i = 0; i + 1 < header.indexCount; ++i) {
        const IndexEntry entry = indexEntry(i);
        if (entry.pageOffset == 0)
            continue;
        const std::size_t first = functions.size();
        switch (tables.at<std::uint32_t>(entry.pageOffset)) {
        case regularPage:
            readRegularPage(tables, entry, functions);
            break;
        case compressedPage:
            readCompressedPage(tables, header, entry, functions);
            break;
        default:
            throw std::runtime_error("its unwind tables are damaged");
        }
        for (std::size_t j = first; j < functions.size(); ++j) {
            functions[j].end = j + 1 < functions.size() ? functions[j + 1].start : indexEntry(i + 1).functionOffset;
            if ((functions[j].encoding & hasLsda) != 0)
                functions[j].lsda = lsdaOf(functions[j].start, tables, entry, indexEntry(i + 1));
        }
    }
    return functions;
}

/// DWARF call frame instructions.
enum FrameInstruction : std::uint8_t {
    DW_CFA_offset_extended = 0x05,
    DW_CFA_def_cfa = 0x0c,
    DW_CFA_offset = 0x80,
};
inline constexpr std::uint8_t absolutePointer = 0;

/// The memory of one table after the other, in .eh_frame's form.
class FrameTables {
public:
    /// Gives the place of the table. `content` appends what follows the length.
    std::size_t add(const std::function<void()>& content)
    {
        const std::size_t start = bytes_.size();
        append(std::uint32_t{0});
        content();
        // What fills up is DW_CFA_nop.
        while (bytes_.size() % sizeof(Word) != 0)
            append(std::uint8_t{0});
        const auto length = static_cast<std::uint32_t>(bytes_.size() - start - sizeof(std::uint32_t));
        std::memcpy(bytes_.data() + start, &length, sizeof length);
        return start;
    }

    template <class T>
    void append(T value)
    {
        const auto* const first = reinterpret_cast<const std::byte*>(&value);
        bytes_.insert(bytes_.end(), first, first + sizeof value);
    }
    void append(std::string_view text)
    {
        for (const char character : text)
            append(static_cast<std::uint8_t>(character));
        append(std::uint8_t{0});
    }
    /// A number of LEB128 below 128.
    void appendSmall(std::size_t number) { append(static_cast<std::uint8_t>(number)); }

    std::size_t size() const { return bytes_.size(); }

    /// Ends the tables and gives them over.
    std::vector<std::byte> finish()
    {
        append(std::uint32_t{0});
        return std::move(bytes_);
    }

private:
    std::vector<std::byte> bytes_;
};

/// What a function saved, in words below the frame's address (the caller's stack pointer).
struct SavedRegister {
    std::uint8_t number;
    std::uint8_t wordsBelow;
};

struct Frame {
    /// The frame's address is so many bytes above this register.
    std::uint8_t base;
    std::uint32_t offset;
    std::vector<SavedRegister> saved;
};

#if defined(__x86_64__)

inline constexpr std::uint8_t returnAddressRegister = 16;

/// The DWARF number of the register that a compact encoding counts.
std::uint8_t dwarfRegister(std::uint32_t number)
{
    constexpr std::uint8_t numbers[] = {3, 12, 13, 14, 15};
    return numbers[number - 1];
}

std::optional<Frame> frameOf(std::uint32_t encoding)
{
    constexpr std::uint32_t framePointerMode = 0x01000000;
    constexpr std::uint8_t framePointer = 6;
    switch (encoding & modeMask) {
    case framePointerMode: {
        Frame frame{framePointer, 16, {{returnAddressRegister, 1}, {framePointer, 2}}};
        const std::uint32_t firstBelow = 2 + ((encoding >> 16) & 0xff);
        if (firstBelow > 0x7f)
            return std::nullopt;
        auto wordsBelow = static_cast<std::uint8_t>(firstBelow);
        for (std::uint32_t registers = encoding & 0x7fff; registers != 0; registers >>= 3, --wordsBelow) {
            if (const std::uint32_t number = registers & 7; number >= 1 && number <= 5)
                frame.saved.push_back({dwarfRegister(number), wordsBelow});
        }
        return frame;
    }
    default:
        return std::nullopt;
    }
}

#elif defined(__aarch64__)

inline constexpr std::uint8_t returnAddressRegister = 30;

std::optional<Frame> frameOf(std::uint32_t encoding)
{
    constexpr std::uint32_t framelessMode = 0x02000000;
    constexpr std::uint32_t frameMode = 0x04000000;
    constexpr std::uint8_t framePointer = 29;
    constexpr std::uint8_t stackPointer = 31;
    constexpr std::uint8_t firstVector = 64;
    /// Bit by bit, the first registers of the pairs that a function saves one below the other.
    constexpr std::pair<std::uint32_t, std::uint8_t> pairs[] = {
        {0x001, 19},
        {0x002, 21},
        {0x004, 23},
        {0x008, 25},
        {0x010, 27},
        {0x100, firstVector + 8},
        {0x200, firstVector + 10},
        {0x400, firstVector + 12},
        {0x800, firstVector + 14},
    };

    Frame frame;
    std::uint8_t wordsBelow = 1;
    switch (encoding & modeMask) {
    case framelessMode:
        frame = {stackPointer, ((encoding >> 12) & 0xfff) * 16, {}};
        break;
    case frameMode:
        frame = {framePointer, 16, {{returnAddressRegister, 1}, {framePointer, 2}}};
        wordsBelow = 3;
        break;
    default:
        return std::nullopt;
    }
    for (const auto& [bit, first] : pairs) {
        if ((encoding & bit) == 0)
            continue;
        frame.saved.push_back({first, wordsBelow++});
        frame.saved.push_back({static_cast<std::uint8_t>(first + 1), wordsBelow++});
    }
    return frame;
}

#endif

/// What is common to the functions with one personality (0: none).
std::size_t addCommon(FrameTables& tables, Word personality)
{
    return tables.add([&] {
        tables.append(std::uint32_t{0});
        tables.append(std::uint8_t{1});
        tables.append(personality != 0 ? std::string_view("zPLR") : std::string_view("zR"));
        tables.appendSmall(1);                            // The unit of code.
        tables.append(std::uint8_t{0x80 - sizeof(Word)}); // The unit of the frame, signed: minus a word.
        tables.append(returnAddressRegister);
        if (personality != 0) {
            tables.appendSmall(3 + sizeof(Word));
            tables.append(absolutePointer);
            tables.append(personality);
            tables.append(absolutePointer);
        } else {
            tables.appendSmall(1);
        }
        tables.append(absolutePointer);
    });
}

void addFunction(FrameTables& tables, std::size_t common, const Function& function, const Frame& frame, Word start)
{
    tables.add([&] {
        tables.append(static_cast<std::uint32_t>(tables.size() - common));
        tables.append(start + function.start);
        tables.append(Word{function.end - function.start});
        if (personalityNumber(function.encoding) != 0) {
            tables.appendSmall(sizeof(Word));
            tables.append(function.lsda != 0 ? start + function.lsda : Word{0});
        } else {
            tables.appendSmall(0);
        }
        tables.append(DW_CFA_def_cfa);
        tables.append(frame.base);
        tables.append(static_cast<std::uint8_t>((frame.offset & 0x7f) | 0x80));
        tables.append(static_cast<std::uint8_t>((frame.offset >> 7 & 0x7f) | 0x80));
        tables.append(static_cast<std::uint8_t>(frame.offset >> 14));
        for (const SavedRegister& saved : frame.saved) {
            if (saved.number < 64) {
                tables.append(static_cast<std::uint8_t>(DW_CFA_offset | saved.number));
            } else {
                tables.append(DW_CFA_offset_extended);
                tables.append(saved.number);
            }
            tables.append(saved.wordsBelow);
        }
    });
}

/// A pointer that the binding has filled, in one of the library's segments.
Word boundPointer(const MachOFile& file, const std::byte* start, std::uint32_t offset)
{
    for (const SegmentCommand& segment : file.segments()) {
        if (offset >= segment.address && segment.memorySize >= sizeof(Word) &&
            offset - segment.address <= segment.memorySize - sizeof(Word)) {
            Word value;
            std::memcpy(&value, start + offset, sizeof value);
            return value;
        }
    }
    throw std::runtime_error("its unwind tables are damaged");
}

} // namespace

std::vector<std::byte> registerUnwindTables(const MachOFile& file, const std::byte* start)
{
    const auto section = std::ranges::find_if(file.sections(), [](const Section& section) {
        return std::strncmp(section.name, "__unwind_info", sizeof section.name) == 0;
    });
    if (section == file.sections().end())
        return {};
    const Bytes bytes = file.slice().part(section->fileOffset, section->size);
    const auto header = bytes.at<UnwindHeader>(0);

    FrameTables tables;
    std::map<std::uint32_t, std::size_t> commons;
    for (const Function& function : readFunctions(bytes)) {
        const std::optional<Frame> frame = frameOf(function.encoding);
        if (!frame)
            continue;
        const std::uint32_t number = personalityNumber(function.encoding);
        if (!commons.contains(number)) {
            const Word personality =
                number == 0 || number > header.personalitiesCount
                    ? 0
                    : boundPointer(file, start,
                                   bytes.at<std::uint32_t>(header.personalitiesOffset + (number - 1) * sizeof(std::uint32_t)));
            commons[number] = addCommon(tables, personality);
        }
        addFunction(tables, commons[number], function, *frame, reinterpret_cast<Word>(start));
    }
    std::vector<std::byte> finished = tables.finish();
    __register_frame(finished.data());
    return finished;
}

} // namespace simulator::macho

#endif
