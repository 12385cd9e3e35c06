#include "simulator/loader/macho/Segments.hpp"

#include <algorithm>
#include <limits>
#include <sys/mman.h>

namespace simulator::macho {

namespace {

/// Larger than the pages of any of the processors.
constexpr std::size_t pageSize = 0x4000;
constexpr std::size_t smallestPage = 0x1000;

constexpr std::size_t wholePages(std::size_t size)
{
    return (size + pageSize - 1) / pageSize * pageSize;
}

[[noreturn]] void failOnPointer()
{
    throw std::runtime_error("a pointer lies outside of its segments");
}

} // namespace

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

Segments::Segments(const MachOFile& file) : file_(file)
{
    constexpr Word most = Word{1} << 28;
    std::size_t end = 0;
    for (const segment_command& segment : file.segments()) {
        if (segment.vmsize > most || segment.vmaddr > most)
            throw std::runtime_error("a segment does not fit into memory");
        // In the order of their addresses, as linkers write them.
        if (segment.vmaddr < end || segment.vmaddr % smallestPage != 0)
            throw std::runtime_error("a segment does not begin at a page of its own");
        end = segment.vmaddr + segment.vmsize;
    }
    pages_ = Pages(wholePages(end), PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1);
    for (const segment_command& segment : file.segments()) {
        const Bytes content = file.slice().part(segment.fileoff, segment.filesize);
        std::memcpy(at(segment.vmaddr), content.data(), content.size());
    }
}

std::byte* Segments::pointerAt(Word address) const
{
    if (!holds(address, sizeof(Word), VM_PROT_READ))
        failOnPointer();
    return at(address);
}

std::byte* Segments::pointerAt(std::size_t segment, Word offset) const
{
    if (segment >= file_.segments().size() || offset >= file_.segments()[segment].vmsize)
        failOnPointer();
    const Word address = file_.segments()[segment].vmaddr + offset;
    if (!holds(address, sizeof(Word), VM_PROT_READ | VM_PROT_WRITE))
        failOnPointer();
    return at(address);
}

bool Segments::holds(Word address, Word size, std::uint32_t protection) const
{
    return std::ranges::any_of(file_.segments(), [&](const segment_command& segment) {
        const Word offset = address - segment.vmaddr;
        return address >= segment.vmaddr && offset <= segment.vmsize && size <= segment.vmsize - offset &&
               (segment.initprot & protection) == protection;
    });
}

const char* Segments::textBehind(Word pointer) const
{
    const Word address = pointer - reinterpret_cast<Word>(at(0));
    for (const segment_command& segment : file_.segments()) {
        if (address < segment.vmaddr || address - segment.vmaddr >= segment.vmsize)
            continue;
        if (std::memchr(at(address), 0, segment.vmaddr + segment.vmsize - address) != nullptr)
            return reinterpret_cast<const char*>(at(address));
    }
    throw std::runtime_error("a text is not in its segments");
}

bool Segments::holdsInstructions(Word address) const
{
    return holds(address, 1, VM_PROT_EXECUTE) && std::ranges::any_of(file_.sections(), [&](const section& one) {
               return (one.flags & S_ATTR_SOME_INSTRUCTIONS) != 0 && address >= one.addr && address - one.addr < one.size;
           });
}

Pages Segments::protect()
{
    for (const segment_command& segment : file_.segments()) {
        int protection = PROT_NONE;
        protection |= (segment.initprot & VM_PROT_READ) != 0 ? PROT_READ : 0;
        protection |= (segment.initprot & VM_PROT_WRITE) != 0 ? PROT_WRITE : 0;
        protection |= (segment.initprot & VM_PROT_EXECUTE) != 0 ? PROT_EXEC : 0;
        auto* const first = reinterpret_cast<char*>(at(segment.vmaddr));
        __builtin___clear_cache(first, first + segment.vmsize);
        if (::mprotect(first, segment.vmsize, protection) != 0)
            throw std::runtime_error("a segment does not begin at a page");
    }
    return std::move(pages_);
}

} // namespace simulator::macho
