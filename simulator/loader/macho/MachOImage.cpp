#include "simulator/loader/macho/MachOImage.hpp"

#include <algorithm>
#include <dlfcn.h>
#include <fstream>
#include <functional>
#include <limits>
#include <set>
#include <sys/mman.h>

#include "simulator/loader/macho/phone_entry_points.hpp"
#include "simulator/loader/macho/unwind_tables.hpp"

namespace simulator {

namespace {

using namespace macho;

/// Larger than the pages of any of the processors.
constexpr std::size_t pageSize = 0x4000;

constexpr std::size_t wholePages(std::size_t size)
{
    return (size + pageSize - 1) / pageSize * pageSize;
}

[[noreturn]] void failOnInstruction()
{
    throw std::runtime_error("it has a loading instruction that is unknown or out of place");
}

/// The segments of a file in memory, writable as long as they are being prepared.
class Segments {
public:
    explicit Segments(const MachOFile& file) : file_(file)
    {
        std::size_t end = 0;
        for (const SegmentCommand& segment : file.segments()) {
            if (segment.memorySize > std::numeric_limits<std::uint32_t>::max() ||
                segment.address > std::numeric_limits<std::uint32_t>::max())
                throw std::runtime_error("a segment does not fit into memory");
            end = std::max<std::size_t>(end, segment.address + segment.memorySize);
        }
        pages_ = Pages(wholePages(end), PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1);
        for (const SegmentCommand& segment : file.segments()) {
            const Bytes content = file.slice().part(segment.fileOffset, segment.fileSize);
            std::memcpy(pages_.data() + segment.address, content.data(), content.size());
        }
    }

    /// A library is linked to be at address 0.
    std::byte* at(Word address) const { return pages_.data() + address; }

    /// Where a pointer of the library lies.
    std::byte* pointerAt(Word address) const
    {
        if (address > pages_.size() || pages_.size() - address < sizeof(Word))
            throw std::runtime_error("a pointer lies outside of its segments");
        return at(address);
    }
    std::byte* pointerAt(std::size_t segment, Word offset) const
    {
        if (segment >= file_.segments().size() || offset >= file_.segments()[segment].memorySize)
            failOnInstruction();
        return pointerAt(file_.segments()[segment].address + offset);
    }
    /// No instruction is for more pointers than there is room for.
    void checkCount(std::uint64_t count) const
    {
        if (count > pages_.size() / sizeof(Word))
            failOnInstruction();
    }

