#include "simulator/loader/macho/fixups.hpp"

#include <dlfcn.h>

#include "simulator/loader/macho/Processor.hpp"
#include "simulator/loader/macho/phone_entry_points.hpp"

namespace simulator::macho {

namespace {

[[noreturn]] void failOnInstruction()
{
    throw std::runtime_error("it has a loading instruction that is unknown or out of place");
}

/// All instructions together are for no more pointers than there is room for.
class PointersLeft {
public:
    explicit PointersLeft(const Segments& segments) : count_(segments.mostPointers()) {}

    void take(std::uint64_t count)
    {
        if (count > count_)
            failOnInstruction();
        count_ -= count;
    }

private:
    std::uint64_t count_;
};

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
    return found == nullptr || found == phoneEntryPoint(symbol.substr(1)) ? found : thisProcessor.callableByThePhone(found);
}

void followBindInstructions(Bytes bytes, void* (*resolve)(const std::string&), const MachOFile& file, const Segments& segments)
{
    Reader instructions(bytes);
    std::size_t library = 0;
    std::string symbol;
    bool mayBeMissing = false;
    std::int64_t addend = 0;
    std::size_t segment = 0;
    Word offset = 0;
    PointersLeft left(segments);
    const auto bindOnce = [&](Word skipped) {
        left.take(1);
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
        const std::uint8_t immediate = instruction & BIND_IMMEDIATE_MASK;
        switch (instruction & BIND_OPCODE_MASK) {
        case BIND_OPCODE_DONE:
            break; // Lazy ones have one each.
        case BIND_OPCODE_SET_DYLIB_ORDINAL_IMM:
            library = immediate;
            break;
        case BIND_OPCODE_SET_DYLIB_ORDINAL_ULEB:
            library = instructions.uleb128();
            break;
        case BIND_OPCODE_SET_DYLIB_SPECIAL_IMM:
            library = 0;
            break;
        case BIND_OPCODE_SET_SYMBOL_TRAILING_FLAGS_IMM:
            mayBeMissing = (immediate & BIND_SYMBOL_FLAGS_WEAK_IMPORT) != 0;
            symbol = instructions.text();
            break;
        case BIND_OPCODE_SET_TYPE_IMM:
            if (immediate != BIND_TYPE_POINTER)
                failOnInstruction();
            break;
        case BIND_OPCODE_SET_ADDEND_SLEB:
            addend = instructions.sleb128();
            break;
        case BIND_OPCODE_SET_SEGMENT_AND_OFFSET_ULEB:
            segment = immediate;
            offset = instructions.uleb128();
            break;
        case BIND_OPCODE_ADD_ADDR_ULEB:
            offset += instructions.uleb128();
            break;
        case BIND_OPCODE_DO_BIND:
            bindOnce(0);
            break;
        case BIND_OPCODE_DO_BIND_ADD_ADDR_ULEB:
            bindOnce(instructions.uleb128());
            break;
        case BIND_OPCODE_DO_BIND_ADD_ADDR_IMM_SCALED:
            bindOnce(immediate * sizeof(Word));
            break;
        case BIND_OPCODE_DO_BIND_ULEB_TIMES_SKIPPING_ULEB: {
            const std::uint64_t count = instructions.uleb128();
            const Word skipped = instructions.uleb128();
            for (std::uint64_t i = 0; i < count; ++i)
                bindOnce(skipped);
            break;
        }
        default:
            failOnInstruction();
        }
    }
}

} // namespace

void rebase(const MachOFile& file, const Segments& segments)
{
    Reader instructions(file.rebaseInstructions());
    std::size_t segment = 0;
    Word offset = 0;
    PointersLeft left(segments);
    const auto rebaseTimes = [&](std::uint64_t count, Word skipped) {
        left.take(count);
        for (std::uint64_t i = 0; i < count; ++i) {
            std::byte* const pointer = segments.pointerAt(segment, offset);
            // It may point to the end of something.
            if (!segments.holds(load(pointer), 0, 0))
                throw std::runtime_error("a pointer points outside of its segments");
            store(pointer, load(pointer) + reinterpret_cast<Word>(segments.at(0)));
            offset += sizeof(Word) + skipped;
        }
    };
    while (!instructions.atEnd()) {
        const std::uint8_t instruction = instructions.byte();
        const std::uint8_t immediate = instruction & REBASE_IMMEDIATE_MASK;
        switch (instruction & REBASE_OPCODE_MASK) {
        case REBASE_OPCODE_DONE:
            return;
        case REBASE_OPCODE_SET_TYPE_IMM:
            if (immediate != REBASE_TYPE_POINTER)
                failOnInstruction();
            break;
        case REBASE_OPCODE_SET_SEGMENT_AND_OFFSET_ULEB:
            segment = immediate;
            offset = instructions.uleb128();
            break;
        case REBASE_OPCODE_ADD_ADDR_ULEB:
            offset += instructions.uleb128();
            break;
        case REBASE_OPCODE_ADD_ADDR_IMM_SCALED:
            offset += immediate * sizeof(Word);
            break;
        case REBASE_OPCODE_DO_REBASE_IMM_TIMES:
            rebaseTimes(immediate, 0);
            break;
        case REBASE_OPCODE_DO_REBASE_ULEB_TIMES:
            rebaseTimes(instructions.uleb128(), 0);
            break;
        case REBASE_OPCODE_DO_REBASE_ADD_ADDR_ULEB:
            rebaseTimes(1, instructions.uleb128());
            break;
        case REBASE_OPCODE_DO_REBASE_ULEB_TIMES_SKIPPING_ULEB: {
            const std::uint64_t count = instructions.uleb128();
            rebaseTimes(count, instructions.uleb128());
            break;
        }
        default:
            failOnInstruction();
        }
    }
}

void bind(const MachOFile& file, const Segments& segments)
{
    followBindInstructions(file.bindInstructions(), &resolve, file, segments);
    followBindInstructions(file.lazyBindInstructions(), &resolveFunction, file, segments);
}

} // namespace simulator::macho
