#pragma once

#include <cstddef>
#include <cstdint>

/// The structures of Mach-O files ("OS X ABI Mach-O File Format Reference", <mach-o/loader.h>, <mach-o/fat.h>) for words of
/// this processor's size.
namespace simulator::macho {

using Word = std::uintptr_t;

/// At the start of a file for several processors; its numbers are big-endian.
struct FatHeader {
    std::uint32_t magic;
    std::uint32_t sliceCount;
};
inline constexpr std::uint32_t fatMagic = 0xcafebabe;

struct FatSlice {
    std::uint32_t cpuType;
    std::uint32_t cpuSubtype;
    std::uint32_t offset;
    std::uint32_t size;
    /// The exponent of a power of two.
    std::uint32_t alignment;
};

struct Header {
    std::uint32_t magic;
    std::uint32_t cpuType;
    std::uint32_t cpuSubtype;
    std::uint32_t fileType;
    std::uint32_t commandCount;
    std::uint32_t commandsSize;
    std::uint32_t flags;
};
inline constexpr std::uint32_t dynamicLibrary = 6;

inline constexpr std::uint32_t magic32 = 0xfeedface;
inline constexpr std::uint32_t magic64 = 0xfeedfacf;
inline constexpr bool is64Bit = sizeof(Word) == 8;
inline constexpr std::uint32_t magic = is64Bit ? magic64 : magic32;
inline constexpr std::size_t headerSize = is64Bit ? 32 : 28;
#if defined(__x86_64__)
inline constexpr std::uint32_t thisCpu = 0x01000007;
#elif defined(__aarch64__)
inline constexpr std::uint32_t thisCpu = 0x0100000c;
#elif defined(__arm__)
inline constexpr std::uint32_t thisCpu = 12;
#endif

struct LoadCommand {
    std::uint32_t kind;
    std::uint32_t size;
};

enum LoadCommandKind : std::uint32_t {
    LC_SEGMENT = 0x1,
    LC_LOAD_DYLIB = 0xc,
    LC_LOAD_WEAK_DYLIB = 0x80000018,
    LC_REEXPORT_DYLIB = 0x8000001f,
    LC_LOAD_UPWARD_DYLIB = 0x80000023,
    LC_SEGMENT_64 = 0x19,
    LC_CODE_SIGNATURE = 0x1d,
    LC_DYLD_INFO_ONLY = 0x80000022,
};
inline constexpr LoadCommandKind segmentKind = is64Bit ? LC_SEGMENT_64 : LC_SEGMENT;

struct SegmentCommand {
    LoadCommand command;
    char name[16];
    Word address;
    Word memorySize;
    Word fileOffset;
    Word fileSize;
    std::int32_t mostProtection;
    std::int32_t protection;
    std::uint32_t sectionCount;
    std::uint32_t flags;
};
inline constexpr std::int32_t readable = 1;
inline constexpr std::int32_t writable = 2;
inline constexpr std::int32_t executable = 4;

struct Section {
    char name[16];
    char segment[16];
    Word address;
    Word size;
    std::uint32_t fileOffset;
    std::uint32_t alignment;
    std::uint32_t relocationOffset;
    std::uint32_t relocationCount;
    std::uint32_t flags;
    std::uint32_t reserved[is64Bit ? 3 : 2];
};
inline constexpr std::uint32_t sectionTypeMask = 0xff;
/// Pointers to functions that run when the library is loaded.
inline constexpr std::uint32_t moduleInitialisers = 9;

struct LibraryCommand {
    LoadCommand command;
    std::uint32_t nameOffset;
    std::uint32_t timestamp;
    std::uint32_t currentVersion;
    std::uint32_t compatibilityVersion;
};

struct FileRange {
    std::uint32_t offset;
    std::uint32_t size;
};

struct DyldInfoCommand {
    LoadCommand command;
    FileRange rebase;
    FileRange bind;
    FileRange weakBind;
    FileRange lazyBind;
    FileRange exports;
};

struct LinkEditDataCommand {
    LoadCommand command;
    FileRange data;
};

/// What a rebase or bind instruction does: the high half of its first byte; the low half is its immediate number.
enum RebaseOpcode : std::uint8_t {
    REBASE_DONE = 0x00,
    REBASE_SET_TYPE = 0x10,
    REBASE_SET_SEGMENT_AND_OFFSET = 0x20,
    REBASE_ADD_ADDRESS = 0x30,
    REBASE_ADD_ADDRESS_SCALED = 0x40,
    REBASE_TIMES_IMMEDIATE = 0x50,
    REBASE_TIMES = 0x60,
    REBASE_ADD_ADDRESS_AFTER = 0x70,
    REBASE_TIMES_SKIPPING = 0x80,
};

enum BindOpcode : std::uint8_t {
    BIND_DONE = 0x00,
    BIND_SET_LIBRARY_IMMEDIATE = 0x10,
    BIND_SET_LIBRARY = 0x20,
    BIND_SET_LIBRARY_SPECIAL = 0x30,
    BIND_SET_SYMBOL = 0x40,
    BIND_SET_TYPE = 0x50,
    BIND_SET_ADDEND = 0x60,
    BIND_SET_SEGMENT_AND_OFFSET = 0x70,
    BIND_ADD_ADDRESS = 0x80,
    BIND = 0x90,
    BIND_ADD_ADDRESS_AFTER = 0xa0,
    BIND_ADD_ADDRESS_SCALED_AFTER = 0xb0,
    BIND_TIMES_SKIPPING = 0xc0,
};
inline constexpr std::uint8_t opcodeMask = 0xf0;
inline constexpr std::uint8_t pointerType = 1;
inline constexpr std::uint8_t weakImport = 1;

/// How a symbol is exported: at an address, once.
inline constexpr std::uint64_t plainExport = 0;

} // namespace simulator::macho
