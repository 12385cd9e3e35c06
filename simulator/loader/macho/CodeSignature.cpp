#include "simulator/loader/macho/CodeSignature.hpp"

#include <algorithm>
#include <glib.h>
#include <map>
#include <optional>
#include <string>

namespace simulator::macho {

namespace {

enum BlobMagic : std::uint32_t {
    embeddedSignature = 0xfade0cc0,
    codeDirectory = 0xfade0c02,
};

enum Slot : std::uint32_t {
    codeDirectorySlot = 0,
    lastSpecialSlot = 7,
    firstAlternateCodeDirectorySlot = 0x1000,
    lastAlternateCodeDirectorySlot = 0x1004,
};

/// The fields of a code directory, by their offsets.
enum Field : std::size_t {
    hashOffsetField = 16,
    specialSlotCountField = 24,
    codeSlotCountField = 28,
    codeLimitField = 32,
    hashSizeField = 36,
    hashTypeField = 37,
    pageShiftField = 39,
};

struct HashType {
    GChecksumType checksum;
    std::size_t size;
};

HashType hashTypeNumbered(std::uint8_t number)
{
    switch (number) {
    case 1:
        return {G_CHECKSUM_SHA1, 20};
    case 2:
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
    if (signature.bigEndianAt(0) != embeddedSignature)
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
    if (directory.bigEndianAt(0) != codeDirectory)
        throw std::runtime_error("its code signature is damaged");
    const HashType type = hashTypeNumbered(directory.at<std::uint8_t>(hashTypeField));
    if (directory.at<std::uint8_t>(hashSizeField) != type.size)
        throw std::runtime_error("its code signature is damaged");
    if (directory.bigEndianAt(codeLimitField) != code.size())
        throw std::runtime_error("its code signature does not cover the whole of it");

    const std::size_t hashes = directory.bigEndianAt(hashOffsetField);
    constexpr std::uint8_t pageShift = 12;
    constexpr std::size_t page = std::size_t{1} << pageShift;
    if (directory.at<std::uint8_t>(pageShiftField) != pageShift)
        throw std::runtime_error("its code signature is for pages of another size");
    const std::size_t pageCount = directory.bigEndianAt(codeSlotCountField);
    if (pageCount != (code.size() + page - 1) / page)
        throw std::runtime_error("its code signature does not cover the whole of it");
    for (std::size_t i = 0; i < pageCount; ++i) {
        const Bytes content = code.part(i * page, std::min(page, code.size() - i * page));
        if (!hasHash(content, directory.part(hashes + i * type.size, type.size), type))
            throw std::runtime_error("page " + std::to_string(i) + " does not have the hash that its code signature tells");
    }

    // The hashes of the other blobs stand before the pages', the first slot's last. A slot without a blob is all zeros.
    const std::uint32_t specialCount = directory.bigEndianAt(specialSlotCountField);
    for (std::uint32_t slot = 1; slot <= std::max<std::uint32_t>(specialCount, lastSpecialSlot); ++slot) {
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
    const auto first = blobs.find(codeDirectorySlot);
    if (first == blobs.end() || first->second.at<std::uint8_t>(hashTypeField) != 1)
        throw std::runtime_error("it has no SHA-1 code directory");
    for (const auto& [slot, blob] : blobs) {
        if (slot == codeDirectorySlot || (slot >= firstAlternateCodeDirectorySlot && slot <= lastAlternateCodeDirectorySlot))
            verify(blob, code, blobs);
    }
}

} // namespace simulator::macho
