#include <algorithm>
#include <array>
#include <cstring>
#include <glib.h>
#include <optional>
#include <stdexcept>
#include <sys/mman.h>
#include <unistd.h>
#include <vector>

#include "simulator/files/Descriptor.hpp"
#include "simulator/loader/macho/Bytes.hpp"
#include "simulator/loader/macho/MachOImage.hpp"
#include "simulator/loader/macho/format.hpp"
#include "tests/fuzz/target.hpp"

/// A library in the phone's own form: it is refused or loaded, and goes away again; its initialisers are not run. Where the
/// bytes have a signature whose hashes can be found, they are made true first, or nothing but signatures would ever be read.

namespace {

using namespace simulator::macho;

constexpr std::size_t page = 4096;
constexpr std::uint32_t codeDirectory = 0xfade0c02;

/// The hash that a code directory of that kind has of some bytes.
std::vector<guint8> hashOf(const std::byte* first, std::size_t size, GChecksumType type)
{
    GChecksum* const checksum = g_checksum_new(type);
    g_checksum_update(checksum, reinterpret_cast<const guchar*>(first), static_cast<gssize>(size));
    std::vector<guint8> digest(static_cast<std::size_t>(g_checksum_type_get_length(type)));
    gsize length = digest.size();
    g_checksum_get_digest(checksum, digest.data(), &length);
    g_checksum_free(checksum);
    return digest;
}

/// The place and the size of the signature that the load commands tell.
std::optional<linkedit_data_command> signatureOf(Bytes file)
{
    std::size_t offset = headerSize;
    const auto header = file.at<mach_header>(0);
    for (std::uint32_t i = 0; i < header.ncmds; ++i) {
        const auto command = file.at<load_command>(offset);
        if (command.cmd == LC_CODE_SIGNATURE)
            return file.at<linkedit_data_command>(offset);
        if (command.cmdsize < sizeof command)
            break;
        offset += command.cmdsize;
    }
    return std::nullopt;
}

/// Writes the hashes of the pages into one code directory.
void makeTrue(std::vector<std::byte>& file, std::size_t directoryAt, std::size_t codeSize)
{
    constexpr std::size_t hashOffset = 16;
    constexpr std::size_t codeSlots = 28;
    constexpr std::size_t hashTypeAt = 37;
    const Bytes directory = Bytes(file.data(), file.size()).from(directoryAt);
    const GChecksumType type = directory.at<std::uint8_t>(hashTypeAt) == 1 ? G_CHECKSUM_SHA1 : G_CHECKSUM_SHA256;
    std::size_t place = directoryAt + directory.bigEndianAt(hashOffset);
    const std::size_t pages = std::min<std::size_t>(directory.bigEndianAt(codeSlots), (codeSize + page - 1) / page);
    for (std::size_t i = 0; i < pages; ++i) {
        const auto hash = hashOf(file.data() + i * page, std::min(page, codeSize - i * page), type);
        if (place > file.size() || hash.size() > file.size() - place)
            return;
        std::memcpy(file.data() + place, hash.data(), hash.size());
        place += hash.size();
    }
}

void resign(std::vector<std::byte>& file)
{
    const Bytes bytes(file.data(), file.size());
    const auto signature = signatureOf(bytes);
    if (!signature || signature->dataoff > file.size())
        return;
    const std::uint32_t count = bytes.bigEndianAt(signature->dataoff + 8);
    constexpr std::uint32_t mostBlobs = 8;
    for (std::uint32_t i = 0; i < std::min(count, mostBlobs); ++i) {
        const std::size_t blob = std::size_t{signature->dataoff} + bytes.bigEndianAt(signature->dataoff + 16 + 8 * i);
        if (bytes.bigEndianAt(blob) == codeDirectory)
            makeTrue(file, blob, signature->dataoff);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    static const simulator::Descriptor memory(::memfd_create("library", MFD_CLOEXEC));
    static const std::string path = "/proc/self/fd/" + std::to_string(memory.number());
    const auto* const first = reinterpret_cast<const std::byte*>(bytes);
    std::vector<std::byte> file(first, first + size);
    try {
        resign(file);
    } catch (const std::runtime_error&) {
        // It is cut off before there is a signature.
    }
    if (::ftruncate(memory.number(), 0) != 0 || ::pwrite(memory.number(), file.data(), file.size(), 0) < 0)
        fail("the library cannot be written");
    try {
        const simulator::MachOImage image(path);
    } catch (const std::runtime_error&) {
        // It is no library, or a damaged one.
    }
    return 0;
}
