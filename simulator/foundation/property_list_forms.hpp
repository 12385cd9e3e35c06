#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

#include "platform/Foundation/NSObject.hpp"

/// The forms that a property list is written in. A reader gives the root, autoreleased.
namespace simulator {

/// Thrown for what is no property list, and for one that asks for more than the allowance.
struct NoPropertyList {};

/// What one property list may come to. An object counts as often as the list shows it: a few hundred bytes that share arrays
/// have more leaves than memory holds, and whoever walks the list meets them all.
class ListAllowance {
public:
    /// Containers within containers.
    static constexpr std::size_t deepest = 512;
    /// Each weighs as many bytes as its text or data has, and those of the object itself.
    static constexpr std::size_t mostBytes = std::size_t{1} << 20;
    static constexpr std::size_t bytesOfObject = 16;

    void takeObject(std::size_t bytes = 0) { take(bytesOfObject + std::min(bytes, mostBytes)); }
    void take(std::size_t bytes)
    {
        taken_ += bytes;
        if (taken_ > mostBytes)
            throw NoPropertyList();
    }
    std::size_t taken() const { return taken_; }

private:
    std::size_t taken_ = 0;
};

/// Goes one container deeper for a scope.
class Nesting {
public:
    explicit Nesting(std::size_t& depth) : depth_(depth)
    {
        if (depth_ == ListAllowance::deepest)
            throw NoPropertyList();
        ++depth_;
    }
    Nesting(const Nesting&) = delete;
    Nesting& operator=(const Nesting&) = delete;
    ~Nesting() { --depth_; }

private:
    std::size_t& depth_;
};

/// The bytes begin with `binaryMark`.
id readBinaryForm(std::string_view bytes);
inline constexpr std::string_view binaryMark = "bplist00";

/// Throws NoPropertyList for what no such list can hold, or what no reader here would take.
std::string writeBinaryForm(id root);

id readXMLForm(std::u16string_view text);

/// The form of NeXTSTEP: `{ key = value; }`, `( value, value )`, `<0f ab>`, a text with or without quotes.
id readOldForm(std::u16string_view text);

} // namespace simulator
