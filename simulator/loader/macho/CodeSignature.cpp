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
};

enum : std::uint32_t {
    CSSLOT_CODEDIRECTORY = 0,
    CSSLOT_DER_ENTITLEMENTS = 7,
    CSSLOT_ALTERNATE_CODEDIRECTORIES = 0x1000,
    CSSLOT_ALTERNATE_CODEDIRECTORY_LIMIT = 0x1005,
};

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

bool hasHashOrNone(std::optional<Bytes> content, Bytes expected, HashType type)
{
    if (content)
        return hasHash(*content, expected, type);
    return std::all_of(expected.data(), expected.data() + expected.size(), [](std::byte byte) { return byte == std::byte{0}; });
}

using Blobs = std::map<std::uint32_t, Bytes>;

Bytes blobAt(Bytes bytes, std::size_t offset)
{
    return bytes.part(offset, bytes.bigEndianAt(offset + 4));
}

/// The blobs of a signature by their slots.
Blobs blobsOf(Bytes signature)
{
    if (signature.bigEndianAt(0) != CSMAGIC_EMBEDDED_SIGNATURE)
        throw std::runtime_error("its code signature is damaged");
    const Bytes super = blobAt(signature, 0);
    Blobs blobs;
    const std::uint32_t count = super.bigEndianAt(8);
    for (std::uint32_t i = 0; i < count; ++i)
        blobs[super.bigEndianAt(12 + 8 * i)] = blobAt(super, super.bigEndianAt(16 + 8 * i));
    return blobs;
}

void verify(Bytes directory, Bytes code, const Blobs& blobs)
{
    if (directory.bigEndianAt(0) != CSMAGIC_CODEDIRECTORY)
        throw std::runtime_error("its code signature is damaged");
    const HashType type = hashTypeNumbered(directory.at<std::uint8_t>(offsetof(CS_CodeDirectory, hashType)));
    if (directory.at<std::uint8_t>(offsetof(CS_CodeDirectory, hashSize)) != type.size)
        throw std::runtime_error("its code signature is damaged");
    if (directory.bigEndianAt(offsetof(CS_CodeDirectory, codeLimit)) != code.size())
        throw std::runtime_error("its code signature does not cover the whole of it");

    const std::size_t hashes = directory.bigEndianAt(offsetof(CS_CodeDirectory, hashOffset));
    constexpr std::uint8_t pageShift = 12;
    constexpr std::size_t page = std::size_t{1} << pageShift;
    if (directory.at<std::uint8_t>(offsetof(CS_CodeDirectory, pageSize)) != pageShift)
        throw std::runtime_error("its code signature is for pages of another size");
    const std::size_t pageCount = directory.bigEndianAt(offsetof(CS_CodeDirectory, nCodeSlots));
    if (pageCount != (code.size() + page - 1) / page)
        throw std::runtime_error("its code signature does not cover the whole of it");
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

} // namespace

void verifyCodeSignature(Bytes slice, std::size_t signatureOffset, std::size_t signatureSize)
{
    const Bytes code = slice.part(0, signatureOffset);
    const Blobs blobs = blobsOf(slice.part(signatureOffset, signatureSize));
    const auto first = blobs.find(CSSLOT_CODEDIRECTORY);
    if (first == blobs.end() || first->second.at<std::uint8_t>(offsetof(CS_CodeDirectory, hashType)) != CS_HASHTYPE_SHA1)
        throw std::runtime_error("it has no SHA-1 code directory");
    for (const auto& [slot, blob] : blobs) {
        if (slot == CSSLOT_CODEDIRECTORY ||
            (slot >= CSSLOT_ALTERNATE_CODEDIRECTORIES && slot < CSSLOT_ALTERNATE_CODEDIRECTORY_LIMIT))
            verify(blob, code, blobs);
    }
}

} // namespace simulator::macho
