#include "simulator/loader/macho/selectors.hpp"

#include <algorithm>
#include <cstring>

#include "platform/runtime/objc.hpp"

namespace simulator::macho {

namespace {

/// A name in such a field need not end with a zero.
template <std::size_t Size>
std::string_view nameIn(const char (&field)[Size])
{
    return {field, ::strnlen(field, Size)};
}

bool isForTheRuntime(const section& one, std::string_view name)
{
    return nameIn(one.segname) == SEG_DATA && nameIn(one.sectname) == name;
}

} // namespace

void fixSelectors(const MachOFile& file, const Segments& segments)
{
    if (std::ranges::none_of(file.sections(), [](const section& one) { return isForTheRuntime(one, objcImageInfo); }))
        return;
    for (const section& one : file.sections()) {
        if (!isForTheRuntime(one, objcSelectorReferences))
            continue;
        for (Word offset = 0; offset + sizeof(Word) <= one.size; offset += sizeof(Word)) {
            std::byte* const reference = segments.pointerAt(one.addr + offset);
            store(reference, reinterpret_cast<Word>(sel_registerName(segments.textBehind(load(reference)))));
        }
    }
}

} // namespace simulator::macho
