#include "simulator/loader/macho/CodeSignature.hpp"

#include <algorithm>
#include <glib.h>
#include <map>
#include <optional>
#include <string>

namespace simulator::macho {

namespace {

enum : std::uint32_t {
    CSMAGIC_EMBEDDED_SIGNATURE = 0xfade0cc0,
    CSMAGIC_CODEDIRECTORY = 0xfade0c02,
    CSMAGIC_BLOBWRAPPER = 0xfade0b01,
};

enum : std::uint32_t {
    CSSLOT_CODEDIRECTORY = 0,
    CSSLOT_DER_ENTITLEMENTS = 7,
    CSSLOT_ALTERNATE_CODEDIRECTORIES = 0x1000,
    CSSLOT_ALTERNATE_CODEDIRECTORY_LIMIT = 0x1005,
    CSSLOT_SIGNATURESLOT = 0x10000,
};

constexpr std::uint32_t codeDirectoryVersion = 0x20001;

enum : std::uint8_t {
    CS_HASHTYPE_SHA1 = 1,
    CS_HASHTYPE_SHA256 = 2,
};

/// The beginning of a code directory; its numbers are big-endian.
struct CS_CodeDirectory {
    std::uint32_t magic;
    std::uint32_t length;
    std::uint32_t version;
    std::uint32_t flags;
    std::uint32_t hashOffset;
    std::uint32_t identOffset;
    std::uint32_t nSpecialSlots;
    std::uint32_t nCodeSlots;
    std::uint32_t codeLimit;
    std::uint8_t hashSize;
    std::uint8_t hashType;
    std::uint8_t platform;
    /// The exponent of a power of two.
    std::uint8_t pageSize;
    std::uint32_t spare2;
};

struct HashType {
    GChecksumType checksum;
    std::size_t size;
};

HashType hashTypeNumbered(std::uint8_t number)
{
    switch (number) {
    case CS_HASHTYPE_SHA1:
        return {G_CHECKSUM_SHA1, 20};
    case CS_HASHTYPE_SHA256:
        return {G_CHECKSUM_SHA256, 32};
    default:
        throw std::runtime_error("its code signature uses an unknown hash");
    }
}

bool hasHash(Bytes content, Bytes expected, HashType type)
{
    GChecksum* const checksum = g_checksum_new(type.checksum);
    g_checksum_update(checksum, reinterpret_cast<const guchar*>(content.data()), static_cast<gssize>(content.size()));
    guint8 digest[32];
    gsize size = sizeof digest;
    g_checksum_get_digest(checksum, digest, &size);
    g_checksum_free(checksum);
    return size == expected.size() && std::memcmp(digest, expected.data(), size) == 0;
}

[[noreturn]] void failOnSignature()
{
    throw std::runtime_error("its code signature is damaged");
}

bool isAllZeros(Bytes bytes)
{
    return std::all_of(bytes.data(), bytes.data() + bytes.size(), [](std::byte byte) { return byte == std::byte{0}; });
}

bool hasHashOrNone(std::optional<Bytes> content, Bytes expected, HashType type)
{
    return content ? hasHash(*content, expected, type) : isAllZeros(expected);
}

using Blobs = std::map<std::uint32_t, Bytes>;

Bytes blobAt(Bytes bytes, std::size_t offset)
{
    return bytes.part(offset, bytes.bigEndianAt(offset + 4));
}

bool isCodeDirectory(std::uint32_t slot)
{
    return slot == CSSLOT_CODEDIRECTORY ||
           (slot >= CSSLOT_ALTERNATE_CODEDIRECTORIES && slot < CSSLOT_ALTERNATE_CODEDIRECTORY_LIMIT);
}

/// Whether something speaks for the blob: its hash, or what it must say.
bool isVouchedFor(std::uint32_t slot, Bytes blob)
{
    if (slot == CSSLOT_SIGNATURESLOT)
        return blob.bigEndianAt(0) == CSMAGIC_BLOBWRAPPER && blob.size() == 2 * sizeof(std::uint32_t);
    return isCodeDirectory(slot) || slot <= CSSLOT_DER_ENTITLEMENTS;
}

/// The blobs of a signature by their slots. They stand in the order of the index, one right behind the other, and nothing but
/// zeros follows: there is no byte that nobody looks at.
Blobs blobsOf(Bytes signature)
{
    if (signature.bigEndianAt(0) != CSMAGIC_EMBEDDED_SIGNATURE)
        failOnSignature();
    const Bytes super = blobAt(signature, 0);
    Blobs blobs;
    const std::uint32_t count = super.bigEndianAt(8);
    std::size_t end = 12 + std::size_t{8} * count;
    for (std::uint32_t i = 0; i < count; ++i) {
        const std::uint32_t slot = super.bigEndianAt(12 + 8 * i);
        const std::size_t offset = super.bigEndianAt(16 + 8 * i);
        const Bytes blob = blobAt(super, offset);
        if (offset != end || !isVouchedFor(slot, blob) || !blobs.emplace(slot, blob).second)
            failOnSignature();
        end += blob.size();
    }
    if (end != super.size() || !isAllZeros(signature.from(end)))
        failOnSignature();
    return blobs;
}

void verify(Bytes directory, Bytes code, const Blobs& blobs)
{
    if (directory.bigEndianAt(0) != CSMAGIC_CODEDIRECTORY)
        failOnSignature();
    const HashType type = hashTypeNumbered(directory.at<std::uint8_t>(offsetof(CS_CodeDirectory, hashType)));
    if (directory.at<std::uint8_t>(offsetof(CS_CodeDirectory, hashSize)) != type.size)
        failOnSignature();
    if (directory.bigEndianAt(offsetof(CS_CodeDirectory, codeLimit)) != code.size())
        throw std::runtime_error("its code signature does not cover the whole of it");

    // The header, the library's name, the hashes: there is no room between them.
    const std::size_t name = directory.bigEndianAt(offsetof(CS_CodeDirectory, identOffset));
    const std::size_t hashes = directory.bigEndianAt(offsetof(CS_CodeDirectory, hashOffset));
    const std::size_t specialHashes = type.size * directory.bigEndianAt(offsetof(CS_CodeDirectory, nSpecialSlots));
    if (name != sizeof(CS_CodeDirectory) || hashes != name + std::strlen(directory.textAt(name)) + 1 + specialHashes)
        failOnSignature();
    constexpr std::uint8_t pageShift = 12;
    constexpr std::size_t page = std::size_t{1} << pageShift;
    if (directory.at<std::uint8_t>(offsetof(CS_CodeDirectory, pageSize)) != pageShift)
        throw std::runtime_error("its code signature is for pages of another size");
    const std::size_t pageCount = directory.bigEndianAt(offsetof(CS_CodeDirectory, nCodeSlots));
    if (pageCount != (code.size() + page - 1) / page)
        throw std::runtime_error("its code signature does not cover the whole of it");
    if (directory.size() != hashes + pageCount * type.size)
        failOnSignature();
    for (std::size_t i = 0; i < pageCount; ++i) {
        const Bytes content = code.part(i * page, std::min(page, code.size() - i * page));
        if (!hasHash(content, directory.part(hashes + i * type.size, type.size), type))
            throw std::runtime_error("page " + std::to_string(i) + " does not have the hash that its code signature tells");
    }

    // The hashes of the other blobs stand before the pages', the first slot's last. A slot without a blob is all zeros.
    const std::uint32_t specialCount = directory.bigEndianAt(offsetof(CS_CodeDirectory, nSpecialSlots));
    for (std::uint32_t slot = 1; slot <= std::max<std::uint32_t>(specialCount, CSSLOT_DER_ENTITLEMENTS); ++slot) {
        const auto found = blobs.find(slot);
        if (slot > specialCount && found == blobs.end())
            continue;
        const bool matches =
            slot <= specialCount && hasHashOrNone(found != blobs.end() ? std::optional(found->second) : std::nullopt,
                                                  directory.part(hashes - slot * type.size, type.size), type);
        if (!matches)
            throw std::runtime_error("blob " + std::to_string(slot) + " of its code signature does not have its hash");
    }
}

/// What a directory says of the library beside the hashes.
struct Identity {
    std::uint32_t version;
    std::uint32_t flags;
    std::uint8_t platform;
    std::uint32_t spare2;
    std::uint32_t specialSlots;
    std::string identifier;

