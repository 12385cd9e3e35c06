#include "simulator/loader/ElfImage.hpp"

#include <algorithm>
#include <cerrno>
#include <dlfcn.h>
#include <elf.h>
#include <link.h>
#include <span>
#include <stdexcept>
#include <string_view>
#include <system_error>
#include <unistd.h>

#include "simulator/files/whole_file.hpp"

namespace simulator {

namespace {

using HashWord = std::uint32_t;

/// What the library's dynamic section has under that tag; null when it has no such thing.
template <class T>
const T* table(const link_map& library, decltype(ElfW(Dyn)::d_tag) tag)
{
    for (const ElfW(Dyn)* entry = library.l_ld; entry->d_tag != DT_NULL; ++entry) {
        if (entry->d_tag == tag)
            return reinterpret_cast<const T*>(entry->d_un.d_ptr);
    }
    return nullptr;
}

/// A table under DT_GNU_HASH tells no count of its symbols:
///
///     +----------+-----------+------------+-------------+-------------------+----------+--------+
///     | nbuckets | symoffset | bloom_size | bloom_shift | bloom             | buckets  | chains |
///     +----------+-----------+------------+-------------+-------------------+----------+--------+
///                                                       | bloom_size        | nbuckets |
///                                                       | numbers of a word |
///
/// It holds the symbols from number symoffset on, the last ones of the library, in the order of their buckets. A bucket is the
/// number of its first symbol, 0 when it has none. There is a number in the chains for each symbol, odd for a bucket's last.
std::size_t symbolCountByGnuHash(const HashWord* hash)
{
    const HashWord symoffset = hash[1];
    const HashWord* const bloom = hash + 4;
    const std::span buckets(bloom + hash[2] * (sizeof(ElfW(Addr)) / sizeof(HashWord)), hash[0]);
    HashWord last = 0;
    for (const HashWord first : buckets)
        last = std::max(last, first);
    if (last < symoffset)
        return symoffset;
    const HashWord* const chains = buckets.data() + buckets.size();
    while (chains[last - symoffset] % 2 == 0)
        ++last;
    return last + 1;
}

/// The sections give no count: linkers put what they like behind the symbols. But one hash table or the other is there, or the
/// machine's loader would not find a symbol either.
std::span<const ElfW(Sym)> symbolsOf(const link_map& library)
{
    const auto* const symbols = table<ElfW(Sym)>(library, DT_SYMTAB);
    if (const auto* const hash = table<HashWord>(library, DT_HASH))
        return {symbols, hash[1]};
    if (const auto* const hash = table<HashWord>(library, DT_GNU_HASH))
        return {symbols, symbolCountByGnuHash(hash)};
    return {};
}

bool readAt(const Descriptor& file, std::uint64_t offset, void* place, std::size_t size)
{
    return ::pread(file.number(), place, size, static_cast<off_t>(offset)) == static_cast<ssize_t>(size);
}

} // namespace

void checkElf(const std::filesystem::path& file)
{
    const Descriptor opened = openRegularFile(file);
    if (!opened)
        throw std::runtime_error(std::generic_category().message(errno));
    const auto size = static_cast<std::uint64_t>(::lseek(opened.number(), 0, SEEK_END));
    ElfW(Ehdr) header{};
    if (!readAt(opened, 0, &header, sizeof header) ||
        !std::ranges::equal(std::span(header.e_ident, SELFMAG), std::string_view(ELFMAG)))
        throw std::runtime_error("it is no library");
    for (std::size_t i = 0; i < header.e_phnum; ++i) {
        ElfW(Phdr) segment{};
        if (header.e_phentsize != sizeof segment ||
            !readAt(opened, header.e_phoff + i * sizeof segment, &segment, sizeof segment) || segment.p_offset > size ||
            segment.p_filesz > size - segment.p_offset)
            throw std::runtime_error("the file is cut off or damaged");
    }
}

ElfImage::ElfImage(const std::filesystem::path& file)
{
    checkElf(file);
    void* const handle = ::dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
    link_map* library = nullptr;
    if (handle == nullptr || dlinfo(handle, RTLD_DI_LINKMAP, &library) != 0)
        throw std::runtime_error(dlerror());

    const char* const names = table<char>(*library, DT_STRTAB);
    for (const ElfW(Sym)& symbol : symbolsOf(*library)) {
        const auto type = ELF64_ST_TYPE(symbol.st_info);
        if (symbol.st_shndx == SHN_UNDEF || ELF64_ST_BIND(symbol.st_info) != STB_GLOBAL ||
            (type != STT_OBJECT && type != STT_FUNC))
            continue;
        exports_.push_back({names + symbol.st_name, reinterpret_cast<void*>(library->l_addr + symbol.st_value),
                            type == STT_FUNC ? ExportedSymbol::Kind::function : ExportedSymbol::Kind::variable,
                            type == STT_OBJECT && symbol.st_size == sizeof(void*)});
    }
}

} // namespace simulator
