#include "simulator/loader/macho/made_code.hpp"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <sys/mman.h>
#include <unordered_map>
#include <utility>

namespace simulator::macho {

namespace {

struct MadeCode {
    std::mutex mutex;
    std::unordered_map<const void*, const void*> functions;
};

MadeCode& madeCode()
{
    static auto& made = *new MadeCode;
    return made;
}

std::uint32_t* placeForCode(std::size_t instructionCount)
{
    constexpr std::size_t pageSize = 0x10000;
    static std::uint32_t* next = nullptr;
    static std::uint32_t* end = nullptr;
    if (next == nullptr || static_cast<std::size_t>(end - next) < instructionCount) {
        void* const page = ::mmap(nullptr, pageSize, PROT_READ | PROT_WRITE | PROT_EXEC, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        if (page == MAP_FAILED) {
            std::perror("springboard: no memory");
            std::abort();
        }
        next = static_cast<std::uint32_t*>(page);
        end = next + pageSize / sizeof *next;
    }
    return std::exchange(next, next + instructionCount);
}

} // namespace

std::uint32_t* makeCode(std::span<const std::uint32_t> instructions, const void* function)
{
    const std::lock_guard lock(madeCode().mutex);
    std::uint32_t* const place = placeForCode(instructions.size());
    std::ranges::copy(instructions, place);
    __builtin___clear_cache(reinterpret_cast<char*>(place), reinterpret_cast<char*>(place + instructions.size()));
    madeCode().functions.emplace(place, function);
    return place;
}

const void* functionBehind(const void* code)
{
    const std::lock_guard lock(madeCode().mutex);
    const auto found = madeCode().functions.find(code);
    return found != madeCode().functions.end() ? found->second : code;
}

} // namespace simulator::macho
