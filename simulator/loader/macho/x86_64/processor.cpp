#include <iterator>

#include "simulator/loader/macho/64_bit/compact_unwind.hpp"
#include "simulator/loader/macho/64_bit/eh_frame.hpp"
#include "simulator/loader/macho/Processor.hpp"
#include "simulator/loader/macho/message_sends.hpp"

/// x86-64, the processor of the phone's simulator on a desk. Its calling convention is this machine's.
namespace simulator::macho {

namespace {

constexpr std::uint32_t UNWIND_X86_64_MODE_RBP_FRAME = 0x01000000;
constexpr std::uint32_t UNWIND_X86_64_RBP_FRAME_REGISTERS = 0x00007fff;
constexpr std::uint32_t UNWIND_X86_64_RBP_FRAME_OFFSET = 0x00ff0000;

constexpr std::uint8_t returnAddress = 16;
constexpr std::uint8_t rbp = 6;
/// From UNWIND_X86_64_REG_RBX, which is 1, to UNWIND_X86_64_REG_R15.
constexpr std::uint8_t savedRegisters[] = {3, 12, 13, 14, 15};

std::optional<Frame> frameOf(std::uint32_t encoding)
{
    const std::uint32_t firstBelow = 2 + ((encoding & UNWIND_X86_64_RBP_FRAME_OFFSET) >> 16);
    if ((encoding & UNWIND_MODE_MASK) != UNWIND_X86_64_MODE_RBP_FRAME || firstBelow > 0x7f)
        return std::nullopt;
    Frame frame{rbp, 16, {{returnAddress, 1}, {rbp, 2}}};
    auto wordsBelow = static_cast<std::uint8_t>(firstBelow);
    for (std::uint32_t registers = encoding & UNWIND_X86_64_RBP_FRAME_REGISTERS; registers != 0; registers >>= 3, --wordsBelow) {
        if (const std::uint32_t number = registers & 7; number >= 1 && number <= std::size(savedRegisters))
            frame.saved.push_back({savedRegisters[number - 1], wordsBelow});
    }
    return frame;
}

std::vector<EntryPoint> entryPoints()
{
    return {
        entryPoint("objc_msgSend", &phone_objc_msgSend),
        entryPoint("objc_msgSendSuper", &phone_objc_msgSendSuper),
        entryPoint("objc_msgSend_stret", &phone_objc_msgSend_stret),
        entryPoint("objc_msgSendSuper_stret", &phone_objc_msgSendSuper_stret),
    };
}

UnwindTables registerUnwindTables(const MachOFile& file, const std::byte* start)
{
    return registerEhFrame(file, start, {returnAddress, &frameOf});
}

} // namespace

constinit const Processor thisProcessor{
    .cputype = CPU_TYPE_X86_64,
    .entryPoints = &entryPoints,
    .registerUnwindTables = &registerUnwindTables,
};

} // namespace simulator::macho