    /// Gives the pages over, protected as the file demands.
    Pages protect()
    {
        for (const SegmentCommand& segment : file_.segments()) {
            int protection = PROT_NONE;
            protection |= (segment.protection & readable) != 0 ? PROT_READ : 0;
            protection |= (segment.protection & writable) != 0 ? PROT_WRITE : 0;
            protection |= (segment.protection & executable) != 0 ? PROT_EXEC : 0;
            auto* const first = reinterpret_cast<char*>(at(segment.address));
            __builtin___clear_cache(first, first + segment.memorySize);
            if (::mprotect(first, segment.memorySize, protection) != 0)
                throw std::runtime_error("a segment does not begin at a page");
        }
        return std::move(pages_);
    }

private:
    const MachOFile& file_;
    Pages pages_;
};

Word load(const std::byte* pointer)
{
    Word value;
    std::memcpy(&value, pointer, sizeof value);
    return value;
}

void store(std::byte* pointer, Word value)
{
    std::memcpy(pointer, &value, sizeof value);
}

/// Adds to each pointer into the library where the library has come to lie.
void rebase(const MachOFile& file, const Segments& segments)
{
    Reader instructions(file.rebaseInstructions());
    std::size_t segment = 0;
    Word offset = 0;
    const auto rebaseTimes = [&](std::uint64_t count, Word skipped) {
        segments.checkCount(count);
        for (std::uint64_t i = 0; i < count; ++i) {
            std::byte* const pointer = segments.pointerAt(segment, offset);
            store(pointer, load(pointer) + reinterpret_cast<Word>(segments.at(0)));
            offset += sizeof(Word) + skipped;
        }
    };
    while (!instructions.atEnd()) {
        const std::uint8_t instruction = instructions.byte();
        const std::uint8_t immediate = instruction & static_cast<std::uint8_t>(~opcodeMask);
        switch (instruction & opcodeMask) {
        case REBASE_DONE:
            return;
        case REBASE_SET_TYPE:
            if (immediate != pointerType)
                failOnInstruction();
            break;
        case REBASE_SET_SEGMENT_AND_OFFSET:
            segment = immediate;
            offset = instructions.number();
            break;
        case REBASE_ADD_ADDRESS:
            offset += instructions.number();
            break;
        case REBASE_ADD_ADDRESS_SCALED:
            offset += immediate * sizeof(Word);
            break;
        case REBASE_TIMES_IMMEDIATE:
            rebaseTimes(immediate, 0);
            break;
        case REBASE_TIMES:
            rebaseTimes(instructions.number(), 0);
            break;
        case REBASE_ADD_ADDRESS_AFTER:
            rebaseTimes(1, instructions.number());
            break;
        case REBASE_TIMES_SKIPPING: {
            const std::uint64_t count = instructions.number();
            rebaseTimes(count, instructions.number());
            break;
        }
        default:
            failOnInstruction();
        }
    }
}

/// The symbol of this process, which stands for all of the phone's libraries; null when there is none.
void* resolve(const std::string& symbol)
{
    if (!symbol.starts_with('_'))
        return phoneEntryPoint(symbol);
    const std::string name = symbol.substr(1);
    void* const found = phoneEntryPoint(name);
    return found != nullptr ? found : dlsym(RTLD_DEFAULT, name.c_str());
}

/// The same for a symbol that the library calls.
void* resolveFunction(const std::string& symbol)
{
    void* const found = resolve(symbol);
    return found == nullptr || found == phoneEntryPoint(symbol.substr(1)) ? found : callableByThePhone(found);
}

/// Writes the addresses of the symbols that the library takes from others.
void bindSymbols(Bytes bytes, void* (*resolve)(const std::string&), const MachOFile& file, const Segments& segments)
{
    Reader instructions(bytes);
    std::size_t library = 0;
    std::string symbol;
    bool mayBeMissing = false;
    std::int64_t addend = 0;
    std::size_t segment = 0;
    Word offset = 0;
    const auto bindOnce = [&](Word skipped) {
        void* const address = resolve(symbol);
        if (address == nullptr && !mayBeMissing)
            throw std::runtime_error(
                "the symbol " + symbol + " is missing" +
                (library >= 1 && library <= file.libraries().size() ? " in " + file.libraries()[library - 1] : ""));
        store(segments.pointerAt(segment, offset), reinterpret_cast<Word>(address) + static_cast<Word>(addend));
        offset += sizeof(Word) + skipped;
    };
    while (!instructions.atEnd()) {
        const std::uint8_t instruction = instructions.byte();
        const std::uint8_t immediate = instruction & static_cast<std::uint8_t>(~opcodeMask);
        switch (instruction & opcodeMask) {
        case BIND_DONE:
            break; // Lazy ones have one each.
        case BIND_SET_LIBRARY_IMMEDIATE:
            library = immediate;
            break;
        case BIND_SET_LIBRARY:
            library = instructions.number();
            break;
        case BIND_SET_LIBRARY_SPECIAL:
            library = 0;
            break;
        case BIND_SET_SYMBOL:
            mayBeMissing = (immediate & weakImport) != 0;
            symbol = instructions.text();
            break;
        case BIND_SET_TYPE:
            if (immediate != pointerType)
                failOnInstruction();
            break;
        case BIND_SET_ADDEND:
            addend = instructions.signedNumber();
            break;
        case BIND_SET_SEGMENT_AND_OFFSET:
            segment = immediate;
            offset = instructions.number();
            break;
        case BIND_ADD_ADDRESS:
            offset += instructions.number();
            break;
        case BIND:
            bindOnce(0);
            break;
        case BIND_ADD_ADDRESS_AFTER:
            bindOnce(instructions.number());
            break;
        case BIND_ADD_ADDRESS_SCALED_AFTER:
            bindOnce(immediate * sizeof(Word));
            break;
        case BIND_TIMES_SKIPPING: {
            const std::uint64_t count = instructions.number();
            const Word skipped = instructions.number();
            segments.checkCount(count);
            for (std::uint64_t i = 0; i < count; ++i)
                bindOnce(skipped);
            break;
        }
        default:
            failOnInstruction();
        }
    }
}

/// Visits each name of an exports trie with the address, relative to the library, that it stands for.
class ExportsWalk {
public:
    using Visit = std::function<void(const std::string&, Word)>;

