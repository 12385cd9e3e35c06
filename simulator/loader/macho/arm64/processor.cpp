#include <utility>

#include "simulator/loader/macho/64_bit/compact_unwind.hpp"
#include "simulator/loader/macho/64_bit/eh_frame.hpp"
#include "simulator/loader/macho/Processor.hpp"
#include "simulator/loader/macho/arm64/small_arguments.hpp"
#include "simulator/loader/macho/arm64/variable_arguments.hpp"
#include "simulator/loader/macho/message_sends.hpp"

/// arm64, the processor of the 64-bit phones.
namespace simulator::macho {

namespace {

constexpr std::uint32_t UNWIND_ARM64_MODE_FRAMELESS = 0x02000000;
constexpr std::uint32_t UNWIND_ARM64_MODE_FRAME = 0x04000000;
constexpr std::uint32_t UNWIND_ARM64_FRAMELESS_STACK_SIZE_MASK = 0x00fff000;
constexpr std::uint32_t UNWIND_ARM64_FRAME_X19_X20_PAIR = 0x001;
constexpr std::uint32_t UNWIND_ARM64_FRAME_X21_X22_PAIR = 0x002;
constexpr std::uint32_t UNWIND_ARM64_FRAME_X23_X24_PAIR = 0x004;
constexpr std::uint32_t UNWIND_ARM64_FRAME_X25_X26_PAIR = 0x008;
constexpr std::uint32_t UNWIND_ARM64_FRAME_X27_X28_PAIR = 0x010;
constexpr std::uint32_t UNWIND_ARM64_FRAME_D8_D9_PAIR = 0x100;
constexpr std::uint32_t UNWIND_ARM64_FRAME_D10_D11_PAIR = 0x200;
constexpr std::uint32_t UNWIND_ARM64_FRAME_D12_D13_PAIR = 0x400;
constexpr std::uint32_t UNWIND_ARM64_FRAME_D14_D15_PAIR = 0x800;

constexpr std::uint8_t framePointer = 29;
constexpr std::uint8_t returnAddress = 30;
constexpr std::uint8_t stackPointer = 31;
constexpr std::uint8_t firstVector = 64;
/// The first registers of the pairs that a function saves one below the other, in this order.
constexpr std::pair<std::uint32_t, std::uint8_t> pairs[] = {
    {UNWIND_ARM64_FRAME_X19_X20_PAIR, 19},
    {UNWIND_ARM64_FRAME_X21_X22_PAIR, 21},
    {UNWIND_ARM64_FRAME_X23_X24_PAIR, 23},
    {UNWIND_ARM64_FRAME_X25_X26_PAIR, 25},
    {UNWIND_ARM64_FRAME_X27_X28_PAIR, 27},
    {UNWIND_ARM64_FRAME_D8_D9_PAIR, firstVector + 8},
    {UNWIND_ARM64_FRAME_D10_D11_PAIR, firstVector + 10},
    {UNWIND_ARM64_FRAME_D12_D13_PAIR, firstVector + 12},
    {UNWIND_ARM64_FRAME_D14_D15_PAIR, firstVector + 14},
};

std::optional<Frame> frameOf(std::uint32_t encoding)
{
    Frame frame;
    std::uint8_t wordsBelow = 1;
    switch (encoding & UNWIND_MODE_MASK) {
    case UNWIND_ARM64_MODE_FRAMELESS:
        frame = {stackPointer, ((encoding & UNWIND_ARM64_FRAMELESS_STACK_SIZE_MASK) >> 12) * 16, {}};
        break;
    case UNWIND_ARM64_MODE_FRAME:
        frame = {framePointer, 16, {{returnAddress, 1}, {framePointer, 2}}};
        wordsBelow = 3;
        break;
    default:
        return std::nullopt;
    }
    for (const auto& [pair, first] : pairs) {
        if ((encoding & pair) == 0)
            continue;
        frame.saved.push_back({first, wordsBelow++});
        frame.saved.push_back({static_cast<std::uint8_t>(first + 1), wordsBelow++});
    }
    return frame;
}

std::vector<EntryPoint> entryPoints()
{
    return {
        entryPoint("objc_msgSend", &phone_objc_msgSend),
        entryPoint("objc_msgSendSuper", &phone_objc_msgSendSuper),
        entryPoint("NSLog", &phoneLog),
        entryPoint("class_addMethod", &arm64::addMethod),
        entryPoint("MSHookMessageEx", &arm64::hookMessage),
    };
}

UnwindTables registerUnwindTables(const MachOFile& file, const std::byte* start)
{
    return registerEhFrame(file, start, {returnAddress, &frameOf});
}

} // namespace

constinit const Processor thisProcessor{
    .cputype = CPU_TYPE_ARM64,
    .entryPoints = &entryPoints,
    .registerUnwindTables = &registerUnwindTables,
};

} // namespace simulator::macho
