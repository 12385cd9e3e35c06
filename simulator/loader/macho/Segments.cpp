#include "simulator/loader/macho/Segments.hpp"

#include <algorithm>
#include <limits>
#include <sys/mman.h>

namespace simulator::macho {

namespace {

/// Larger than the pages of any of the processors.
constexpr std::size_t pageSize = 0x4000;

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
    constexpr Word most = std::numeric_limits<std::uint32_t>::max();
    std::size_t end = 0;
    for (const segment_command& segment : file.segments()) {
        if (segment.vmsize > most || segment.vmaddr > most)
            throw std::runtime_error("a segment does not fit into memory");
        end = std::max<std::size_t>(end, segment.vmaddr + segment.vmsize);
    }
    pages_ = Pages(wholePages(end), PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1);
    for (const segment_command& segment : file.segments()) {
        const Bytes content = file.slice().part(segment.fileoff, segment.filesize);
        std::memcpy(at(segment.vmaddr), content.data(), content.size());
    }
}

std::byte* Segments::pointerAt(Word address) const
{
    if (address > pages_.size() || pages_.size() - address < sizeof(Word))
        failOnPointer();
    return at(address);
}

std::byte* Segments::pointerAt(std::size_t segment, Word offset) const
{
    if (segment >= file_.segments().size() || offset >= file_.segments()[segment].vmsize)
        failOnPointer();
    return pointerAt(file_.segments()[segment].vmaddr + offset);
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
