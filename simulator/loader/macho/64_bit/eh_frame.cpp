#include "simulator/loader/macho/64_bit/eh_frame.hpp"

#include <algorithm>
#include <functional>
#include <map>
#include <string_view>
#include <utility>

#include "simulator/loader/macho/64_bit/compact_unwind.hpp"
#include "simulator/loader/macho/Segments.hpp"

/// Of libgcc: the tables must stay where they are.
extern "C" void __register_frame(const void* tables);
extern "C" void __deregister_frame(const void* tables);

namespace simulator::macho {

namespace {

/// DWARF's call frame instructions.
enum FrameInstruction : std::uint8_t {
    DW_CFA_offset_extended = 0x05,
    DW_CFA_def_cfa = 0x0c,
    DW_CFA_offset = 0x80,
};
/// A register's number that DW_CFA_offset has no room for.
constexpr std::uint8_t firstExtendedRegister = 0x40;
constexpr std::uint8_t DW_EH_PE_absptr = 0;

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
    void appendULEB128(std::size_t number)
    {
        for (; number >= 0x80; number >>= 7)
            append(static_cast<std::uint8_t>(number | 0x80));
        append(static_cast<std::uint8_t>(number));
    }

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

/// The common information entry of the functions with one personality (0: none).
std::size_t addCIE(FrameTables& tables, Word personality, std::uint8_t returnAddressRegister)
{
    return tables.add([&] {
        tables.append(std::uint32_t{0});
        tables.append(std::uint8_t{1}); // The version.
        tables.append(personality != 0 ? std::string_view("zPLR") : std::string_view("zR"));
        tables.appendULEB128(1);                          // The unit of code.
        tables.append(std::uint8_t{0x80 - sizeof(Word)}); // The unit of the frame, SLEB128: minus a word.
        tables.append(returnAddressRegister);
        if (personality != 0) {
            tables.appendULEB128(3 + sizeof(Word));
            tables.append(DW_EH_PE_absptr);
            tables.append(personality);
            tables.append(DW_EH_PE_absptr);
        } else {
            tables.appendULEB128(1);
        }
        tables.append(DW_EH_PE_absptr);
    });
}

/// The frame description entry of a function of the library that lies at `start`.
void addFDE(FrameTables& tables, std::size_t cie, const Function& function, const Frame& frame, Word start)
{
    tables.add([&] {
        tables.append(static_cast<std::uint32_t>(tables.size() - cie));
        tables.append(start + function.start);
        tables.append(Word{function.end - function.start});
        if (function.personality != 0) {
            tables.appendULEB128(sizeof(Word));
            tables.append(function.lsda != 0 ? start + function.lsda : Word{0});
        } else {
            tables.appendULEB128(0);
        }
        tables.append(DW_CFA_def_cfa);
        tables.appendULEB128(frame.base);
        tables.appendULEB128(frame.offset);
        for (const SavedRegister& saved : frame.saved) {
            if (saved.number < firstExtendedRegister) {
                tables.append(static_cast<std::uint8_t>(DW_CFA_offset | saved.number));
            } else {
                tables.append(DW_CFA_offset_extended);
                tables.appendULEB128(saved.number);
            }
            tables.appendULEB128(saved.wordsBelow);
        }
    });
}

/// In one of them, or at its end.
bool isInSegments(const MachOFile& file, Word address)
{
    return std::ranges::any_of(file.segments(), [address](const segment_command& segment) {
        return address >= segment.vmaddr && address - segment.vmaddr <= segment.vmsize;
    });
}

/// A pointer that the binding has filled, in one of the library's segments, which are protected by now.
Word boundPointer(const MachOFile& file, const std::byte* start, std::uint32_t offset)
{
    for (const segment_command& segment : file.segments()) {
        if ((segment.initprot & VM_PROT_READ) != 0 && offset >= segment.vmaddr && segment.vmsize >= sizeof(Word) &&
            offset - segment.vmaddr <= segment.vmsize - sizeof(Word))
            return load(start + offset);
    }
    throw std::runtime_error("its unwind tables are damaged");
}

} // namespace

UnwindTables registerEhFrame(const MachOFile& file, const std::byte* start, const FrameEncodings& encodings)
{
    const auto unwindInfo = std::ranges::find_if(file.sections(), [](const section& one) {
        return std::strncmp(one.sectname, "__unwind_info", sizeof one.sectname) == 0;
    });
    if (unwindInfo == file.sections().end())
        return {};

    FrameTables tables;
    std::map<std::uint32_t, std::size_t> cies;
    for (const Function& function : readCompactUnwind(file.slice().part(unwindInfo->offset, unwindInfo->size))) {
        const std::optional<Frame> frame = encodings.frameOf(function.encoding);
        if (!frame)
            continue;
        if (function.start > function.end || !isInSegments(file, function.start) || !isInSegments(file, function.end) ||
            !isInSegments(file, function.lsda))
            throw std::runtime_error("its unwind tables are damaged");
        if (!cies.contains(function.personality)) {
            const Word personality = function.personality == 0 ? 0 : boundPointer(file, start, function.personality);
            cies[function.personality] = addCIE(tables, personality, encodings.returnAddressRegister);
        }
        addFDE(tables, cies[function.personality], function, *frame, reinterpret_cast<Word>(start));
    }
    const auto forget = [](const std::vector<std::byte>* registered) {
        __deregister_frame(registered->data());
        delete registered;
    };
    const std::shared_ptr<const std::vector<std::byte>> finished(new std::vector<std::byte>(tables.finish()), forget);
    __register_frame(finished->data());
    return finished;
}

} // namespace simulator::macho
