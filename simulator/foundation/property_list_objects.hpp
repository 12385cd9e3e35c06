#pragma once

#include <algorithm>
#include <cstdint>
#include <string_view>
#include <vector>

#include "platform/Foundation/NSDictionary.hpp"
#include "platform/Foundation/NSString.hpp"

/// The objects that property lists are made of, autoreleased.
namespace simulator {

template <FixedString Selector>
id numberWith(auto value)
{
    return send<Selector, id>(classNamed<"NSNumber">(), value);
}

inline id dataWith(std::string_view bytes)
{
    return send<"dataWithBytes:length:", id>(classNamed<"NSData">(), static_cast<const void*>(bytes.data()),
                                             NSUInteger{bytes.size()});
}

/// Seconds since 2001-01-01T00:00:00Z. GNUstep's dates do not come to an end with a year before the first, or of more than
/// four digits: it gets the nearest that they can tell.
inline id dateWith(double seconds)
{
    constexpr double firstYear = -63113904000;
    constexpr double lastYear = 252423993599;
    return send<"dateWithTimeIntervalSinceReferenceDate:", id>(classNamed<"NSDate">(), std::clamp(seconds, firstYear, lastYear));
}

inline id stringWith(std::u16string_view text)
{
    return send<"stringWithCharacters:length:", id>(classNamed<"NSString">(), text.data(), NSUInteger{text.size()});
}

inline id arrayWith(const std::vector<id>& elements)
{
    return NSArray::arrayWithObjects_count(elements.data(), elements.size());
}

inline id dictionaryWith(const std::vector<id>& values, const std::vector<id>& keys)
{
    return NSDictionary::dictionaryWithObjects_forKeys_count(values.data(), keys.data(), keys.size());
}

} // namespace simulator
