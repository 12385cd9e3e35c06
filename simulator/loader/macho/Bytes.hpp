#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <stdexcept>

namespace simulator::macho {

/// Bytes of a file that is not to be trusted: whatever lies outside of them throws std::runtime_error.
class Bytes {
public:
    Bytes() = default;
    Bytes(const std::byte* first, std::size_t size) : first_(first), size_(size) {}

    const std::byte* data() const { return first_; }
    std::size_t size() const { return size_; }

    Bytes part(std::size_t offset, std::size_t size) const
    {
        if (offset > size_ || size > size_ - offset)
            throw std::runtime_error("the file is cut off or damaged");
        return {first_ + offset, size};
    }
    Bytes from(std::size_t offset) const { return part(offset, size_ - std::min(offset, size_)); }

    template <class T>
    T at(std::size_t offset) const
    {
        T value;
        std::memcpy(&value, part(offset, sizeof value).data(), sizeof value);
        return value;
    }
    std::uint32_t bigEndianAt(std::size_t offset) const { return __builtin_bswap32(at<std::uint32_t>(offset)); }

    /// A text that a zero byte ends.
    const char* textAt(std::size_t offset) const
    {
        const Bytes rest = from(offset);
        if (std::memchr(rest.data(), 0, rest.size()) == nullptr)
            throw std::runtime_error("the file is cut off or damaged");
        return reinterpret_cast<const char*>(rest.data());
    }

private:
    const std::byte* first_ = nullptr;
    std::size_t size_ = 0;
};

/// Reads bytes one after the other.
class Reader {
public:
    explicit Reader(Bytes bytes, std::size_t offset = 0) : bytes_(bytes), offset_(offset) {}

    bool atEnd() const { return offset_ >= bytes_.size(); }
    std::size_t offset() const { return offset_; }

    std::uint8_t byte() { return bytes_.at<std::uint8_t>(offset_++); }
    const char* text()
    {
        const char* const found = bytes_.textAt(offset_);
        offset_ += std::strlen(found) + 1;
        return found;
    }
    /// What does not fit is cut off.
    std::uint64_t uleb128() { return digits().value; }
    std::int64_t sleb128()
    {
        auto [value, bits, last] = digits();
        if (bits < 64 && (last & 0x40) != 0)
            value |= ~std::uint64_t{0} << bits;
        return static_cast<std::int64_t>(value);
    }

private:
    struct Digits {
        std::uint64_t value = 0;
        unsigned bits = 0;
        std::uint8_t last = 0;
    };

    Digits digits()
    {
        Digits digits;
        do {
            digits.last = byte();
            if (digits.bits < 64)
                digits.value |= std::uint64_t{digits.last & 0x7fU} << digits.bits;
            digits.bits += 7;
        } while ((digits.last & 0x80) != 0);
        return digits;
    }

    Bytes bytes_;
    std::size_t offset_;
};

} // namespace simulator::macho