    ExportsWalk(Bytes trie, Visit visit) : trie_(trie), visit_(std::move(visit)) {}

    void walk(std::size_t node, const std::string& name)
    {
        constexpr std::size_t longestName = 4096;
        // Each step adds to the name and comes to a node of its own, or the walk would not come to an end.
        if (name.size() > longestName || !visited_.insert(node).second)
            throw std::runtime_error("its table of exports is damaged");
        Reader reader(trie_, node);
        const std::uint64_t size = reader.number();
        const std::size_t content = reader.offset();
        if (size != 0) {
            if (reader.number() != plainExport)
                throw std::runtime_error("it exports in a way that is not known");
            visit_(name, reader.number());
        }
        Reader children(trie_, content + size);
        for (std::uint8_t count = children.byte(); count != 0; --count) {
            const std::string label = children.text();
            walk(children.number(), name + label);
        }
    }

private:
    Bytes trie_;
    Visit visit_;
    std::set<std::size_t> visited_;
};

bool isCode(const MachOFile& file, Word address)
{
    return std::ranges::any_of(file.segments(), [address](const SegmentCommand& segment) {
        return (segment.protection & executable) != 0 && address - segment.address < segment.memorySize;
    });
}

std::vector<ExportedSymbol> readExports(const MachOFile& file, const Segments& segments)
{
    std::vector<ExportedSymbol> exports;
    if (file.exportsTrie().size() == 0)
        return exports;
    ExportsWalk walk(file.exportsTrie(), [&](const std::string& symbol, Word address) {
        const bool isFunction = isCode(file, address);
        exports.push_back({symbol.starts_with('_') ? symbol.substr(1) : symbol,
                           isFunction ? callableByThisMachine(segments.at(address)) : segments.at(address),
                           isFunction ? ExportedSymbol::Kind::function : ExportedSymbol::Kind::variable, !isFunction});
    });
    walk.walk(0, "");
    return exports;
}

std::vector<void (*)()> readInitialisers(const MachOFile& file, const Segments& segments)
{
    std::vector<void (*)()> initialisers;
    for (const Section& section : file.sections()) {
        if ((section.flags & sectionTypeMask) != moduleInitialisers)
            continue;
        for (Word offset = 0; offset < section.size; offset += sizeof(Word))
            initialisers.push_back(reinterpret_cast<void (*)()>(
                callableByThisMachine(reinterpret_cast<void*>(load(segments.pointerAt(section.address + offset))))));
    }
    return initialisers;
}

} // namespace

bool isMachO(const std::filesystem::path& file)
{
    std::uint32_t number = 0;
    std::ifstream(file, std::ios::binary).read(reinterpret_cast<char*>(&number), sizeof number);
    return number == magic32 || number == magic64 || number == __builtin_bswap32(fatMagic);
}

MachOImage::MachOImage(const std::filesystem::path& file) : MachOImage(MachOFile(file))
{
}

MachOImage::MachOImage(const MachOFile& file)
{
    Segments segments(file);
    rebase(file, segments);
    bindSymbols(file.bindInstructions(), &resolve, file, segments);
    bindSymbols(file.lazyBindInstructions(), &resolveFunction, file, segments);
    exports_ = readExports(file, segments);
    initialisers_ = readInitialisers(file, segments);
    const std::byte* const start = segments.at(0);
    memory_ = segments.protect();
    unwindTables_ = registerUnwindTables(file, start);
}

void MachOImage::runInitialisers() noexcept
{
    for (const auto initialiser : initialisers_)
        initialiser();
}

bool MachOImage::contains(const void* address) const
{
    const auto* const byte = static_cast<const std::byte*>(address);
    return std::less_equal<>()(memory_.data(), byte) && std::less<>()(byte, memory_.data() + memory_.size());
}

} // namespace simulator
