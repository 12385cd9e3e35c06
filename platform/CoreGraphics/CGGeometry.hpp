#pragma once

#include "platform/runtime/Encoding.hpp"

/// Points, with the origin at the top left.
struct CGPoint {
    CGFloat x;
    CGFloat y;
    bool operator==(const CGPoint&) const = default;
};

struct CGSize {
    CGFloat width;
    CGFloat height;
    bool operator==(const CGSize&) const = default;
};

struct CGRect {
    CGPoint origin;
    CGSize size;
    bool operator==(const CGRect&) const = default;

    /// The platform's rectangle is written flat: {x, y, width, height}.
    static constexpr CGRect make(CGFloat x, CGFloat y, CGFloat width, CGFloat height) { return {{x, y}, {width, height}}; }
};

inline constexpr CGRect CGRectZero{};

constexpr CGFloat CGRectGetWidth(CGRect rect)
{
    return rect.size.width;
}

constexpr CGFloat CGRectGetMinY(CGRect rect)
{
    return rect.origin.y;
}

constexpr CGFloat CGRectGetMaxX(CGRect rect)
{
    return rect.origin.x + rect.size.width;
}

constexpr CGFloat CGRectGetMidX(CGRect rect)
{
    return rect.origin.x + rect.size.width / 2;
}

constexpr CGFloat CGRectGetMidY(CGRect rect)
{
    return rect.origin.y + rect.size.height / 2;
}

template <>
struct StructEncoding<CGPoint> {
    static constexpr FixedString text = encodeStruct<"CGPoint", CGFloat, CGFloat>();
};
template <>
struct StructEncoding<CGSize> {
    static constexpr FixedString text = encodeStruct<"CGSize", CGFloat, CGFloat>();
};
template <>
struct StructEncoding<CGRect> {
    static constexpr FixedString text = encodeStruct<"CGRect", CGPoint, CGSize>();
};
