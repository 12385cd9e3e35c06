#include "simulator/loader/macho/armv7/exceptions.hpp"

#include <algorithm>
#include <array>
#include <bit>
#include <dlfcn.h>
#include <mutex>
#include <optional>
#include <vector>

#include "simulator/loader/macho/made_code.hpp"

namespace simulator::macho::armv7 {

/// What a function with clean-ups registers.
struct FunctionContext {
    FunctionContext* previous;
    /// Which of its calls is under way, from 1; before its clean-ups run, which of them.
    std::int32_t callSite;
    /// What its clean-ups get.
    std::uint32_t exception;
    std::uint32_t selector;
    std::uint32_t unused[2];
    void* personality;
    const std::byte* tables;
    /// Where its clean-ups go on.
    std::uint32_t framePointer;
    std::uint32_t code;
    std::uint32_t stackPointer;
};

namespace {

thread_local FunctionContext* innermost = nullptr;

struct CleanUp {
    std::int32_t number;
    std::uint32_t selector;
};

/// What is to be done when the call that is under way raises; nothing for most calls.
std::optional<CleanUp> cleanUpOf(const FunctionContext& context)
{
    constexpr std::uint8_t omitted = 0xff;
    constexpr std::size_t unknownSize = 0x10000;
    if (context.callSite < 1 || context.tables == nullptr)
        return std::nullopt;
    const Bytes tables(context.tables, unknownSize);
    Reader reader(tables);
    if (reader.byte() != omitted)
        return std::nullopt;
    if (reader.byte() != omitted)
        reader.uleb128();
    [[maybe_unused]] const std::uint8_t encoding = reader.byte();
    const std::size_t size = reader.uleb128();
    const std::size_t actions = reader.offset() + size;
    for (std::int32_t site = 1; reader.offset() < actions; ++site) {
        const auto number = static_cast<std::int32_t>(reader.uleb128());
        const std::size_t action = reader.uleb128();
        if (site != context.callSite)
            continue;
        // Numbers from 1 count the actions' bytes.
        const std::int64_t selector = action == 0 ? 0 : Reader(tables, actions + action - 1).sleb128();
        return CleanUp{number, static_cast<std::uint32_t>(selector)};
    }
    return std::nullopt;
}

constexpr int framePointerRegister = 7;
constexpr int stackPointerRegister = 13;
constexpr int linkRegister = 14;
constexpr int programCounter = 15;

/// The functions of a library, in the unwinder's form: one entry for all.
struct UnwindTable {
    std::uintptr_t start;
    std::uintptr_t end;
    std::uintptr_t entry;
};

struct RegisteredTables {
    std::mutex mutex;
    std::vector<UnwindTable> tables;
};

RegisteredTables& registeredTables()
{
    static auto& registered = *new RegisteredTables;
    return registered;
}

/// The unwinder's form of an address.
std::uint32_t distance(const void* from, std::uintptr_t to)
{
    const auto bytes = static_cast<std::int32_t>(to - std::bit_cast<std::uintptr_t>(from));
    constexpr std::int32_t most = 0x3fffffff;
    if (bytes > most || bytes < -most)
        throw std::runtime_error("it lies too far from the unwinder's tables");
    return static_cast<std::uint32_t>(bytes) & 0x7fffffff;
}

} // namespace

void enterFunctionWithCleanUps(FunctionContext* context)
{
    context->previous = innermost;
    innermost = context;
}

void leaveFunctionWithCleanUps(FunctionContext* context)
{
    innermost = context->previous;
}

_Unwind_Reason_Code unwindPhoneFrame(_Unwind_State state, _Unwind_Control_Block* exception, _Unwind_Context* context)
{
    const std::uint32_t framePointer = _Unwind_GetGR(context, framePointerRegister);
    const auto phase = state & _US_ACTION_MASK;
    // The search for a handler leaves everything as it is: a library of the phone cleans up, and catches nothing.
    if (phase != _US_VIRTUAL_UNWIND_FRAME && innermost != nullptr && innermost->framePointer == framePointer) {
        FunctionContext& function = *innermost;
        const auto cleanUp = phase == _US_UNWIND_FRAME_STARTING ? cleanUpOf(function) : std::nullopt;
        if (cleanUp) {
            function.callSite = cleanUp->number;
            function.exception = std::bit_cast<std::uint32_t>(exception);
            function.selector = cleanUp->selector;
            _Unwind_SetGR(context, framePointerRegister, function.framePointer);
            _Unwind_SetGR(context, stackPointerRegister, function.stackPointer);
            _Unwind_SetGR(context, programCounter, function.code);
            return _URC_INSTALL_CONTEXT;
        }
        innermost = function.previous;
    }

    // A function that calls another keeps its caller's frame pointer and its return address where its own points. The other
    // registers it keeps too; they are found in the frame through which this machine called the library.
    const auto* const frame = std::bit_cast<const std::uint32_t*>(framePointer);
    _Unwind_SetGR(context, framePointerRegister, frame[0]);
    _Unwind_SetGR(context, stackPointerRegister, framePointer + 2 * sizeof *frame);
    _Unwind_SetGR(context, linkRegister, frame[1]);
    _Unwind_SetGR(context, programCounter, frame[1]);
    return _URC_CONTINUE_UNWIND;
}

UnwindTables registerUnwindTables(const MachOFile& file, const std::byte* start)
{
    Word end = 0;
    for (const segment_command& segment : file.segments())
        end = std::max(end, segment.vmaddr + segment.vmsize);

    // The unwinder's tables reach no farther than half of the memory: the way to the personality is beside them.
    constexpr std::uint32_t branchToWhatIsBehind = 0xe51ff004;
    std::uint32_t* const words =
        makeCode(std::array{branchToWhatIsBehind, std::bit_cast<std::uint32_t>(&unwindPhoneFrame), 0u, 0u, 0u}, start);
    const auto placeOf = [words](std::size_t i) { return std::bit_cast<std::uintptr_t>(words + i); };
    words[2] = distance(words + 2, std::bit_cast<std::uintptr_t>(start));
    words[3] = distance(words + 3, placeOf(4));
    words[4] = distance(words + 4, placeOf(0));

    const std::lock_guard lock(registeredTables().mutex);
    const auto first = std::bit_cast<std::uintptr_t>(start);
    registeredTables().tables.push_back({first, first + end, placeOf(2)});
    return {start, [](const void* gone) {
                const std::lock_guard lock(registeredTables().mutex);
                std::erase_if(registeredTables().tables,
                              [first = std::bit_cast<std::uintptr_t>(gone)](const auto& table) { return table.start == first; });
            }};
}

} // namespace simulator::macho::armv7

/// Stands in front of the machine's, which the unwinder asks for the table with the function at an address.
extern "C" [[gnu::visibility("default")]] _Unwind_Ptr __gnu_Unwind_Find_exidx(_Unwind_Ptr address, int* count)
{
    static const auto machines =
        reinterpret_cast<_Unwind_Ptr (*)(_Unwind_Ptr, int*)>(dlsym(RTLD_NEXT, "__gnu_Unwind_Find_exidx"));
    const std::lock_guard lock(simulator::macho::armv7::registeredTables().mutex);
    for (const auto& [start, end, entry] : simulator::macho::armv7::registeredTables().tables) {
        if (start <= address && address < end) {
            *count = 1;
            return entry;
        }
    }
    return machines(address, count);
}