    bool operator==(const Identity&) const = default;
};

Identity identityIn(Bytes directory)
{
    return {directory.bigEndianAt(offsetof(CS_CodeDirectory, version)),
            directory.bigEndianAt(offsetof(CS_CodeDirectory, flags)),
            directory.at<std::uint8_t>(offsetof(CS_CodeDirectory, platform)),
            directory.bigEndianAt(offsetof(CS_CodeDirectory, spare2)),
            directory.bigEndianAt(offsetof(CS_CodeDirectory, nSpecialSlots)),
            directory.textAt(directory.bigEndianAt(offsetof(CS_CodeDirectory, identOffset)))};
}

} // namespace

void verifyCodeSignature(Bytes slice, std::size_t signatureOffset, std::size_t signatureSize)
{
    const Bytes code = slice.part(0, signatureOffset);
    const Blobs blobs = blobsOf(slice.part(signatureOffset, signatureSize));
    const auto first = blobs.find(CSSLOT_CODEDIRECTORY);
    if (first == blobs.end() || first->second.at<std::uint8_t>(offsetof(CS_CodeDirectory, hashType)) != CS_HASHTYPE_SHA1)
        throw std::runtime_error("it has no SHA-1 code directory");
    const Identity identity = identityIn(first->second);
    // As extensions are signed that no certificate vouches for.
    if (identity.version != codeDirectoryVersion || identity.flags != 0 || identity.platform != 0 || identity.spare2 != 0)
        throw std::runtime_error("its code signature is of another version, or has flags");
    for (const auto& [slot, blob] : blobs) {
        if (!isCodeDirectory(slot))
            continue;
        // Nothing vouches for the library's name but that all directories have it.
        if (identityIn(blob) != identity)
            throw std::runtime_error("its code directories do not agree");
        verify(blob, code, blobs);
    }
}

} // namespace simulator::macho
