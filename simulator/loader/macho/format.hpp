#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

/// The structures and numbers of Mach-O files, under the format's own names ("OS X ABI Mach-O File Format Reference",
/// <mach-o/loader.h>, <mach-o/fat.h>, <mach/vm_prot.h>). Where the format has a structure for each size of words, the one here is
/// for words of this processor's size.
namespace simulator::macho {

using Word = std::uintptr_t;
inline constexpr bool is64Bit = sizeof(Word) == 8;

/// At the start of a file for several processors; its numbers are big-endian.
struct fat_header {
    std::uint32_t magic;
    std::uint32_t nfat_arch;
};
inline constexpr std::uint32_t FAT_MAGIC = 0xcafebabe;

struct fat_arch {
    std::uint32_t cputype;
    std::uint32_t cpusubtype;
    std::uint32_t offset;
    std::uint32_t size;
    /// The exponent of a power of two.
    std::uint32_t align;
};

enum : std::uint32_t {
    CPU_TYPE_ARM = 12,
    CPU_TYPE_ARM64 = 0x0100000c,
    CPU_TYPE_X86_64 = 0x01000007,
};

/// Without the word that fills it up where words have 64 bits.
struct mach_header {
    std::uint32_t magic;
    std::uint32_t cputype;
    std::uint32_t cpusubtype;
    std::uint32_t filetype;
    std::uint32_t ncmds;
    std::uint32_t sizeofcmds;
    std::uint32_t flags;
};
inline constexpr std::size_t headerSize = is64Bit ? 32 : 28;

inline constexpr std::uint32_t MH_MAGIC = 0xfeedface;
inline constexpr std::uint32_t MH_MAGIC_64 = 0xfeedfacf;
inline constexpr std::uint32_t magicOfThisSize = is64Bit ? MH_MAGIC_64 : MH_MAGIC;
inline constexpr std::uint32_t MH_DYLIB = 6;

struct load_command {
    std::uint32_t cmd;
    std::uint32_t cmdsize;
};

enum LoadCommand : std::uint32_t {
    LC_SEGMENT = 0x1,
    LC_LOAD_DYLIB = 0xc,
    LC_LOAD_WEAK_DYLIB = 0x80000018,
    LC_REEXPORT_DYLIB = 0x8000001f,
    LC_LOAD_UPWARD_DYLIB = 0x80000023,
    LC_SEGMENT_64 = 0x19,
    LC_CODE_SIGNATURE = 0x1d,
    LC_DYLD_INFO_ONLY = 0x80000022,
};
inline constexpr LoadCommand segmentOfThisSize = is64Bit ? LC_SEGMENT_64 : LC_SEGMENT;

struct segment_command {
    std::uint32_t cmd;
    std::uint32_t cmdsize;
    char segname[16];
    Word vmaddr;
    Word vmsize;
    Word fileoff;
    Word filesize;
    std::int32_t maxprot;
    std::int32_t initprot;
    std::uint32_t nsects;
    std::uint32_t flags;
};

enum : std::int32_t {
    VM_PROT_READ = 1,
    VM_PROT_WRITE = 2,
    VM_PROT_EXECUTE = 4,
};

struct section {
    char sectname[16];
    char segname[16];
    Word addr;
    Word size;
    std::uint32_t offset;
    std::uint32_t align;
    std::uint32_t reloff;
    std::uint32_t nreloc;
    std::uint32_t flags;
    std::uint32_t reserved[is64Bit ? 3 : 2];
};
inline constexpr std::uint32_t SECTION_TYPE = 0xff;
inline constexpr std::uint32_t S_MOD_INIT_FUNC_POINTERS = 9;
/// The segment, and the sections in it, that are for the object runtime.
inline constexpr std::string_view SEG_DATA = "__DATA";
inline constexpr std::string_view objcImageInfo = "__objc_imageinfo";
inline constexpr std::string_view objcSelectorReferences = "__objc_selrefs";
inline constexpr std::uint32_t S_ATTR_SOME_INSTRUCTIONS = 0x400;

struct dylib_command {
    std::uint32_t cmd;
    std::uint32_t cmdsize;
    /// From the start of the command.
    std::uint32_t name;
    std::uint32_t timestamp;
    std::uint32_t current_version;
    std::uint32_t compatibility_version;
};

struct dyld_info_command {
    std::uint32_t cmd;
    std::uint32_t cmdsize;
    std::uint32_t rebase_off;
    std::uint32_t rebase_size;
    std::uint32_t bind_off;
    std::uint32_t bind_size;
    std::uint32_t weak_bind_off;
    std::uint32_t weak_bind_size;
    std::uint32_t lazy_bind_off;
    std::uint32_t lazy_bind_size;
    std::uint32_t export_off;
    std::uint32_t export_size;
};

struct linkedit_data_command {
    std::uint32_t cmd;
    std::uint32_t cmdsize;
    std::uint32_t dataoff;
    std::uint32_t datasize;
};

/// A rebase or bind instruction begins with a byte: the opcode and an immediate number. ULEB128 and SLEB128 numbers or a text
/// follow.
enum RebaseOpcode : std::uint8_t {
    REBASE_OPCODE_DONE = 0x00,
    REBASE_OPCODE_SET_TYPE_IMM = 0x10,
    REBASE_OPCODE_SET_SEGMENT_AND_OFFSET_ULEB = 0x20,
    REBASE_OPCODE_ADD_ADDR_ULEB = 0x30,
    REBASE_OPCODE_ADD_ADDR_IMM_SCALED = 0x40,
    REBASE_OPCODE_DO_REBASE_IMM_TIMES = 0x50,
    REBASE_OPCODE_DO_REBASE_ULEB_TIMES = 0x60,
    REBASE_OPCODE_DO_REBASE_ADD_ADDR_ULEB = 0x70,
    REBASE_OPCODE_DO_REBASE_ULEB_TIMES_SKIPPING_ULEB = 0x80,
};
inline constexpr std::uint8_t REBASE_OPCODE_MASK = 0xf0;
inline constexpr std::uint8_t REBASE_IMMEDIATE_MASK = 0x0f;
inline constexpr std::uint8_t REBASE_TYPE_POINTER = 1;

enum BindOpcode : std::uint8_t {
    BIND_OPCODE_DONE = 0x00,
    BIND_OPCODE_SET_DYLIB_ORDINAL_IMM = 0x10,
    BIND_OPCODE_SET_DYLIB_ORDINAL_ULEB = 0x20,
    BIND_OPCODE_SET_DYLIB_SPECIAL_IMM = 0x30,
    BIND_OPCODE_SET_SYMBOL_TRAILING_FLAGS_IMM = 0x40,
    BIND_OPCODE_SET_TYPE_IMM = 0x50,
    BIND_OPCODE_SET_ADDEND_SLEB = 0x60,
    BIND_OPCODE_SET_SEGMENT_AND_OFFSET_ULEB = 0x70,
    BIND_OPCODE_ADD_ADDR_ULEB = 0x80,
    BIND_OPCODE_DO_BIND = 0x90,
    BIND_OPCODE_DO_BIND_ADD_ADDR_ULEB = 0xa0,
    BIND_OPCODE_DO_BIND_ADD_ADDR_IMM_SCALED = 0xb0,
    BIND_OPCODE_DO_BIND_ULEB_TIMES_SKIPPING_ULEB = 0xc0,
};
inline constexpr std::uint8_t BIND_OPCODE_MASK = 0xf0;
inline constexpr std::uint8_t BIND_IMMEDIATE_MASK = 0x0f;
inline constexpr std::uint8_t BIND_TYPE_POINTER = 1;
inline constexpr std::uint8_t BIND_SYMBOL_FLAGS_WEAK_IMPORT = 1;

/// A symbol that is exported at an address, once.
inline constexpr std::uint64_t EXPORT_SYMBOL_FLAGS_KIND_REGULAR = 0;

} // namespace simulator::macho
